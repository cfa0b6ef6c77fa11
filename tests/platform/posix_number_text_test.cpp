// The text of doubles against the C library's own.
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdio>
#include <random>
#include <string>
#include <string_view>
#include <utility>

#include "automation/posix/number_text.h"

namespace quendal::test {
namespace {

constexpr int kDigits = 15;

std::string printed(double value) {
  char text[64];
  std::snprintf(text, sizeof(text), "%.*G", kDigits, value);
  const double rounded = std::strtod(text, nullptr);
  if (std::fabs(rounded) >= 1) return text;
  // Below 1 the C library's border between the two forms lies elsewhere.
  std::snprintf(text, sizeof(text), "%.*f", kDigits, rounded);
  if (std::strtod(text, nullptr) != rounded)
    std::snprintf(text, sizeof(text), "%.*E", kDigits - 1, rounded);
  std::string result = text;
  const std::size_t end = std::min(result.find('E'), result.size());
  std::size_t kept = result.find_last_not_of('0', end - 1);
  if (result[kept] != '.') ++kept;
  return result.erase(kept, end - kept);
}

void expectAsPrinted(double value) {
  const std::string expected = printed(value);
  const automation::NumberText text = automation::realText(value, kDigits);
  const std::u16string_view view = text.view();
  ASSERT_EQ(std::string(view.begin(), view.end()), expected);
  const auto read = automation::parseNumber(view);
  ASSERT_TRUE(read);
  ASSERT_EQ(automation::toReal(*read), std::strtod(expected.c_str(), nullptr)) << expected;
}

TEST(PosixNumberText, RoundsDoublesToFifteenDigits) {
  const std::pair<double, std::string_view> rows[] = {{0.00001, "0.00001"},
                                                      {-1.234567E-9, "-0.000000001234567"},
                                                      {1.0 / 30, "3.33333333333333E-02"},
                                                      {5E-16, "5E-16"}};
  for (const auto& [value, expected] : rows) {
    EXPECT_EQ(printed(value), expected);
    expectAsPrinted(value);
  }
  std::mt19937_64 random(1);
  for (int i = 0; i < 100'000; ++i) {
    const double any = std::bit_cast<double>(random());
    if (std::isfinite(any) && any != 0) expectAsPrinted(any);
    expectAsPrinted(static_cast<double>(random() >> 3) / std::pow(10, random() % 19));
    // Halves of the last digit, which go to the even one.
    expectAsPrinted((static_cast<double>(random() % 100'000'000) + 0.5) / 1024);
  }
  for (double power = 1e-20; power < 1e20; power *= 10) {
    double below = power, above = power;
    for (int i = 0; i < 50; ++i) {
      expectAsPrinted(below);
      expectAsPrinted(-above);
      below = std::nextafter(below, 0);
      above = std::nextafter(above, 1e300);
    }
  }
}

}  // namespace
}  // namespace quendal::test
