#include "strings/padding.h"

#include <quendal/error.h>

#include <cmath>

namespace quendal::strings {
namespace {

constexpr double kLongestText = 0x3FFFFFFF;  // characters

}  // namespace

std::size_t fillCount(double width, std::size_t length) {
  const double count = std::nearbyint(std::fabs(width - static_cast<double>(length)));
  if (std::isnan(count)) throw AutomationError(error_number::kInvalidCall);
  if (count + static_cast<double>(length) > kLongestText) {
    throw AutomationError(error_number::kOutOfMemory);
  }
  return static_cast<std::size_t>(count);
}

std::u16string padLeft(std::u16string_view text, char16_t fill, double width) {
  return std::u16string(fillCount(width, text.size()), fill).append(text);
}

std::u16string padRight(std::u16string_view text, char16_t fill, double width) {
  return std::u16string(text).append(fillCount(width, text.size()), fill);
}

}  // namespace quendal::strings
