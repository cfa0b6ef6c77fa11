// Identifiers as they are written.
#pragma once

#include <quendal/automation.h>

#include <string>
#include <string_view>

namespace quendal {

/// "DC707A50-8E70-479C-94D7-BD63088DE00B" as a GUID, at compile time.
consteval GUID guid(std::string_view text) {
  const auto digit = [](char c) -> unsigned {
    if (c >= '0' && c <= '9') return static_cast<unsigned>(c - '0');
    if (c >= 'A' && c <= 'F') return static_cast<unsigned>(c - 'A' + 10);
    throw "not an upper-case hexadecimal digit";
  };
  const auto number = [&](std::size_t start, std::size_t count) {
    unsigned long long value = 0;
    for (std::size_t i = 0; i < count; ++i) value = value * 16 + digit(text[start + i]);
    return value;
  };
  if (text.size() != 36) throw "not 36 characters";
  GUID result{};
  result.Data1 = static_cast<decltype(result.Data1)>(number(0, 8));
  result.Data2 = static_cast<decltype(result.Data2)>(number(9, 4));
  result.Data3 = static_cast<decltype(result.Data3)>(number(14, 4));
  for (std::size_t i = 0; i < 2; ++i)
    result.Data4[i] = static_cast<unsigned char>(number(19 + 2 * i, 2));
  for (std::size_t i = 0; i < 6; ++i)
    result.Data4[2 + i] = static_cast<unsigned char>(number(24 + 2 * i, 2));
  return result;
}

/// "{DC707A50-...}", as the registry writes it.
[[nodiscard]] std::u16string registryForm(const GUID& id);

}  // namespace quendal
