// Conversions between the types of values: the same tables hold for the system's own runtime.
#include <gtest/gtest.h>
#include <quendal/automation.h>

#include <cstdio>
#include <string>
#include <utility>
#include <vector>

#include "platform/automation_values.h"

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
      {i4(2147483647), VT_BSTR, "2147483647"},
      {i8(-9223372036854775807LL - 1), VT_BSTR, "-9223372036854775808"},
      {ui8(18446744073709551615ULL), VT_BSTR, "18446744073709551615"},
      {ui1(200), VT_BSTR, "200"},
      {r8(0.0), VT_BSTR, "0"},
      {r8(-0.0), VT_BSTR, "0"},
      {r8(1.5), VT_BSTR, "1.5"},
      {r8(-0.5), VT_BSTR, "-0.5"},
      {r8(0.1), VT_BSTR, "0.1"},
      {r8(0.1 + 0.2), VT_BSTR, "0.3"},
      {r8(1 / 3.0), VT_BSTR, "0.333333333333333"},
      {r8(2 / 3.0), VT_BSTR, "0.666666666666667"},
      {r8(0.0001), VT_BSTR, "0.0001"},
      {r8(0.00001), VT_BSTR, "1E-05"},
      {r8(1.25e-7), VT_BSTR, "1.25E-07"},
      {r8(100), VT_BSTR, "100"},
      {r8(123456789012345.0), VT_BSTR, "123456789012345"},
      {r8(999999999999999.6), VT_BSTR, "1E+15"},
      {r8(1e15), VT_BSTR, "1E+15"},
      {r8(-1.5e20), VT_BSTR, "-1.5E+20"},
      {r8(1.7976931348623157e308), VT_BSTR, "1.79769313486232E+308"},
      {r8(5e-324), VT_BSTR, "4.94065645841247E-324"},
      {r4(0.1F), VT_BSTR, "0.1"},
      {r4(1234567.0F), VT_BSTR, "1234567"},
      {r4(12345678.0F), VT_BSTR, "1.234568E+07"},
      {cy(0), VT_BSTR, "0"},
      {cy(15000), VT_BSTR, "1.5"},
      {cy(-1), VT_BSTR, "-0.0001"},
      {cy(9223372036854775807LL), VT_BSTR, "922337203685477.5807"},
      {decimal(0, 150, 2, true), VT_BSTR, "-1.5"},
      {decimal(0, 1, 28, false), VT_BSTR, "0.0000000000000000000000000001"},
      {decimal(0xFFFFFFFF, ~0ULL, 0, false), VT_BSTR, "79228162514264337593543950335"},
      {boolean(true), VT_BSTR, "-1"},
      {boolean(false), VT_BSTR, "0"},
  });
  EXPECT_EQ(convert(boolean(true), VT_BSTR, VARIANT_ALPHABOOL), "True");
  EXPECT_EQ(convert(boolean(false), VT_BSTR, VARIANT_ALPHABOOL), "False");
}

