// The parts of the automation runtime that are this home's own: depth, sizes, odd texts.
#include <gtest/gtest.h>
#include <quendal/automation.h>

#include <limits>
#include <utility>

#include "automation/date_text.h"
#include "automation/dictionary_abi.h"
#include "automation/dispatch.h"
#include "automation/values.h"
#include "base/date.h"
#include "tests/support/text_rows.h"
#include "tests/support/threads.h"

namespace quendal::test {
namespace {

constexpr int kDeep = 100000;

// Wraps a value, taking it over, in an array.
VARIANT inArray(const VARIANT& value) {
  VARIANT wrapped;
  VariantInit(&wrapped);
  wrapped.vt = VT_ARRAY | VT_VARIANT;
  wrapped.parray = SafeArrayCreateVector(VT_VARIANT, 0, 1);
  *static_cast<VARIANT*>(wrapped.parray->pvData) = value;
  return wrapped;
}

VARIANT objectOf(Counter& counter) {
  VARIANT object = reference(counter).value;
  counter.AddRef();  // for the copy, which outlives the temporary
  return object;
}

TEST(PosixAutomation, DeepArraysAreCopiedAndDestroyedWithoutDeepCalls) {
  Counter counter;
  onSmallStack([&] {
    VARIANT chain = objectOf(counter);
    for (int level = 0; level < kDeep; ++level) chain = inArray(chain);
    Value copy;
    EXPECT_EQ(VariantCopy(&copy.value, &chain), S_OK);
    EXPECT_EQ(counter.references, 3U);
    EXPECT_EQ(VariantClear(&chain), S_OK);
    EXPECT_EQ(counter.references, 2U);
  });
  EXPECT_EQ(counter.references, 1U);
}

TEST(PosixAutomation, DeepDictionariesAreDestroyedWithoutDeepCalls) {
  Counter counter;
  onSmallStack([&] {
    VARIANT chain = objectOf(counter);
    for (int level = 0; level < kDeep; ++level) {
      if (level % 2 == 0) chain = inArray(chain);
      auto* dictionary = static_cast<automation::IDictionary*>(automation::newDictionary());
      EXPECT_EQ(dictionary->Add(i4(1).source(), &chain), S_OK);
      EXPECT_EQ(VariantClear(&chain), S_OK);
      chain.vt = VT_DISPATCH;
      chain.pdispVal = dictionary;
    }
    EXPECT_EQ(VariantClear(&chain), S_OK);
  });
  EXPECT_EQ(counter.references, 1U);
}

TEST(PosixAutomation, RefusesSizesThatNoArrayHas) {
  SAFEARRAYBOUND wide[] = {{0xFFFFFFFF, 0}, {0xFFFFFFFF, 0}, {0xFFFFFFFF, 0}};
  EXPECT_EQ(SafeArrayCreate(VT_VARIANT, 3, wide), nullptr);
  EXPECT_EQ(SafeArrayCreateVector(VT_VARIANT, 0, 0x7FFFFFFF), nullptr);
  EXPECT_EQ(SafeArrayCreateVector(VT_UI1, std::numeric_limits<LONG>::max(), 2), nullptr);
  EXPECT_EQ(SafeArrayCreate(VT_I4, 0, wide), nullptr);
  SAFEARRAYBOUND withNone[] = {{0xFFFFFFFF, 0}, {0, 0}};
  EXPECT_EQ(SafeArrayCreate(VT_VARIANT, 2, withNone), nullptr);
  SAFEARRAY* array = SafeArrayCreateVector(VT_VARIANT, 0, 1);
  SAFEARRAYBOUND bound{0x7FFFFFFF, 0};
  EXPECT_EQ(SafeArrayRedim(array, &bound), E_OUTOFMEMORY);
  array->fFeatures |= FADF_FIXEDSIZE;
  EXPECT_EQ(SafeArrayRedim(array, &bound), DISP_E_ARRAYISLOCKED);
  EXPECT_EQ(array->rgsabound[0].cElements, 1u);
  EXPECT_EQ(SafeArrayDestroy(array), S_OK);
  EXPECT_EQ(SysAllocStringLen(nullptr, 0xFFFFFFFF), nullptr);
}

TEST(PosixAutomation, GrowingByOneMovesFewBytes) {
  SAFEARRAY* array = SafeArrayCreateVector(VT_VARIANT, 0, 0);
  const void* block = array->pvData;
  int moves = 0;
  for (ULONG count = 1; count <= 10000; ++count) {
    SAFEARRAYBOUND bound{count, 0};
    ASSERT_EQ(SafeArrayRedim(array, &bound), S_OK);
    if (array->pvData != block) ++moves;
    block = array->pvData;
  }
  EXPECT_LT(moves, 60);
  EXPECT_EQ(SafeArrayDestroy(array), S_OK);
}

TEST(PosixAutomation, EndlessReferencesEnd) {
  VARIANT loop;
  VariantInit(&loop);
  loop.vt = VT_BYREF | VT_VARIANT;
  loop.pvarVal = &loop;
  Value target;
  EXPECT_EQ(VariantCopyInd(&target.value, &loop), E_INVALIDARG);
  EXPECT_EQ(VariantChangeTypeEx(&target.value, &loop, 0, 0, VT_I4), E_INVALIDARG);
  loop.pvarVal = nullptr;
  EXPECT_EQ(VariantCopyInd(&target.value, &loop), E_INVALIDARG);
}

TEST(PosixAutomation, DateTextIsStrictButNumbersConvert) {
  double moment = 0;
  EXPECT_TRUE(automation::parseDate(u"2005-03-05T14:30:00", moment));
  EXPECT_EQ(moment, 38416 + 52200 / 86400.0);
  forEachText(u"45000.5|-1|2005-03-05T|T14:30|2005-03-05T14:30:00Z|,3/5/2005",
              [&](auto wrong) { EXPECT_FALSE(automation::parseDate(wrong, moment)); });
  // Day before year, and where the centuries of short years part.
  for (const auto& [given, day] : {std::pair(u"3/5/30", dayOf(1930, 3, 5)),
                                   {u"3/5/29", dayOf(2029, 3, 5)},
                                   {u"31 March 05", dayOf(2005, 3, 31)}}) {
    EXPECT_TRUE(automation::parseDate(given, moment));
    EXPECT_EQ(moment, day);
  }
  Value target;
  ASSERT_EQ(VariantChangeTypeEx(&target.value, text(u"45000.5").source(), 0, 0, VT_DATE), S_OK);
  EXPECT_EQ(target.value.date, 45000.5);
  EXPECT_EQ(VariantChangeTypeEx(&target.value, date(2958466 - 1e-8).source(), 0, 0, VT_BSTR),
            E_INVALIDARG);  // rounds into the year 10000
}

TEST(PosixAutomation, ConvertsWhereSystemsDiffer) {
  const struct {
    Value source;
    VARTYPE type;
    const char* expected;
  } rows[] = {{r8(-1.5e-7), VT_BSTR, "-0.00000015"},
              {date(38415.999999), VT_BSTR, "3/5/2005"},  // to the nearest second
              {decimal(0, 123445, 5, false), VT_CY, "12344"},
              {i8(922337203685477), VT_CY, "9223372036854770000"}};
  for (const auto& row : rows) {
    Value target;
    ASSERT_EQ(VariantChangeTypeEx(&target.value, row.source.source(), 0, 0, row.type), S_OK);
    EXPECT_EQ(show(target.value), row.expected);
  }
  Value target;
  EXPECT_EQ(VariantChangeTypeEx(&target.value, decimal(0, 1, 29, true).source(), 0, 0, VT_BSTR),
            E_INVALIDARG);
}

TEST(PosixAutomation, LockedArraysStayInTheirVariant) {
  Value held = array(SafeArrayCreateVector(VT_VARIANT, 0, 1));
  void* data = nullptr;
  ASSERT_EQ(SafeArrayAccessData(held.value.parray, &data), S_OK);
  EXPECT_EQ(VariantClear(&held.value), DISP_E_ARRAYISLOCKED);
  EXPECT_EQ(held.value.vt, VT_ARRAY | VT_VARIANT);
  EXPECT_EQ(SafeArrayUnaccessData(held.value.parray), S_OK);
}

}  // namespace
}  // namespace quendal::test
