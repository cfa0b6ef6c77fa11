// The parts of the automation runtime that are this home's own: depth, sizes, odd values.
#include <limits>
#include <utility>

#include "automation/values.h"
#include "core/dictionary.h"
#include "tests/arrays/page_arrays.h"
#include "tests/support/script_object.h"
#include "tests/support/small_stack.h"
#include "tests/support/text_rows.h"

namespace quendal::test {
namespace {

// Wraps a value, without a copy of it, in an array.
void wrap(Variant& value) {
  SAFEARRAY* array = SafeArrayCreateVector(VT_VARIANT, 0, 1);
  *static_cast<VARIANT*>(array->pvData) = value.release();
  value = Variant::array(array);
}

TEST(PosixAutomation, DeepContainersAreCopiedAndDestroyedWithoutDeepCalls) {
  constexpr int kDeep = 100000;
  const Object object = ScriptObject().object();
  onSmallStack([&] {
    Variant arrays(object), dictionaries(object);
    for (int level = 0; level < kDeep; ++level) {
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
  EXPECT_EQ(SafeArrayCreateVector(VT_UI1, std::numeric_limits<LONG>::max(), 2), nullptr);
  EXPECT_EQ(SafeArrayCreate(VT_I4, 0, wide), nullptr);
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
  --array.parray->cLocks;
}

TEST(PosixAutomation, GrowingByOneMovesFewBytes) {
  const Variant array = arrayOf({});
  const void* block = array.parray->pvData;
  int moves = 0;
  for (ULONG count = 1; count <= 10000; ++count) {
    SAFEARRAYBOUND bound{count, 0};
    ASSERT_EQ(SafeArrayRedim(array.parray, &bound), S_OK);
    if (std::exchange(block, array.parray->pvData) != array.parray->pvData) ++moves;
  }
  EXPECT_LT(moves, 60);
}

TEST(PosixAutomation, EndlessReferencesEnd) {
  VARIANT loop = referenceTo(loop);
  Variant target;
  EXPECT_EQ(VariantCopyInd(&target, &loop), E_INVALIDARG);
  EXPECT_EQ(convert(loop, VT_I4), "invalid");
  loop.pvarVal = nullptr;
  EXPECT_EQ(VariantCopyInd(&target, &loop), E_INVALIDARG);
}

TEST(PosixAutomation, ConvertsWhereSystemsDiffer) {
  expectConversions({{-1.5e-7, VT_BSTR, "-0.00000015"},
                     {Variant::date(38415.999999), VT_BSTR, "3/5/2005"},   // to the nearest second
                     {Variant::date(2958466 - 1e-8), VT_BSTR, "invalid"},  // into the year 10000
                     {decimal(0, 123445, 5, false), VT_CY, "12344"},
                     {decimal(0, 1, 29, true), VT_BSTR, "invalid"},
                     {i8(922337203685477), VT_CY, "9223372036854770000"},
                     {u"45000.5", VT_DATE, "45000.5"},
                     {u"2005-03-05T12:00:00", VT_DATE, "38416.5"},
                     {u"3/5/29", VT_DATE, "47182"},
                     {u"3/5/30", VT_DATE, "11022"},
                     {u"31 March 05", VT_DATE, "38442"}});
  forEachText(u"2005-03-05T|T14:30|2005-03-05T14:30:00Z|,3/5/2005",
              [](auto wrong) { EXPECT_EQ(convert(Variant(wrong), VT_DATE), "type mismatch"); });
}

}  // namespace
}  // namespace quendal::test
