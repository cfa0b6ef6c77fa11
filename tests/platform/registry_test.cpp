// What every registry must answer; the same content is read in both homes.
#include "platform/registry.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "base/utf8.h"
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

// Names in alphabetical order, because some registries sort.
const std::string kLong(4999, 'x');
const struct Row {
  ScratchValue stored;
  std::string listed;
  const char* read;  // whatever the type: all bytes but one
} kRows[] = {
    {{"a text", 1, text("Windows 11")}, "text Windows 11", "Windows 11"},
    {{"b empty", 1, text("")}, "text ", ""},
    {{"c expand", 2, text("%Path%;x")}, "text %Path%;x", "%Path%;x"},
    {{"d binary", 3, std::string("\1\xFF\0\2", 4)}, "bytes 1 255 0 2", nullptr},
    {{"e number", 4, "\xFE\xFF\xFF\xFF"}, "-2", nullptr},
    {{"f multi", 7, std::string("a\0b\0\0", 5)}, std::string("text a\0b", 8), nullptr},
    {{"g long", 1, text(kLong)}, "text " + kLong, "<Error>"},  // more than the first buffer holds
    {{"h big", 11, "12345678"}, "nothing", nullptr},
    {{"i 256", 1, text(kLong.substr(0, 255))}, "text " + kLong.substr(0, 255), kLong.data() + 4744},
    {{"j 257", 1, text(kLong.substr(0, 256))}, "text " + kLong.substr(0, 256), "<Error>"},
    {{"k none", 3, ""}, "bytes", nullptr},
};

class Registry : public testing::Test {
 protected:
  void SetUp() override {
    if (!scratch_.ready()) GTEST_SKIP() << "this account may not write to the registry";
  }

  static std::vector<ScratchValue> allStored() {
    std::vector<ScratchValue> values;
    for (const Row& row : kRows) values.push_back(row.stored);
    return values;
  }

  const std::u16string root_{kScratchRoot};
  const std::string path_ = toUtf8(root_);
  const ScratchRegistry scratch_{{{path_, allStored()},
                                  {path_ + "\\Policy\\v1.0", {{"3705", 1, text("x")}}},
                                  {path_ + "\\Policy\\v2.0\\Deep", {}},
                                  {path_ + "\\Zero", {}}}};
};

TEST_F(Registry, ReadsValues) {
  const auto values = registryValues(root_);
  ASSERT_EQ(values.size(), std::size(kRows));
  for (std::size_t i = 0; i < values.size(); ++i) {
    EXPECT_EQ(toUtf8(values[i].name), kRows[i].stored.name);
    EXPECT_EQ(shown(values[i].data), kRows[i].listed);
    if (kRows[i].read != nullptr) {
      EXPECT_EQ(toUtf8(registryText(root_, values[i].name).value()), kRows[i].read);
    }
  }
  EXPECT_EQ(registryText(root_, u"A TEXT"), u"Windows 11");
  EXPECT_EQ(registryText(root_, u"f multi"), std::u16string(u"a\0b\0", 4));
  EXPECT_EQ(registryText(root_, u"d binary")->size(), 3u);
  EXPECT_EQ(registryText(root_, u"no such value"), u"<Error>");
  EXPECT_THROW((void)registryText(root_, u"k none"), std::invalid_argument);
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
  EXPECT_EQ(registryText(root_ + u"\\Policy", u"x"), u"<Error>");  // only has keys
}

}  // namespace
}  // namespace quendal::platform
