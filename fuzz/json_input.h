// What the JSON fuzz targets share.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

namespace quendal::fuzz {

/// Bytes as text: an even number of them as UTF-16, an odd one as a character each, which is how a
/// fuzzer gets far in JSON.
inline std::u16string jsonText(const std::uint8_t* data, std::size_t size) {
  if (size % 2 != 0) return {data, data + size};
  std::u16string text(size / 2, u'\0');
  if (size > 0) std::memcpy(text.data(), data, size);
  return text;
}

}  // namespace quendal::fuzz
