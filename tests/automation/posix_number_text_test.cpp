// The text of doubles, and numbers from text, against the C library's own.
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdio>
#include <random>
#include <string>
#include <utility>

#include "automation/posix/number_text.h"

namespace quendal::test {
namespace {

std::string textOf(double value) {
  const automation::NumberText text = automation::realText(value, 15);
  return {text.view().begin(), text.view().end()};
}

void expectExact(const std::string& text) {
  const auto read = automation::parseNumber(std::u16string(text.begin(), text.end()));
  ASSERT_TRUE(read) << text;
  EXPECT_EQ(automation::toReal(*read), std::strtod(text.c_str(), nullptr)) << text;
}

TEST(PosixNumberText, RoundsDoublesToFifteenDigits) {
  std::mt19937_64 random(1);
  for (int i = 0; i < 100'000; ++i) {
    // Any double, one of a usual size, and a half of the last digit, which goes to the even one.
    for (const double value :
         {std::bit_cast<double>(random()),
          static_cast<double>(random() >> 3) / std::pow(10, static_cast<double>(random() % 19)),
          -(static_cast<double>(random() % 100'000'000) + 0.5) / 1024}) {
      if (!std::isfinite(value) || value == 0) continue;
      char rounded[40];
      std::snprintf(rounded, sizeof(rounded), "%.14E", value);
      const std::string text = textOf(value);
      ASSERT_EQ(std::strtod(text.c_str(), nullptr), std::strtod(rounded, nullptr)) << text;
      ASSERT_LE(text.size(), 22U) << text;
      expectExact(text);
    }
  }
}

TEST(PosixNumberText, HasTwoForms) {
  const std::pair<double, const char*> rows[] = {
      {0.00001, "0.00001"},   {-1.234567E-9, "-0.000000001234567"},
      {5E-16, "5E-16"},       {1.0 / 30, "3.33333333333333E-02"},
      {-1e15, "-1E+15"},      {1e14 + 0.5, "100000000000000"},
      {-HUGE_VAL, "-1.#INF"},
  };
  for (const auto& [value, text] : rows) EXPECT_EQ(textOf(value), text);
}

TEST(PosixNumberText, LongNumeralsAreReadExactly) {
  for (const char* numeral :
       {"9007199254740993", "9007199254740992.99999999999999999999999999999999999999999",
        "9007199254740993.00000000000000000000000000000000000000000000000001",
        "0.1000000000000000055511151231257827021181583404541015625", "2.2250738585072011e-308",
        "1.7976931348623158e308", "4.9e-324", "0e999", "1e-999",
        "123456789012345678901234567890123456789012345e-40"})
    expectExact(numeral);
  // A half is one only when nothing follows it, however far away.
  const auto rounded = [](std::u16string_view text) {
    return static_cast<int>(*automation::roundTo(*automation::parseNumber(text), 0));
  };
  EXPECT_EQ(rounded(u"2.50000000000000000000000000000000000000000000"), 2);
  EXPECT_EQ(rounded(u"2.50000000000000000000000000000000000000000001"), 3);
}

}  // namespace
}  // namespace quendal::test
