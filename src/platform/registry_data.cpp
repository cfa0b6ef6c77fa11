#include "platform/registry_data.h"

#include <algorithm>
#include <stdexcept>

#include "platform/code_page.h"

namespace quendal::platform {
namespace {

std::u16string textLess(std::span<const char> bytes, std::size_t terminators) {
  const std::size_t size = bytes.size() - std::min(bytes.size(), terminators);
  return fromCodePage({bytes.data(), size});
}

// Little-endian in every registry, whatever the machine.
std::int32_t numberFrom(std::span<const char> bytes) {
  std::uint32_t number = 0;
  for (std::size_t i = std::min<std::size_t>(bytes.size(), 4); i > 0; --i) {
    number = number << 8 | static_cast<unsigned char>(bytes[i - 1]);
  }
  return static_cast<std::int32_t>(number);
}

}  // namespace

RegistryData registryData(std::uint32_t type, std::span<const char> bytes) {
  switch (type) {
    case registry_type::kText:
    case registry_type::kExpandableText:
      return textLess(bytes, 1);
    case registry_type::kMultiText:
      return textLess(bytes, 2);
    case registry_type::kNumber:
      return numberFrom(bytes);
    case registry_type::kBinary: {
      const auto raw = std::as_bytes(bytes);
      return std::vector<std::byte>(raw.begin(), raw.end());
    }
    default:
      return std::monostate{};
  }
}

std::u16string registryTextOf(std::span<const char> bytes) {
  if (bytes.size() > kMaxTextBytes) return std::u16string(kRegistryError);
  if (bytes.empty()) throw std::invalid_argument("registry value without bytes");
  return textLess(bytes, 1);
}

}  // namespace quendal::platform
