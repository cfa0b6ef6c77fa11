// What every registry must answer; the same content is read in both homes.
#include "platform/registry.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "platform/code_page.h"
#include "tests/platform/scratch_registry.h"

namespace quendal::platform {
namespace {

std::string text(std::string_view text) { return std::string(text) + '\0'; }

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

class Registry : public testing::Test {
 protected:
  void SetUp() override {
    if (!scratch_.ready()) GTEST_SKIP() << "this account may not write to the registry";
  }

  const std::u16string root_{kScratchRoot};
  const std::string long_ = std::string(4999, 'x');
  // Names in alphabetical order, because some registries sort.
  const ScratchRegistry scratch_{{
      {"",
       {{"a text", 1, text("Windows 11")},
        {"b empty", 1, text("")},
        {"c expand", 2, text("%Path%;x")},
        {"d binary", 3, std::string("\1\xFF\0\2", 4)},
        {"e number", 4, "\xFE\xFF\xFF\xFF"},
        {"f multi", 7, std::string("a\0b\0\0", 5)},
        {"g long", 1, text(long_)},
        {"h big", 11, "12345678"},
        {"i 256", 1, text(std::string(255, 'y'))},
        {"j 257", 1, text(std::string(256, 'z'))},
        {"k none", 3, ""}}},
      {"Policy\\v1.0", {{"3705", 1, text("x")}}},
      {"Policy\\v2.0", {}},
      {"Policy\\v2.0\\Deep", {}},
      {"Zero", {}},
  }};
};

TEST_F(Registry, ReadsOneValueAsText) {
  const std::pair<std::u16string_view, std::string> kCases[] = {
      {u"a text", "Windows 11"},
      {u"A TEXT", "Windows 11"},
      {u"b empty", ""},
      {u"f multi", std::string("a\0b\0", 4)},
      {u"i 256", std::string(255, 'y')},
      {u"j 257", "<Error>"},
      {u"g long", "<Error>"},
      {u"no such value", "<Error>"}};
  for (const auto& [name, expected] : kCases) {  // whatever the type: all bytes but one
    EXPECT_EQ(toUtf8(registryText(root_, name).value()), expected) << toUtf8(name);
  }
  EXPECT_EQ(registryText(root_, u"d binary")->size(), 3u);
  EXPECT_THROW((void)registryText(root_, u"k none"), std::invalid_argument);
}

TEST_F(Registry, ListsValuesInOrder) {
  const std::pair<const char*, std::string> kExpected[] = {
      {"a text", "text Windows 11"},
      {"b empty", "text "},
      {"c expand", "text %Path%;x"},
      {"d binary", "bytes 1 255 0 2"},
      {"e number", "-2"},
      {"f multi", std::string("text a\0b", 8)},
      {"g long", "text " + long_},  // more than the first buffer holds
      {"h big", "nothing"},
      {"i 256", "text " + std::string(255, 'y')},
      {"j 257", "text " + std::string(256, 'z')},
      {"k none", "bytes"},
  };
  const auto values = registryValues(root_);
  ASSERT_EQ(values.size(), std::size(kExpected));
  for (std::size_t i = 0; i < values.size(); ++i) {
    EXPECT_EQ(toUtf8(values[i].name), kExpected[i].first);
    EXPECT_EQ(shown(values[i].data), kExpected[i].second);
  }
}

TEST_F(Registry, ListsKeys) {
  using Names = std::vector<std::u16string>;
  EXPECT_EQ(registryKeys(root_), (Names{u"Policy", u"Zero"}));
  EXPECT_EQ(registryKeys(root_ + u"\\POLICY"), (Names{u"v1.0", u"v2.0"}));
  EXPECT_EQ(registryKeys(root_ + u"\\Policy\\v2.0"), Names{u"Deep"});
  EXPECT_TRUE(registryKeys(root_ + u"\\Zero").empty());
  EXPECT_FALSE(registryKeys(u"").empty());  // the root itself
}

TEST_F(Registry, KeysThatAreNotThere) {
  for (const auto key : {u"\\Missing", u"\\Pol", u"\\Policy\\v1.0\\3705"}) {
    EXPECT_EQ(registryText(root_ + key, u"a text"), std::nullopt);
    EXPECT_TRUE(registryValues(root_ + key).empty());
    EXPECT_TRUE(registryKeys(root_ + key).empty());
  }
  EXPECT_EQ(registryText(root_ + u"\\Zero", u"x"), u"<Error>");
  EXPECT_EQ(registryText(root_ + u"\\Policy", u"x"), u"<Error>");  // only has keys
}

}  // namespace
}  // namespace quendal::platform
