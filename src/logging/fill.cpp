#include "logging/fill.h"

namespace quendal {
namespace {

std::u16string filling(std::size_t length, std::u16string_view fill, std::int32_t width) {
  const std::int64_t difference = width - static_cast<std::int64_t>(length);
  const auto count = static_cast<std::size_t>(difference < 0 ? -difference : difference);
  return std::u16string(count, fill.empty() ? u' ' : fill.front());
}

}  // namespace

std::u16string padLeft(std::u16string_view text, std::u16string_view fill, std::int32_t width) {
  return filling(text.size(), fill, width).append(text);
}

std::u16string padRight(std::u16string_view text, std::u16string_view fill, std::int32_t width) {
  return std::u16string(text) + filling(text.size(), fill, width);
}

}  // namespace quendal