TEST(Conversion, RoundsHalfToEvenAndRefusesWhatDoesNotFit) {
  check({
      {r8(0.5), VT_I2, "0"},
      {r8(1.5), VT_I2, "2"},
      {r8(2.5), VT_I4, "2"},
      {r8(-2.5), VT_I8, "-2"},
      {cy(25000), VT_I4, "2"},
      {cy(-15000), VT_I2, "-2"},
      {decimal(0, 25, 1, false), VT_I4, "2"},
      {text(u"3.5"), VT_I4, "4"},
      {r8(32767.4), VT_I2, "32767"},
      {r8(32767.5), VT_I2, "overflow"},
      {r8(-32768.5), VT_I2, "-32768"},
      {r8(2147483647.5), VT_I4, "overflow"},
      {r8(-2147483648.5), VT_I4, "-2147483648"},
      {r8(255.5), VT_UI1, "overflow"},
      {r8(-0.5), VT_UI1, "0"},
      {r8(-1.5), VT_UI4, "overflow"},
      {r8(9.3e18), VT_I8, "overflow"},
      {r8(9.3e18), VT_UI8, "9300000000000000000"},
      {i4(128), VT_I1, "overflow"},
      {i4(40000), VT_I2, "overflow"},
      {i4(256), VT_UI1, "overflow"},
      {i4(-1), VT_UI1, "overflow"},
      {i8(4294967296), VT_I4, "overflow"},
      {r8(1e300), VT_R4, "overflow"},
      {r8(1.0), VT_CY, "10000"},
      {r8(1e15), VT_CY, "overflow"},
      {r8(1e29), VT_DECIMAL, "overflow"},
      {r8(-0.25), VT_DECIMAL, "-25/2"},
      {cy(12345), VT_DECIMAL, "12345/4"},
      {boolean(true), VT_I4, "-1"},
      {boolean(true), VT_UI1, "255"},
      {boolean(true), VT_R8, "-1"},
      {r8(0.1), VT_BOOL, "-1"},
      {i4(0), VT_BOOL, "0"},
      {r8(2958465.9), VT_DATE, "2958465.8999999999"},
      {r8(2958466), VT_DATE, "overflow"},
      {r8(-657434), VT_DATE, "-657434"},
      {r8(-657435), VT_DATE, "overflow"},
      {date(38416.75), VT_I4, "38417"},
      {date(38416.75), VT_R8, "38416.75"},
  });
}

TEST(Conversion, TextToNumbers) {
  check({
      {text(u" 12 "), VT_I2, "12"},
      {text(u"-12"), VT_I4, "-12"},
      {text(u"+5"), VT_I4, "5"},
      {text(u"12-"), VT_I4, "-12"},
      {text(u"(5)"), VT_I4, "-5"},
      {text(u"$5"), VT_R8, "5"},
      {text(u"1,234,567"), VT_I4, "1234567"},
      {text(u"1.5"), VT_R8, "1.5"},
      {text(u".5"), VT_R8, "0.5"},
      {text(u"5."), VT_R8, "5"},
      {text(u"1e5"), VT_R8, "100000"},
      {text(u"1E-2"), VT_R8, "0.01"},
      {text(u"1e-400"), VT_R8, "0"},
      {text(u"1e400"), VT_R8, "overflow"},
      {text(u"&H1f"), VT_I4, "31"},
      {text(u"&O17"), VT_I4, "15"},
      {text(u"&HFFFF"), VT_I2, "-1"},
      {text(u"&HFFFF"), VT_I4, "65535"},
      {text(u"&HFFFFFFFF"), VT_I4, "-1"},
      {text(u"&H10000"), VT_I2, "overflow"},
      {text(u"9223372036854775807"), VT_I8, "9223372036854775807"},
      {text(u"9223372036854775808"), VT_I8, "overflow"},
      {text(u"-1,234,567.8912"), VT_CY, "-12345678912"},
      {text(u"79228162514264337593543950336"), VT_DECIMAL, "overflow"},
      {text(u"32768"), VT_I2, "overflow"},
      {text(u"True"), VT_BOOL, "-1"},
      {text(u"fAlSe"), VT_BOOL, "0"},
      {text(u"#TRUE#"), VT_BOOL, "-1"},
      {text(u"2"), VT_BOOL, "-1"},
      {text(u"yes"), VT_BOOL, "type mismatch"},
  });
  for (const char16_t* wrong :
       {u"",     u" ",   u".",     u"-",  u"12x", u"x12",   u"1 2",  u"1.2.3",
        u"-12-", u"1e",  u"1e5.5", u"&H", u"&HG", u"&17",   u"0x10", u"True",
        u"Inf",  u"nan", u"(5",    u"5)", u",5",  u"\u0661"}) {
    EXPECT_EQ(convert(text(wrong), VT_R8), "type mismatch") << show(text(wrong).value);
    EXPECT_EQ(convert(text(wrong), VT_I4), "type mismatch");
  }
}

