// The parts of the automation runtime that are this home's own: depth, sizes, odd values, numbers.
#include <bit>
#include <cmath>
#include <random>
#include <utility>

#include "automation/posix/number_text.h"
#include "automation/values.h"
#include "core/dictionary.h"
#include "tests/support/text_rows.h"
#include "tests/support/threads.h"

namespace quendal::test {
namespace {

// Wraps a value, without a copy of it, in an array.
void wrap(Variant& value) {
  SAFEARRAY* array = SafeArrayCreateVector(VT_VARIANT, 0, 1);
  *static_cast<VARIANT*>(array->pvData) = value.release();
  value = Variant::array(array);
}

TEST(PosixAutomation, DeepContainersAreCopiedAndDestroyedWithoutDeepCalls) {
  const Object object = ScriptObject().object();
  onSmallStack([&] {
    Variant arrays(object), dictionaries(object);
    for (int level = 0; level < 100000; ++level) {
      wrap(arrays);
      if (level % 2 == 0) wrap(dictionaries);
      const Dictionary dictionary = Dictionary::create();
      dictionary.add(1, dictionaries);
      dictionaries = Variant(dictionary.object());
    }
    Variant copy(arrays);
    EXPECT_EQ(referencesOf(object), 4U);
    arrays = Variant();
    dictionaries = Variant();
    EXPECT_EQ(referencesOf(object), 2U);
  });
  EXPECT_EQ(referencesOf(object), 1U);
}

TEST(PosixAutomation, RefusesSizesThatNoArrayHas) {
  SAFEARRAYBOUND wide[] = {{0xFFFFFFFF, 0}, {0xFFFFFFFF, 0}, {0xFFFFFFFF, 0}};
  EXPECT_EQ(SafeArrayCreate(VT_VARIANT, 3, wide), nullptr);
  EXPECT_EQ(SafeArrayCreateVector(VT_VARIANT, 0, 0x7FFFFFFF), nullptr);
  EXPECT_EQ(SafeArrayCreateVector(VT_UI1, 0x7FFFFFFF, 2), nullptr);
  SAFEARRAYBOUND withNone[] = {{0xFFFFFFFF, 0}, {0, 0}};
  EXPECT_EQ(SafeArrayCreate(VT_VARIANT, 2, withNone), nullptr);
  EXPECT_EQ(SysAllocStringLen(nullptr, 0xFFFFFFFF), nullptr);
  Variant array = arrayOf({7});
  SAFEARRAYBOUND bound{0x7FFFFFFF, 0};
  EXPECT_EQ(SafeArrayRedim(array.parray, &bound), E_OUTOFMEMORY);
  EXPECT_EQ(shownArray(array), "[7]");
  ++array.parray->cLocks;
  EXPECT_EQ(VariantClear(&array), DISP_E_ARRAYISLOCKED);
  EXPECT_EQ(array.vt, kVariantArray);
  EXPECT_EQ(SafeArrayUnaccessData(array.parray), S_OK);
  EXPECT_EQ(SafeArrayUnaccessData(array.parray), E_UNEXPECTED);
}

TEST(PosixAutomation, EndlessReferencesEnd) {
  VARIANT loop = referenceTo(loop);
  EXPECT_EQ(convert(loop, VT_I4), "invalid");
  loop.pvarVal = nullptr;
  EXPECT_EQ(convert(loop, VT_I4), "invalid");
}

TEST(PosixAutomation, ConvertsWhereSystemsDiffer) {
  expectConversions({{-1.5e-7, VT_BSTR, "-0.00000015"},
                     {Variant::date(38415.999999), VT_BSTR, "3/5/2005"},   // to the nearest second
                     {Variant::date(2958466 - 1e-8), VT_BSTR, "invalid"},  // into the year 10000
                     {decimal(0, 123445, 5, false), VT_CY, "12344"},
                     {i8(922337203685477), VT_CY, "9223372036854770000"},
                     {u"45000.5", VT_DATE, "45000.5"},
                     {u"2005-03-05T12:00:00", VT_DATE, "38416.5"},
                     {u"3/5/29", VT_DATE, "47182"},
                     {u"3/5/30", VT_DATE, "11022"},
                     {u"31 March 05", VT_DATE, "38442"}});
  forEachText(u"2005-03-05T|T14:30|2005-03-05T14:30:00Z|,3/5/2005|1/2-2005",
              [](auto wrong) { EXPECT_EQ(convert(Variant(wrong), VT_DATE), "type mismatch"); });
}

std::string realText(double value) {
  const automation::NumberText text = automation::realText(value, 15);
  return {text.view().begin(), text.view().end()};
}

void expectExact(const std::string& text) {
  const auto read = automation::parseNumber(std::u16string(text.begin(), text.end()));
  ASSERT_TRUE(read) << text;
  EXPECT_EQ(automation::toReal(*read), std::strtod(text.c_str(), nullptr)) << text;
}

TEST(PosixNumbers, HaveTextsOfFifteenDigits) {
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
      const std::string text = realText(value);
      ASSERT_EQ(std::strtod(text.c_str(), nullptr), std::strtod(rounded, nullptr)) << text;
      ASSERT_LE(text.size(), 22U) << text;
      expectExact(text);
    }
  }
}

TEST(PosixNumbers, AreReadExactlyHoweverLong) {
  const std::pair<double, const char*> rows[] = {
      {0.00001, "0.00001"},
      {-1.234567E-9, "-0.000000001234567"},
      {5E-16, "5E-16"},
      {1.0 / 30, "3.33333333333333E-02"},
      {-1e15, "-1E+15"},
      {1e14 + 0.5, "100000000000000"},
      {-HUGE_VAL, "-1.#INF"},
      {0x0.09abf841e88bp-1022, "8.40639584018299E-310"},
      {9.999999999999995, "9.99999999999999"},
      {9.999999999999998, "10"},
  };
  for (const auto& [value, text] : rows) EXPECT_EQ(realText(value), text);
  for (const char* numeral :
       {"9007199254740993", "9007199254740992.99999999999999999999999999999999999999999",
        "9007199254740993.00000000000000000000000000000000000000000000000001",
        "2.2250738585072011e-308", "1.7976931348623158e308", "4.9e-324", "0e999", "1e-999",
        "123456789012345678901234567890123456789012345e-40"})
    expectExact(numeral);
  // A half is one only when nothing follows it, however far away.
  const std::u16string half = u"2.5" + std::u16string(40, u'0');
  EXPECT_TRUE(automation::roundTo(*automation::parseNumber(half), 0) == 2);
  EXPECT_TRUE(automation::roundTo(*automation::parseNumber(half + u"1"), 0) == 3);
}

}  // namespace
}  // namespace quendal::test
