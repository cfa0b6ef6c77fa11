// Conversions between the types of values: the same tables hold for the system's own runtime.
#include <gtest/gtest.h>
#include <quendal/automation.h>

#include <cstdio>
#include <string>
#include <utility>
#include <vector>

#include "automation/values.h"
#include "tests/support/text_rows.h"

namespace quendal::test {
namespace {

std::string outcome(HRESULT result) {
  if (result == DISP_E_TYPEMISMATCH) return "type mismatch";
  if (result == DISP_E_OVERFLOW) return "overflow";
  if (result == DISP_E_BADVARTYPE) return "bad type";
  char buffer[32];
  std::snprintf(buffer, sizeof(buffer), "error %08X", static_cast<unsigned>(result));
  return buffer;
}

std::string convert(const Value& source, VARTYPE type, USHORT flags = 0) {
  Value target;
  const HRESULT result = VariantChangeTypeEx(&target.value, source.source(), 0x0409, flags, type);
  if (FAILED(result)) return outcome(result);
  EXPECT_EQ(target.value.vt, type);
  return show(target.value);
}

struct Conversion {
  Value source;
  VARTYPE type;
  const char* expected;
};

void check(const std::vector<Conversion>& conversions) {
  for (const Conversion& row : conversions) {
    EXPECT_EQ(convert(row.source, row.type), row.expected)
        << "from " << show(row.source.value) << " (" << row.source.value.vt << ") to " << row.type;
  }
}

TEST(Conversion, NumbersToText) {
  check({
      {empty(), VT_BSTR, ""},
      {i2(-32768), VT_BSTR, "-32768"},
      {i8(-9223372036854775807LL - 1), VT_BSTR, "-9223372036854775808"},
      {ui8(18446744073709551615ULL), VT_BSTR, "18446744073709551615"},
      {r8(-0.0), VT_BSTR, "0"},
      {r8(0.1 + 0.2), VT_BSTR, "0.3"},
      {r8(123456789012345.0), VT_BSTR, "123456789012345"},
      {r8(999999999999999.6), VT_BSTR, "1E+15"},
      {r8(100), VT_BSTR, "100"},
      {r8(1e300), VT_BSTR, "1E+300"},
      {r4(0.1F), VT_BSTR, "0.1"},
      {r4(12345678.0F), VT_BSTR, "1.234568E+07"},
      {cy(15000), VT_BSTR, "1.5"},
      {cy(100000), VT_BSTR, "10"},
      {cy(-1), VT_BSTR, "-0.0001"},
      {decimal(0, 150, 2, true), VT_BSTR, "-1.5"},
      {decimal(0, 1, 28, false), VT_BSTR, "0.0000000000000000000000000001"},
      {decimal(0xFFFFFFFF, ~0ULL, 0, false), VT_BSTR, "79228162514264337593543950335"},
      {decimal(0, 1, 29, false), VT_R8, "error 80070057"},
      {boolean(true), VT_BSTR, "-1"},
      {date(-1.25), VT_BSTR, "12/29/1899 6:00:00 AM"},
      {date(-0.25), VT_BSTR, "6:00:00 AM"},
      {date(38416), VT_BSTR, "3/5/2005"},
      {date(38416.5), VT_BSTR, "3/5/2005 12:00:00 PM"},
      {date(38416 + 47109 / 86400.0), VT_BSTR, "3/5/2005 1:05:09 PM"},
      {date(0), VT_BSTR, "12:00:00 AM"},
      {date(2958465), VT_BSTR, "12/31/9999"},
      {text(u"5 March 2005 6:00 am"), VT_DATE, "38416.25"},
      {text(u"2/30/2005"), VT_DATE, "type mismatch"},
  });
  EXPECT_EQ(convert(boolean(true), VT_BSTR, VARIANT_ALPHABOOL), "True");
}

TEST(Conversion, RoundsHalfToEvenAndRefusesWhatDoesNotFit) {
  check({
      {r8(0.5), VT_I2, "0"},
      {r8(2.5), VT_I4, "2"},
      {r8(-2.5), VT_I8, "-2"},
      {cy(25000), VT_I4, "2"},
      {cy(-35000), VT_I4, "-4"},
      {r8(-2.5), VT_CY, "-25000"},
      {decimal(0, 123455, 5, false), VT_CY, "12346"},
      {decimal(0, 25, 1, false), VT_I4, "2"},
      {r8(32767.5), VT_I2, "overflow"},
      {r8(-32768.5), VT_I2, "-32768"},
      {r8(-0.5), VT_UI1, "0"},
      {r8(-1.5), VT_UI4, "overflow"},
      {r8(9.3e18), VT_UI8, "9300000000000000000"},
      {i4(128), VT_I1, "overflow"},
      {i4(-1), VT_UI1, "overflow"},
      {r8(1e300), VT_R4, "overflow"},
      {r8(1e15), VT_CY, "overflow"},
      {r8(1e29), VT_DECIMAL, "overflow"},
      {r8(-0.25), VT_DECIMAL, "-25/2"},
      {cy(-12345), VT_DECIMAL, "-12345/4"},
      {boolean(true), VT_UI1, "255"},
      {r8(0.1), VT_BOOL, "-1"},
      {r8(2958466), VT_DATE, "overflow"},
      {r8(-657435), VT_DATE, "overflow"},
      {r8(2958465.5), VT_DATE, "2958465.5"},
      {r8(-657434.5), VT_DATE, "-657434.5"},
      {date(38416.75), VT_I4, "38417"},
  });
}

TEST(Conversion, TextToNumbers) {
  const std::pair<VARTYPE, std::u16string_view> rows[] = {
      {VT_I2, u" 12 =12|&HFFFF=-1|&H10000=overflow|32768=overflow"},
      {VT_I4, u"+5=5|12-=-12|(5)=-5|1,234,567=1234567|&H1f=31|&O17=15|&HFFFFFFFF=-1|3.5=4"},
      {VT_I8, u"9223372036854775807=9223372036854775807|9223372036854775808=overflow"},
      {VT_R8, u"$5=5|.5=0.5|5.=5|1E-2=0.01|1e-400=0|1e400=overflow"},
      {VT_CY, u"-1,234,567.8912=-12345678912"},
      {VT_DECIMAL, u"79228162514264337593543950336=overflow"},
      {VT_BOOL, u"fAlSe=0|#TRUE#=-1|2=-1|yes=type mismatch"}};
  for (const auto& [type, pairs] : rows)
    forEachPair(pairs, [&](auto given, const auto& expected) {
      EXPECT_EQ(convert(text(given), type), expected);
    });
  forEachText(
      u"| |.|-|12x|x12|1 2|1.2.3|-12-|1e|1e5.5|&H|&HG|&17|0x10|True|Inf|nan|(5|5)|,5|\u0661",
      [](auto wrong) {
        EXPECT_EQ(convert(text(wrong), VT_R8), "type mismatch");
        EXPECT_EQ(convert(text(wrong), VT_I4), "type mismatch");
      });
}

TEST(Conversion, OtherPairs) {
  check({
      {empty(), VT_I4, "0"},
      {empty(), VT_NULL, "Null"},
      {i4(5), VT_EMPTY, "Empty"},
      {null(), VT_I4, "type mismatch"},
      {null(), VT_EMPTY, "type mismatch"},
      {error(DISP_E_PARAMNOTFOUND), VT_BSTR, "type mismatch"},
      {i4(5), VT_ERROR, "type mismatch"},
      {i4(5), VT_ARRAY | VT_I4, "type mismatch"},
      {i4(5), 15, "bad type"},
      {i4(5), VT_INT, "5"},
  });
}

TEST(Conversion, FollowsReferencesAndWorksInPlace) {
  Value number = r8(2.5);
  VARIANT inner = number.value;
  VARIANT outer;
  VariantInit(&outer);
  outer.vt = VT_BYREF | VT_VARIANT;
  outer.pvarVal = &inner;
  inner.vt = VT_BYREF | VT_R8;
  inner.pdblVal = &number.value.dblVal;
  Value target;
  ASSERT_EQ(VariantChangeTypeEx(&target.value, &inner, 0x0409, 0, VT_I4), S_OK);
  EXPECT_EQ(show(target.value), "2");
  ASSERT_EQ(VariantChangeTypeEx(&target.value, &outer, 0x0409, 0, VT_BSTR), S_OK);
  EXPECT_EQ(show(target.value), "2.5");

  Value same = text(u"7");
  ASSERT_EQ(VariantChangeTypeEx(&same.value, &same.value, 0x0409, 0, VT_I4), S_OK);
  EXPECT_EQ(show(same.value), "7");
  EXPECT_EQ(convert(array(SafeArrayCreateVector(VT_VARIANT, 0, 1)), VT_BSTR), "type mismatch");
}

TEST(Conversion, ObjectsGiveTheirDefaultValue) {
  Counter counter;
  Counter refuses(DISP_E_MEMBERNOTFOUND);
  {
    EXPECT_EQ(convert(reference(counter), VT_BSTR), "42");
    EXPECT_EQ(convert(reference(counter), VT_R8), "42");
    EXPECT_NE(convert(reference(refuses), VT_BSTR), "42");
    const Value object = reference(counter);
    Value other;
    ASSERT_EQ(VariantChangeTypeEx(&other.value, object.source(), 0x0409, 0, VT_UNKNOWN), S_OK);
    EXPECT_EQ(other.value.vt, VT_UNKNOWN);
    EXPECT_EQ(counter.references, 3U);
  }
  EXPECT_EQ(counter.references, 1U);
  EXPECT_EQ(refuses.references, 1U);
}

}  // namespace
}  // namespace quendal::test
