// NumberToWords.
#include <gtest/gtest.h>

#include <limits>

#include "tests/strings/strings_object.h"
#include "tests/support/script_object.h"
#include "tests/support/text_rows.h"

namespace quendal::test {
namespace {

TEST(NumberToWords, SpellsWholeNumbers) {
  forEachPair(
      u"0=zero|5=five|12=twelve|45=fourty five|100=one hundred"
      u"|105=one hundred and  five|111=one hundred and  eleven|123=one hundred and  twenty three"
      u"|1005=one thousand and  five|1100=one thousand one hundred"
      u"|2000000=two million|-5=five|-105=one hundred and  five"
      u"|2147483647=two billion one hundred fourty seven million four hundred eighty three thousand"
      u" six hundred and  fourty seven"
      // With a fraction: cut off, but the groups are those of the whole length.
      u"|12.5=and  twelve|123.45=one hundred twenty three thousand and|0.4=zero"
      u"|1234.5=one hundred twenty three thousand four hundred and  four"
      // Not spelled.
      u"|3000000000=3000000000|1E+20=1E+20",
      [](std::u16string_view number, const std::string& words) {
        EXPECT_EQ(called(u"NumberToWords", number), inQuotes(words));
        EXPECT_EQ(called(u"NumberToWords", doubleOf(Variant(number))), inQuotes(words));
      });
  forEachPair(
      u"1,234=one thousand two hundred and  thirty four| 7 =seven|007=and  seven|12.0=and  twelve"
      u"|12321.=one hundred twenty three thousand two hundred and|1e3=one hundred and  three"
      u"|000,000,000,000,000,000,001=and  one|abc=abc| 1,2x = 1,2x |2147483648=2147483648|=",
      [](std::u16string_view text, const std::string& words) {
        EXPECT_EQ(called(u"NumberToWords", text), inQuotes(words));
      });
  EXPECT_EQ(called(u"NumberToWords", Boolean::True), "\"and\"");
}

TEST(NumberToWords, NeverRaises) {
  const Variant seven(
      ScriptObject().defaultMember([](auto) { return Variant(std::int32_t{7}); }).object());
  EXPECT_EQ(called(u"NumberToWords", seven), "\"seven\"");
  EXPECT_EQ(called(u"NumberToWords", Variant()), "\"\"");
  const double none = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(called(u"NumberToWords", none), inQuotes(toUtf8(textOf(Variant(none)))));
  for (const Variant& wrong : {Variant::null(), Variant(ScriptObject().object()), Variant(Object()),
                               arrayOf({Variant(1)}), Variant::missing()}) {
    EXPECT_EQ(called(u"NumberToWords", wrong), "Empty");
  }
}

}  // namespace
}  // namespace quendal::test
