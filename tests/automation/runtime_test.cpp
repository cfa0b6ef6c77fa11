// Copies, bounds and locks of arrays.
#include "tests/automation/values.h"

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
        {pageArray({pageArray({u"deep", object}), u"b"}), "[[deep ?] b]"},
        {pageArray({u"first", u"second"}, VT_BSTR, 1), "1[first second]"},
        {pageArray({object}, VT_DISPATCH, -2), "-2[?]"},
        {pageArray({2.5, 7}, VT_DECIMAL), "[2.5 7]"},
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

TEST(Arrays, RedimKeepsContentsAndReleasesTheRest) {
  const Object object = ScriptObject().object();
  const Variant array = pageArray({u"first", object});
  SAFEARRAYBOUND bound{1000, 0};
  ASSERT_EQ(SafeArrayRedim(array.parray, &bound), S_OK);
  const auto* values = static_cast<const VARIANT*>(array.parray->pvData);
  for (int i = 2; i < 1000; ++i) ASSERT_EQ(values[i].vt, VT_EMPTY);
  bound.cElements = 1;
  ASSERT_EQ(SafeArrayRedim(array.parray, &bound), S_OK);
  EXPECT_EQ(referencesOf(object), 1U);
  EXPECT_EQ(shownArray(array), "[first]");
}

TEST(Arrays, EveryLockIsCounted) {
  SAFEARRAY* array = SafeArrayCreateVector(VT_I4, 0, 1);
  void* data = nullptr;
  ASSERT_EQ(SafeArrayAccessData(array, &data), S_OK);
  ASSERT_EQ(SafeArrayAccessData(array, &data), S_OK);
  EXPECT_EQ(SafeArrayUnaccessData(array), S_OK);
  EXPECT_EQ(SafeArrayDestroy(array), DISP_E_ARRAYISLOCKED);
  EXPECT_EQ(SafeArrayUnaccessData(array), S_OK);
  EXPECT_EQ(SafeArrayUnaccessData(array), E_UNEXPECTED);
  EXPECT_EQ(SafeArrayDestroy(array), S_OK);
}

}  // namespace
}  // namespace quendal::test
