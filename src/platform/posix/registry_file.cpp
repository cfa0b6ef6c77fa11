#include "platform/posix/registry_file.h"

#include <charconv>
#include <optional>
#include <string>
#include <utility>

#include "base/utf8.h"
#include "platform/code_page.h"
#include "platform/locale.h"
#include "platform/posix/host_files.h"
#include "platform/posix/registry_query.h"
#include "platform/registry_data.h"

namespace quendal::platform {
namespace {

bool take(std::string_view& text, std::string_view prefix) {
  if (!text.starts_with(prefix)) return false;
  text.remove_prefix(prefix.size());
  return true;
}

// A quoted text with `\\` and `\"`, taken off `text` with both quotes; nothing when it does not
// end.
std::optional<std::u16string> takeQuoted(std::string_view& text) {
  if (!take(text, "\"")) return std::nullopt;
  std::string plain;
  while (!text.empty()) {
    char c = text.front();
    text.remove_prefix(1);
    if (c == '"') return fromUtf8(plain);
    if (c == '\\' && !text.empty()) {
      c = text.front();
      text.remove_prefix(1);
    }
    plain += c;
  }
  return std::nullopt;
}

// One hexadecimal number that is the whole text.
std::optional<std::uint32_t> hexNumber(std::string_view digits) {
  std::uint32_t number = 0;
  const char* const end = digits.data() + digits.size();
  const auto [at, error] = std::from_chars(digits.data(), end, number, 16);
  if (error != std::errc() || at != end) return std::nullopt;
  return number;
}

// Bytes as two-digit numbers with commas between; a last comma is allowed.
std::optional<std::string> hexBytes(std::string_view list) {
  std::string bytes;
  bytes.reserve(list.size() / 3 + 1);
  while (!(list = trimmed(list)).empty()) {
    const std::size_t comma = list.find(',');
    const auto number = hexNumber(trimmed(list.substr(0, comma)));
    if (!number || *number > 0xFF) return std::nullopt;
    bytes += static_cast<char>(*number);
    list.remove_prefix(comma == std::string_view::npos ? list.size() : comma + 1);
  }
  return bytes;
}

std::u16string utf16From(std::string_view bytes) {
  std::u16string text(bytes.size() / 2, u'\0');
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto low = static_cast<unsigned char>(bytes[2 * i]);
    const auto high = static_cast<unsigned char>(bytes[2 * i + 1]);
    text[i] = static_cast<char16_t>(high << 8 | low);
  }
  return text;
}

bool isTextType(std::uint32_t type) {
  return type == registry_type::kText || type == registry_type::kExpandableText ||
         type == registry_type::kMultiText;
}

class Reader {
 public:
  Reader(std::string_view file, RegistryQuery& query) : rest_(file), query_(query) {}

  void read() {
    while (!rest_.empty()) {
      const std::string_view line = trimmed(takeLine(rest_));
      if (line.starts_with('[')) {
        readKey(line);
      } else if (line.starts_with('"') || line.starts_with('@')) {
        readValue(line);
      } else if (line == "REGEDIT4") {
        singleByteText_ = true;
      }
    }
  }

 private:
  void readKey(std::string_view line) {
    const std::size_t end = line.rfind(']');
    if (line.starts_with("[-") || end == std::string_view::npos) return query_.tellNoKey();
    const std::u16string path = fromUtf8(line.substr(1, end - 1));
    std::u16string_view key = path;
    constexpr std::u16string_view kHive = u"HKEY_LOCAL_MACHINE\\";
    if (compareTextNoCase(key.substr(0, kHive.size()), kHive) == 0) {
      key.remove_prefix(kHive.size());
    }
    query_.tellKey(key);
  }

  void readValue(std::string_view line) {
    const auto name = take(line, "@") ? std::u16string() : takeQuoted(line);
    if (!name || !take(line = trimmed(line), "=")) return;
    line = trimmed(line);
    if (line.starts_with('"')) {
      if (const auto text = takeQuoted(line)) query_.tellValue(storedText(*name, *text));
    } else if (take(line, "dword:")) {
      readNumber(*name, line);
    } else if (take(line, "hex")) {
      readBytes(*name, line);
    }
  }

  void readNumber(const std::u16string& name, std::string_view digits) {
    const auto number = hexNumber(trimmed(digits.substr(0, digits.find(';'))));
    if (!number) return;
    std::string bytes;
    for (unsigned shift = 0; shift < 32; shift += 8) {
      bytes += static_cast<char>(*number >> shift & 0xFF);
    }
    query_.tellValue({name, registry_type::kNumber, std::move(bytes)});
  }

  void readBytes(const std::u16string& name, std::string_view line) {
    const std::string whole = withContinuations(line);
    std::string_view list = whole;
    std::optional<std::uint32_t> type = registry_type::kBinary;
    if (take(list, "(")) {
      const std::size_t end = list.find(')');
      type = hexNumber(list.substr(0, end));
      list.remove_prefix(end == std::string_view::npos ? list.size() : end + 1);
    }
    if (!type || !take(list, ":")) return;
    auto bytes = hexBytes(list);
    if (!bytes) return;
    if (isTextType(*type) && !singleByteText_) bytes = toCodePage(utf16From(*bytes));
    query_.tellValue({name, *type, std::move(*bytes)});
  }

  std::string withContinuations(std::string_view line) {
    std::string whole(line);
    while (whole.ends_with('\\')) {
      whole.pop_back();
      if (rest_.empty()) break;
      whole += trimmed(takeLine(rest_));
    }
    return whole;
  }

  std::string_view rest_;
  RegistryQuery& query_;
  bool singleByteText_ = false;
};

}  // namespace

void readRegistryFile(std::string_view file, RegistryQuery& query) {
  std::string converted;
  if (take(file, "\xFF\xFE")) {
    converted = toUtf8(utf16From(file));
    file = converted;
  } else {
    take(file, "\xEF\xBB\xBF");
  }
  Reader(file, query).read();
}

}  // namespace quendal::platform
