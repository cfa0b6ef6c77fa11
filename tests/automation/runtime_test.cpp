// Arrays, and conversions between the types of values: the same tables hold for the system's own
// runtime.
#include <memory>
#include <utility>

#include "automation/values.h"
#include "tests/support/text_rows.h"

namespace quendal::test {
namespace {

// The bounds of all dimensions, the first one first.
std::string boundsOf(const Variant& array) {
  std::string shown;
  for (UINT i = 1; i <= SafeArrayGetDim(array.parray); ++i) {
    LONG lower = 77, upper = 77;
    EXPECT_EQ(SafeArrayGetLBound(array.parray, i, &lower), S_OK);
    EXPECT_EQ(SafeArrayGetUBound(array.parray, i, &upper), S_OK);
    shown += " " + std::to_string(lower) + ":" + std::to_string(upper);
  }
  return shown;
}

TEST(Arrays, CopiesAreDeepAndShareObjects) {
  const Object object = ScriptObject().object();
  {
    const std::pair<Variant, const char*> rows[] = {
        {arrayOf({arrayOf({u"deep", object}), u"b"}), "[[deep ?] b]"},
        {arrayOf({u"first", u"second"}, VT_BSTR, 1), "1[first second]"},
        {arrayOf({object}, VT_DISPATCH, -2), "-2[?]"},
        {arrayOf({2.5, 7}, VT_DECIMAL), "[2.5 7]"},
        {of(u""), "[]"}};
    EXPECT_EQ(referencesOf(object), 3U);
    for (const auto& [array, text] : rows) {
      const Variant copy(array);
      EXPECT_NE(copy.parray, array.parray);
      EXPECT_EQ(shownArray(copy), text);
    }
  }
  EXPECT_EQ(referencesOf(object), 1U);
}

TEST(Arrays, HaveDimensionsOfWhichTheLastCanChange) {
  SAFEARRAYBOUND bounds[] = {{2, 0}, {2, -1}};
  const Variant array = Variant::array(SafeArrayCreate(VT_I2, 2, bounds), VT_I2);
  for (short i = 0; i < 4; ++i) static_cast<short*>(array.parray->pvData)[i] = i;
  const Variant copy(array);
  EXPECT_EQ(boundsOf(copy), " 0:1 -1:0");
  SAFEARRAYBOUND last{3, 5};
  ASSERT_EQ(SafeArrayRedim(copy.parray, &last), S_OK);
  EXPECT_EQ(boundsOf(copy), " 0:1 5:7");
  EXPECT_TRUE(shownArray(copy).ends_with("[0 1 2 3 0 0]")) << shownArray(copy);
  VARTYPE found = VT_EMPTY;
  EXPECT_EQ(SafeArrayGetVartype(copy.parray, &found), S_OK);
  EXPECT_EQ(found, VT_I2);
  LONG upper = 0;
  EXPECT_EQ(SafeArrayGetUBound(copy.parray, 0, &upper), DISP_E_BADINDEX);
  EXPECT_EQ(SafeArrayGetUBound(copy.parray, 3, &upper), DISP_E_BADINDEX);
  EXPECT_EQ(SafeArrayCreate(77, 1, bounds), nullptr);
}

TEST(Arrays, RedimReleasesWhatGoes) {
  const Object object = ScriptObject().object();
  const Variant array = arrayOf({u"first", object});
  SAFEARRAYBOUND bound{1, 0};
  ASSERT_EQ(SafeArrayRedim(array.parray, &bound), S_OK);
  EXPECT_EQ(referencesOf(object), 1U);
  EXPECT_EQ(shownArray(array), "[first]");
  // What goes may reach the array, but not change its size meanwhile.
  HRESULT inside = S_OK;
  const auto redim = [&](Variant*) { inside = SafeArrayRedim(array.parray, &bound); };
  std::shared_ptr<Variant> last(nullptr, redim);
  VariantClear(static_cast<VARIANT*>(array.parray->pvData));
  *static_cast<VARIANT*>(array.parray->pvData) =
      Variant(ScriptObject().member(u"Any", [last](auto) { return Variant(); }).object()).release();
  last.reset();
  bound.cElements = 0;
  EXPECT_EQ(SafeArrayRedim(array.parray, &bound), S_OK);
  EXPECT_EQ(inside, DISP_E_ARRAYISLOCKED);
}

TEST(Conversion, NumbersToText) {
  expectConversions({
      {i8(-9223372036854775807LL - 1), VT_BSTR, "-9223372036854775808"},
      {ui8(18446744073709551615ULL), VT_BSTR, "18446744073709551615"},
      {-0.0, VT_BSTR, "0"},
      {999999999999999.6, VT_BSTR, "1E+15"},
      {r4(12345678.0F), VT_BSTR, "1.234568E+07"},
      {cy(100000), VT_BSTR, "10"},
      {cy(-1), VT_BSTR, "-0.0001"},
      {decimal(0, 1, 28, false), VT_BSTR, "0.0000000000000000000000000001"},
      {decimal(0xFFFFFFFF, ~0ULL, 0, false), VT_BSTR, "79228162514264337593543950335"},
      {decimal(0, 1, 29, false), VT_R8, "invalid"},
      {Boolean::True, VT_BSTR, "-1"},
      {Variant::date(-1.25), VT_BSTR, "12/29/1899 6:00:00 AM"},
      {Variant::date(38416.5), VT_BSTR, "3/5/2005 12:00:00 PM"},
      {Variant::date(38416 + 47109 / 86400.0), VT_BSTR, "3/5/2005 1:05:09 PM"},
      {Variant::date(0), VT_BSTR, "12:00:00 AM"},
      {u"5 March 2005 6:00 am", VT_DATE, "38416.25"},
  });
  EXPECT_EQ(convert(Variant(Boolean::True), VT_BSTR, VARIANT_ALPHABOOL), "True");
}

TEST(Conversion, RoundsHalfToEvenAndRefusesWhatDoesNotFit) {
  expectConversions({
      {2.5, VT_I4, "2"},
      {cy(-35000), VT_I4, "-4"},
      {-2.5, VT_CY, "-25000"},
      {decimal(0, 123455, 5, false), VT_CY, "12346"},
      {32767.5, VT_I2, "overflow"},
      {-32768.5, VT_I2, "-32768"},
      {-0.5, VT_UI1, "0"},
      {-1.5, VT_UI4, "overflow"},
      {9.3e18, VT_UI8, "9300000000000000000"},
      {128, VT_I1, "overflow"},
      {-1, VT_UI1, "overflow"},
      {1e300, VT_R4, "overflow"},
      {1e15, VT_CY, "overflow"},
      {1e29, VT_DECIMAL, "overflow"},
      {-0.25, VT_DECIMAL, "-25/2"},
      {Boolean::True, VT_UI1, "255"},
      {0.1, VT_BOOL, "-1"},
      {2958466.0, VT_DATE, "overflow"},
      {-657435.0, VT_DATE, "overflow"},
  });
}

TEST(Conversion, TextToNumbers) {
  const std::pair<VARTYPE, std::u16string_view> rows[] = {
      {VT_I2, u" 12 =12|&HFFFF=-1|&H10000=overflow|32768=overflow|-32768=-32768"},
      {VT_I4, u"+5=5|12-=-12|(5)=-5|1,234,567=1234567|&H1f=31|&O17=15|&HFFFFFFFF=-1|3.5=4"},
      {VT_I8, u"9223372036854775807=9223372036854775807|9223372036854775808=overflow"},
      {VT_R8, u"$5=5|.5=0.5|5.=5|1E-2=0.01|1e-400=0|1e400=overflow"},
      {VT_CY, u"-1,234,567.8912=-12345678912"},
      {VT_DECIMAL, u"79228162514264337593543950336=overflow"},
      {VT_BOOL, u"fAlSe=0|#TRUE#=-1|2=-1|yes=type mismatch"}};
  for (const auto& [type, pairs] : rows)
    forEachPair(pairs, [&](auto given, const auto& expected) {
      EXPECT_EQ(convert(Variant(given), type), expected);
    });
  forEachText(u"| |.|-|12x|x12|1 2|1.2.3|-12-|1e|1e5.5|&H|&HG|&17|0x10|True|Inf|(5|5)|,5|\u0661",
              [](auto wrong) { EXPECT_EQ(convert(Variant(wrong), VT_R8), "type mismatch"); });
}

TEST(Conversion, OtherPairs) {
  expectConversions({
      {Variant(), VT_NULL, "Null"},
      {5, VT_EMPTY, "Empty"},
      {Variant::null(), VT_I4, "type mismatch"},
      {Variant::missing(), VT_BSTR, "type mismatch"},
      {5, VT_ERROR, "type mismatch"},
      {5, VT_ARRAY | VT_I4, "type mismatch"},
      {arrayOf({5}), VT_BSTR, "type mismatch"},
      {5, 15, "bad type"},
  });
  Variant same(u"7");
  ASSERT_EQ(VariantChangeTypeEx(&same, &same, 0x0409, 0, VT_I4), S_OK);
  EXPECT_EQ(show(same), "7");
}

TEST(Conversion, FollowsReferencesAndAsksObjects) {
  double number = 2.5;
  VARIANT inner = typedReference(VT_R8, &number);
  EXPECT_EQ(convert(inner, VT_I4), "2");
  EXPECT_EQ(convert(referenceTo(inner), VT_BSTR), "2.5");
  EXPECT_EQ(VariantCopyInd(&inner, &inner), S_OK);  // in place
  EXPECT_EQ(inner.vt, VT_R8);
  EXPECT_EQ(inner.dblVal, 2.5);

  const Object object = ScriptObject().defaultMember([](auto) { return Variant(42); }).object();
  const Object silent = ScriptObject().object();
  EXPECT_EQ(convert(Variant(object), VT_R8), "42");
  Variant other(silent);
  EXPECT_TRUE(FAILED(VariantChangeTypeEx(&other, &other, 0x0409, 0, VT_BSTR)));
  ASSERT_EQ(VariantChangeTypeEx(&other, &other, 0x0409, 0, VT_UNKNOWN), S_OK);
  EXPECT_EQ(other.vt, VT_UNKNOWN);
  EXPECT_EQ(referencesOf(silent), 2U);
  EXPECT_EQ(referencesOf(object), 1U);
}

}  // namespace
}  // namespace quendal::test
