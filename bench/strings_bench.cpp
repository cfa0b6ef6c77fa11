// The text functions: against the C library where it has a like, else against themselves at half
// the size.
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <string>

#include "bench/row.h"
#include "bench/scratch_folder.h"
#include "core/dispatch.h"
#include "platform/clock.h"
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
  const ScratchFolder folder;
  const std::filesystem::path small = folder / "small", large = folder / "large";
  std::ofstream(small) << std::string(1024, 'x');
  std::ofstream(large) << std::string(100 * kMega, 'x');
  const Variant smallPath(small.u16string()), largePath(large.u16string()), text(u"one line\r\n");
  compare(
      "append to a file of 100 MB / of 1 KB", 200,
      [&] { use(functions.appendToUtf8File(largePath, text)); },
      [&] { use(functions.appendToUtf8File(smallPath, text)); }, 15);
}

}  // namespace

void run() {
  const Owned<StringFunctions> functions = Owned<StringFunctions>::make();
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

}  // namespace quendal::bench
