#include "strings/text_functions.h"

#include <quendal/error.h>

#include <cmath>
#include <span>

#include "base/utf8.h"
#include "platform/code_page.h"
#include "platform/files.h"
#include "platform/locale.h"

namespace quendal::strings {

std::u16string capitalize(std::u16string_view sentence) {
  const std::u16string text = platform::fromCodePage(platform::toCodePage(sentence));
  const std::u16string upper = platform::upperCase(text);
  std::u16string out = platform::lowerCase(text);
  bool startsWord = true;
  for (std::size_t i = 0; i < out.size(); ++i) {
    if (startsWord) out[i] = upper[i];
    startsWord = text[i] == u' ';
  }
  return out;
}

std::size_t fillCount(double width, std::size_t length) {
  constexpr double kLongestText = 0x3FFFFFFF;  // characters
  const double count = std::nearbyint(std::fabs(width - static_cast<double>(length)));
  if (std::isnan(count)) throw AutomationError(error_number::kInvalidCall);
  if (count + static_cast<double>(length) > kLongestText)
    throw AutomationError(error_number::kOutOfMemory);
  return static_cast<std::size_t>(count);
}

std::u16string_view fileNameOf(std::u16string_view path) noexcept {
  return path.substr(path.rfind(u'\\') + 1);
}

std::u16string_view filePathOf(std::u16string_view path) noexcept {
  return path.substr(0, path.rfind(u'\\') + 1);
}

std::u16string bytesText(double size) { return platform::formatNumber(size, 0) + u" bytes"; }

std::u16string fileSizeText(double size) {
  constexpr double kKilo = 1024;
  constexpr struct {
    double below;  // whole KB
    double unit;   // bytes
    int decimals;
    std::u16string_view name;
  } kRanges[] = {{10, kKilo, 2, u"KB"},
                 {100, kKilo, 1, u"KB"},
                 {1000, kKilo, 0, u"KB"},
                 {10000, kKilo * kKilo, 2, u"MB"},
                 {100000, kKilo * kKilo, 1, u"MB"},
                 {1000000, kKilo * kKilo, 0, u"MB"},
                 {10000000, kKilo * kKilo * kKilo, 2, u"GB"}};
  if (size < kKilo) return bytesText(size);
  // The host's whole-number division rounds its operands first.
  const double whole = std::floor(std::nearbyint(size) / kKilo);
  for (const auto& range : kRanges) {
    if (whole < range.below)
      return platform::formatNumber(size / range.unit, range.decimals).append(range.name);
  }
  return {};
}

bool appendToUtf8File(std::u16string_view path, std::u16string_view text) {
  using platform::FileError;
  // A file that can only be written counts as one that cannot be read, and is left alone.
  if (platform::checkReadable(path) != FileError::None) return false;
  const std::string bytes = toUtf8(text);
  return platform::appendToFile(path, std::as_bytes(std::span(bytes))) == FileError::None;
}

}  // namespace quendal::strings
