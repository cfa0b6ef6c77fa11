// How a registry's bytes become what callers see.
#include <gtest/gtest.h>

#include <stdexcept>

#include "base/utf8.h"
#include "platform/registry_data.h"

namespace quendal::platform {
namespace {

TEST(RegistryData, FollowsItsTypeWhenListedAndLosesOneByteWhenReadAsText) {
  using namespace std::string_literals;
  const std::string full(255, 'x');
  const std::vector raw = {std::byte{1}, std::byte{0}, std::byte{127}};
  const struct {
    std::uint32_t type;
    std::string bytes;
    RegistryData listed;
    std::string text;
  } kRows[] = {
      {1, "Windows\0"s, u"Windows"s, "Windows"},
      {1, "\0"s, u""s, ""},
      {2, "%Path%\0"s, u"%Path%"s, "%Path%"},
      {3, "\1\0\177"s, raw, "\1\0"s},
      {4, "~\3\2\x80"s, -2147351682, "~\3\2"},
      {4, "\5", 5, ""},
      {7, "a\0b\0\0"s, u"a\0b"s, "a\0b\0"s},
      {7, "x", u""s, ""},
      {11, "12345678", std::monostate(), "1234567"},
      {1, full + '\0', fromUtf8(full), full},
      {1, full + "x" + '\0', fromUtf8(full + "x"), "<Error>"},
  };
  for (const auto& row : kRows) {
    EXPECT_TRUE(registryData(row.type, row.bytes) == row.listed) << row.type << " " << row.bytes;
    EXPECT_EQ(toUtf8(registryTextOf(row.bytes)), row.text);
  }
  EXPECT_THROW((void)registryTextOf({}), std::invalid_argument);
  EXPECT_TRUE(registryData(1, {}) == RegistryData(u""s));
}

}  // namespace
}  // namespace quendal::platform
