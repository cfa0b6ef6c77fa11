// How a registry's bytes become what callers see.
#include <gtest/gtest.h>

#include <stdexcept>

#include "base/utf8.h"
#include "platform/registry_data.h"

namespace quendal::platform {
namespace {

// A value's data in one readable line.
std::string shown(const RegistryData& data) {
  if (const auto* string = std::get_if<std::u16string>(&data)) return "text " + toUtf8(*string);
  if (const auto* number = std::get_if<std::int32_t>(&data)) return std::to_string(*number);
  if (const auto* raw = std::get_if<std::vector<std::byte>>(&data)) {
    std::string out = "bytes";
    for (const std::byte each : *raw) out += " " + std::to_string(std::to_integer<int>(each));
    return out;
  }
  return "nothing";
}

TEST(RegistryData, FollowsItsTypeWhenListedAndLosesOneByteWhenReadAsText) {
  const std::string kFull(255, 'x');
  const struct {
    std::uint32_t type;
    std::string bytes, listed, text;
  } kRows[] = {
      {1, std::string("Windows\0", 8), "text Windows", "Windows"},
      {1, std::string(1, '\0'), "text ", ""},
      {2, std::string("%Path%\0", 7), "text %Path%", "%Path%"},
      {3, std::string("\1\177\0\2", 4), "bytes 1 127 0 2", std::string("\1\177\0", 3)},
      {4, std::string("\4\3\2\1", 4), "16909060", "\4\3\2"},
      {4, std::string("~\0\0\x80", 4), "-2147483522", std::string("~\0\0", 3)},
      {4, "\5", "5", ""},
      {7, std::string("a\0b\0\0", 5), std::string("text a\0b", 8), std::string("a\0b\0", 4)},
      {7, "x", "text ", ""},
      {11, "12345678", "nothing", "1234567"},
      {1, kFull + '\0', "text " + kFull, kFull},
      {1, kFull + "x" + '\0', "text " + kFull + "x", "<Error>"},
  };
  for (const auto& row : kRows) {
    EXPECT_EQ(shown(registryData(row.type, row.bytes)), row.listed);
    EXPECT_EQ(toUtf8(registryTextOf(row.bytes)), row.text);
  }
  EXPECT_THROW((void)registryTextOf({}), std::invalid_argument);
  EXPECT_EQ(shown(registryData(1, {})), "text ");
}

}  // namespace
}  // namespace quendal::platform