TEST(Conversion, OtherPairs) {
  check({
      {empty(), VT_I4, "0"},
      {empty(), VT_BOOL, "0"},
      {empty(), VT_DATE, "0"},
      {empty(), VT_NULL, "Null"},
      {i4(5), VT_EMPTY, "Empty"},
      {null(), VT_I4, "type mismatch"},
      {null(), VT_BSTR, "type mismatch"},
      {null(), VT_EMPTY, "type mismatch"},
      {error(DISP_E_PARAMNOTFOUND), VT_BSTR, "type mismatch"},
      {i4(5), VT_ERROR, "type mismatch"},
      {i4(5), VT_DISPATCH, "type mismatch"},
      {i4(5), VT_ARRAY | VT_I4, "type mismatch"},
      {i4(5), 15, "bad type"},
      {i4(5), VT_INT, "5"},
      {i4(5), VT_UINT, "5"},
  });
}

// Dates are compared as text: the last bit of the fraction is the runtime's own affair.
TEST(Conversion, TextToDateAndBack) {
  const std::pair<const char16_t*, const char*> rows[] = {
      {u"2005-03-05", "3/5/2005"},
      {u"2005-03-05 14:30", "3/5/2005 2:30:00 PM"},
      {u"14:30 2005-03-05", "3/5/2005 2:30:00 PM"},
      {u"3/5/2005", "3/5/2005"},
      {u"03/05/05", "3/5/2005"},
      {u"3-5-2005", "3/5/2005"},
      {u"3/5/29", "3/5/2029"},
      {u"3/5/99", "3/5/1999"},
      {u"13/5/2005", "5/13/2005"},
      {u"2005-13-05", "5/13/2005"},
      {u"2/29/2004", "2/29/2004"},
      {u"3/2005", "3/1/2005"},
      {u"5 March 2005", "3/5/2005"},
      {u"March 5, 2005", "3/5/2005"},
      {u"mar 5 2005", "3/5/2005"},
      {u"5-Mar-2005", "3/5/2005"},
      {u"2005 MARCH 5", "3/5/2005"},
      {u"March 2005", "3/1/2005"},
      {u"Saturday, March 5, 2005", "3/5/2005"},
      {u"March 5, 2005, 14:30", "3/5/2005 2:30:00 PM"},
      {u"3/5/2005 2:07:09 pm", "3/5/2005 2:07:09 PM"},
      {u"14:30", "2:30:00 PM"},
      {u"2:30 PM", "2:30:00 PM"},
      {u"2PM", "2:00:00 PM"},
      {u"12:00 AM", "12:00:00 AM"},
      {u"12:30 PM", "12:30:00 PM"},
      {u"14:30:15", "2:30:15 PM"},
      {u"1/1/100", "1/1/100"},
      {u"12/31/9999", "12/31/9999"},
      {u"1899-12-29 06:00", "12/29/1899 6:00:00 AM"},
  };
  for (const auto& [given, expected] : rows) {
    Value moment;
    const Value source = text(given);
    ASSERT_EQ(VariantChangeTypeEx(&moment.value, source.source(), 0x0409, 0, VT_DATE), S_OK)
        << expected;
    EXPECT_EQ(convert(moment, VT_BSTR), expected);
  }
  for (const char16_t* wrong : {u"",
                                u"abc",
                                u"13/13/2005",
                                u"2/30/2005",
                                u"2/29/2005",
                                u"24:00",
                                u"14:60",
                                u"14:30:60",
                                u"1/1/10000",
                                u"Monday",
                                u"March",
                                u"3/",
                                u"/3/5",
                                u"3//5/2005",
                                u"3/5/2005x",
                                u"2:30:",
                                u"2:30 PM PM",
                                u"2:30 AM 3/5/2005 4:00",
                                u"March March 5 2005",
                                u"5 March 2005 6"}) {
    EXPECT_EQ(convert(text(wrong), VT_DATE), "type mismatch") << show(text(wrong).value);
  }
  EXPECT_EQ(convert(date(-1.25), VT_BSTR), "12/29/1899 6:00:00 AM");
  EXPECT_EQ(convert(date(-0.25), VT_BSTR), "6:00:00 AM");
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
