// The text of doubles against the C library's own.
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdio>
#include <random>
#include <string>

#include "platform/posix/automation/number_text.h"

namespace quendal::test {
namespace {

void expectAsPrinted(double value) {
  constexpr int kDigits = 15;
  char expected[64];
  std::snprintf(expected, sizeof(expected), "%.*G", kDigits, value);
  const platform::NumberText text = platform::realText(value, kDigits);
  const std::u16string_view view = text.view();
  ASSERT_EQ(std::string(view.begin(), view.end()), expected);
  const auto read = platform::parseNumber(view);
  ASSERT_TRUE(read);
  ASSERT_EQ(platform::toReal(*read), std::strtod(expected, nullptr)) << expected;
}

TEST(PosixNumberText, RoundsDoublesToFifteenDigits) {
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
