// The text functions: against OpenSSL and the C library where they have a like, else against
// themselves at half the size.
#include <openssl/evp.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <string>

#include "bench/row.h"
#include "core/dispatch.h"
#include "platform/clock.h"
#include "strings/md5.h"
#include "strings/string_functions.h"

namespace quendal::bench {
namespace {

constexpr std::size_t kMega = 1024 * 1024;

// Keeps a result from being thrown out with the work that made it.
template <class Value>
void use(const Value& value) {
  asm volatile("" : : "g"(&value) : "memory");
}

Variant repeated(std::u16string_view piece, std::size_t size) {
  std::u16string text;
  while (text.size() < size) text += piece;
  text.resize(size);
  return text;
}

void benchMd5() {
  std::string bytes(16 * kMega, '\0');
  for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<char>(i * 7919 >> 5);
  double ours = 1e300, theirs = 1e300;
  for (int round = 0; round < 9; ++round) {
    ours = std::min(ours, microseconds(
                              1, [&] { use(strings::md5(bytes)); }, 1));
    theirs = std::min(theirs, microseconds(
                                  1,
                                  [&] {
                                    std::array<unsigned char, EVP_MAX_MD_SIZE> digest;
                                    EVP_Digest(bytes.data(), bytes.size(), digest.data(), nullptr,
                                               EVP_md5(), nullptr);
                                    use(digest);
                                  },
                                  1));
  }
  constexpr double kBytes = 16.0 * kMega;  // bytes in a microsecond are megabytes in a second
  row("md5 16 MB, MB/s (OpenSSL)", kBytes / ours, kBytes / theirs);
}

// A member that takes one text, at two sizes.
template <class Call>
void benchGrowth(const char* name, std::u16string_view piece, Call call) {
  const Variant one = repeated(piece, kMega);
  const Variant two = repeated(piece, 2 * kMega);
  compare(
      name, 1, [&] { use(call(two)); }, [&] { use(call(one)); }, 15);
}

void benchFormatDate(StringFunctions& functions) {
  Variant date = Variant::date(platform::localNow());
  Variant format(u"#WWWW, #DD #MMMM #YYYY #HH24:#NN:#SS #WWW #MMM #YY");
  const std::time_t now = std::time(nullptr);
  const std::tm local = *std::localtime(&now);
  compare(
      "format date, ten tokens (strftime)", 20000,
      [&] {
        VariantRef dateRef(&date), formatRef(&format);
        use(functions.formatDateTime(dateRef, formatRef));
      },
      [&] {
        std::array<char, 128> text;
        use(std::strftime(text.data(), text.size(), "%A, %d %B %Y %H:%M:%S %a %b %y", &local));
        use(text);
      });
}

void benchAppend(StringFunctions& functions) {
  namespace fs = std::filesystem;
  const fs::path folder = fs::temp_directory_path();
  const fs::path small = folder / "quendal-bench-small", large = folder / "quendal-bench-large";
  std::ofstream(small) << std::string(1024, 'x');
  std::ofstream(large) << std::string(100 * kMega, 'x');
  const Variant smallPath(small.u16string()), largePath(large.u16string()), text(u"one line\r\n");
  compare(
      "append to a file of 100 MB / of 1 KB", 200,
      [&] { use(functions.appendToUtf8File(largePath, text)); },
      [&] { use(functions.appendToUtf8File(smallPath, text)); }, 15);
  fs::remove(small);
  fs::remove(large);
}

}  // namespace
}  // namespace quendal::bench

int main() {
  using namespace quendal;
  using namespace quendal::bench;
  const Owned<StringFunctions> functions = Owned<StringFunctions>::make();
  benchMd5();
  const auto htmlEncode = [&](const Variant& text) { return functions->htmlEncode(text); };
  const auto byReference = [&](Variant (StringFunctions::*member)(VariantRef&)) {
    return [&functions, member](const Variant& text) {
      VARIANT borrowed = text;
      VariantRef reference(borrowed);
      return ((*functions).*member)(reference);
    };
  };
  benchGrowth("html encode 2 MB / 1 MB", u"a <b> & \u00E9 \u20AC plain words after that ",
              htmlEncode);
  benchGrowth("url encode 2 MB / 1 MB", u"name=J\u00F6rg & more/",
              byReference(&StringFunctions::urlEncode));
  benchGrowth("url decode 2 MB / 1 MB", u"a+b%20c%E9plain",
              byReference(&StringFunctions::urlDecode));
  benchGrowth("capitalize 2 MB / 1 MB", u"hello WORLD \u00C9cole ",
              [&](const Variant& text) { return functions->capitalize(text); });
  const Variant plain = repeated(u"plain words and nothing else. ", kMega);
  compare(
      "html encode of plain text (a copy)", 5, [&] { use(htmlEncode(plain)); },
      [&] { use(Variant(plain)); }, 15);
  benchFormatDate(*functions);
  benchAppend(*functions);
}
