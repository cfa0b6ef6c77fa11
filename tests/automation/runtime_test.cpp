// Copies, arrays and error information of the automation runtime.
#include <gtest/gtest.h>
#include <quendal/automation.h>

#include <initializer_list>
#include <string>
#include <thread>
#include <vector>

#include "automation/values.h"

namespace quendal::test {
namespace {

SAFEARRAY* vectorOf(std::initializer_list<Value> values) {
  SAFEARRAY* array = SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(values.size()));
  auto* next = static_cast<VARIANT*>(array->pvData);
  for (const Value& value : values) VariantCopy(next++, value.source());
  return array;
}

const VARIANT& element(const VARIANT& array, std::size_t index) {
  return static_cast<const VARIANT*>(array.parray->pvData)[index];
}

// The bounds of all dimensions, the first one first.
std::string boundsOf(SAFEARRAY* array) {
  std::string shown;
  for (UINT i = 1; i <= SafeArrayGetDim(array); ++i) {
    LONG lower = 77, upper = 77;
    EXPECT_EQ(SafeArrayGetLBound(array, i, &lower), S_OK);
    EXPECT_EQ(SafeArrayGetUBound(array, i, &upper), S_OK);
    shown += " " + std::to_string(lower) + ":" + std::to_string(upper);
  }
  return shown;
}

TEST(Values, CopiesAreDeepAndShareObjects) {
  Counter counter;
  {
    const Value inner = array(vectorOf({text(u"deep"), reference(counter)}));
    const Value source = array(vectorOf({inner, text(u"a\0b")}));
    const Value copy(source);
    const VARIANT& nested = element(copy.value, 0);
    ASSERT_EQ(nested.vt, VT_ARRAY | VT_VARIANT);
    EXPECT_NE(nested.parray, element(source.value, 0).parray);
    EXPECT_EQ(list(nested), "deep type 9");
    EXPECT_NE(element(nested, 0).bstrVal, element(element(source.value, 0), 0).bstrVal);
    EXPECT_EQ(element(nested, 1).pdispVal, &counter);
    EXPECT_EQ(counter.references, 4U);  // its owner, `inner`, `source`, `copy`
  }
  EXPECT_EQ(counter.references, 1U);
}

TEST(Values, CopyThroughAReference) {
  BSTR string = newText(u"text");
  SAFEARRAY* array = vectorOf({i4(1), i4(2)});
  VARIANT reference;
  VariantInit(&reference);
  Value copy;
  reference.vt = VT_BYREF | VT_BSTR;
  reference.pbstrVal = &string;
  ASSERT_EQ(VariantCopyInd(&copy.value, &reference), S_OK);
  EXPECT_EQ(show(copy.value), "text");
  EXPECT_NE(copy.value.bstrVal, string);
  reference.vt = VT_BYREF | VT_ARRAY | VT_VARIANT;
  reference.pparray = &array;
  ASSERT_EQ(VariantCopyInd(&copy.value, &reference), S_OK);
  EXPECT_NE(copy.value.parray, array);
  EXPECT_EQ(list(copy.value), "1 2");
  ASSERT_EQ(VariantCopy(&copy.value, &reference), S_OK);  // this one copies the reference
  EXPECT_EQ(copy.value.pparray, &array);
  ASSERT_EQ(VariantClear(&reference), S_OK);  // and clearing one leaves what it refers to
  EXPECT_EQ(readText(string), "text");
  SysFreeString(string);
  EXPECT_EQ(SafeArrayDestroy(array), S_OK);
}

TEST(Arrays, CopiesHaveTypeBoundsAndElements) {
  SAFEARRAYBOUND bounds[] = {{2, 0}, {3, -1}, {1, 10}};
  SAFEARRAY* array = SafeArrayCreate(VT_DECIMAL, 3, bounds);
  ASSERT_NE(array, nullptr);
  static_cast<DECIMAL*>(array->pvData)[5] = decimal(0, 7, 2, false).value.decVal;
  SAFEARRAY* copy = nullptr;
  ASSERT_EQ(SafeArrayCopy(array, &copy), S_OK);
  EXPECT_EQ(SafeArrayDestroy(array), S_OK);
  EXPECT_EQ(boundsOf(copy), " 0:1 -1:1 10:10");
  EXPECT_EQ(copy->cbElements, 16U);
  EXPECT_EQ(static_cast<DECIMAL*>(copy->pvData)[5].Lo64, 7U);
  VARTYPE found = VT_EMPTY;
  EXPECT_EQ(SafeArrayGetVartype(copy, &found), S_OK);
  EXPECT_EQ(found, VT_DECIMAL);
  LONG upper = 0;
  EXPECT_EQ(SafeArrayGetUBound(copy, 0, &upper), DISP_E_BADINDEX);
  EXPECT_EQ(SafeArrayGetUBound(copy, 4, &upper), DISP_E_BADINDEX);
  EXPECT_EQ(SafeArrayDestroy(copy), S_OK);

  array = SafeArrayCreateVector(VT_BSTR, 1, 2);
  static_cast<BSTR*>(array->pvData)[1] = newText(u"second");
  ASSERT_EQ(SafeArrayCopy(array, &copy), S_OK);
  EXPECT_EQ(SafeArrayDestroy(array), S_OK);
  EXPECT_EQ(boundsOf(copy), " 1:2");
  EXPECT_EQ(readText(static_cast<BSTR*>(copy->pvData)[1]), "second");
  EXPECT_EQ(SafeArrayDestroy(copy), S_OK);

  Counter counter;
  array = SafeArrayCreateVector(VT_DISPATCH, 0, 1);
  static_cast<IDispatch**>(array->pvData)[0] = reference(counter).value.pdispVal;
  counter.AddRef();  // for the array, which outlives the temporary
  ASSERT_EQ(SafeArrayCopy(array, &copy), S_OK);
  EXPECT_EQ(counter.references, 3U);
  EXPECT_EQ(SafeArrayDestroy(array), S_OK);
  EXPECT_EQ(SafeArrayDestroy(copy), S_OK);
  EXPECT_EQ(counter.references, 1U);

  array = SafeArrayCreateVector(VT_VARIANT, 0, 0);
  EXPECT_EQ(boundsOf(array), " 0:-1");
  EXPECT_EQ(SafeArrayDestroy(array), S_OK);
  EXPECT_EQ(SafeArrayCreate(77, 1, nullptr), nullptr);
}

TEST(Arrays, RedimKeepsContentsAndReleasesTheRest) {
  Counter counter;
  SAFEARRAY* array = vectorOf({text(u"first"), reference(counter)});
  const BSTR first = static_cast<VARIANT*>(array->pvData)[0].bstrVal;
  SAFEARRAYBOUND bound{1000, 0};
  ASSERT_EQ(SafeArrayRedim(array, &bound), S_OK);
  const auto* values = static_cast<const VARIANT*>(array->pvData);
  EXPECT_EQ(values[0].bstrVal, first);
  EXPECT_EQ(values[1].pdispVal, &counter);
  for (int i = 2; i < 1000; ++i) ASSERT_EQ(values[i].vt, VT_EMPTY);
  bound.cElements = 1;
  ASSERT_EQ(SafeArrayRedim(array, &bound), S_OK);
  EXPECT_EQ(counter.references, 1U);
  EXPECT_EQ(show(static_cast<const VARIANT*>(array->pvData)[0]), "first");
  EXPECT_EQ(SafeArrayDestroy(array), S_OK);

  // Only the last dimension changes; the elements before it stay where they are.
  SAFEARRAYBOUND bounds[] = {{2, 0}, {2, 0}};
  array = SafeArrayCreate(VT_I2, 2, bounds);
  for (int i = 0; i < 4; ++i) static_cast<short*>(array->pvData)[i] = static_cast<short>(i + 1);
  SAFEARRAYBOUND last{3, 5};
  ASSERT_EQ(SafeArrayRedim(array, &last), S_OK);
  EXPECT_EQ(boundsOf(array), " 0:1 5:7");
  const auto* numbers = static_cast<const short*>(array->pvData);
  EXPECT_EQ(std::vector<int>(numbers, numbers + 6), (std::vector<int>{1, 2, 3, 4, 0, 0}));
  EXPECT_EQ(SafeArrayDestroy(array), S_OK);
}

TEST(Arrays, EveryLockIsCounted) {
  SAFEARRAY* array = vectorOf({i4(1)});
  void* data = nullptr;
  ASSERT_EQ(SafeArrayAccessData(array, &data), S_OK);
  ASSERT_EQ(SafeArrayAccessData(array, &data), S_OK);
  EXPECT_EQ(SafeArrayUnaccessData(array), S_OK);
  SAFEARRAYBOUND bound{5, 0};
  EXPECT_EQ(SafeArrayRedim(array, &bound), DISP_E_ARRAYISLOCKED);
  EXPECT_EQ(SafeArrayDestroy(array), DISP_E_ARRAYISLOCKED);
  EXPECT_EQ(SafeArrayUnaccessData(array), S_OK);
  EXPECT_EQ(SafeArrayUnaccessData(array), E_UNEXPECTED);
  EXPECT_EQ(SafeArrayRedim(array, &bound), S_OK);
  EXPECT_EQ(SafeArrayDestroy(array), S_OK);
}

TEST(ErrorInformation, IsKeptOncePerThread) {
  ICreateErrorInfo* created = nullptr;
  ASSERT_EQ(CreateErrorInfo(&created), S_OK);
  created->SetDescription(const_cast<LPOLESTR>(oleText(u"description")));
  created->SetSource(const_cast<LPOLESTR>(oleText(u"source")));
  void* made = nullptr;
  ASSERT_EQ(created->QueryInterface(IID_IErrorInfo, &made), S_OK);
  auto* info = static_cast<IErrorInfo*>(made);
  ASSERT_EQ(SetErrorInfo(0, info), S_OK);
  info->Release();
  created->Release();

  HRESULT elsewhere = S_OK;
  std::thread([&] {
    IErrorInfo* none = nullptr;
    elsewhere = GetErrorInfo(0, &none);
  }).join();
  EXPECT_EQ(elsewhere, S_FALSE);
  IErrorInfo* found = nullptr;
  ASSERT_EQ(GetErrorInfo(0, &found), S_OK);
  BSTR texts[2] = {};
  EXPECT_EQ(found->GetDescription(&texts[0]), S_OK);
  EXPECT_EQ(found->GetSource(&texts[1]), S_OK);
  EXPECT_EQ(readText(texts[0]) + " of " + readText(texts[1]), "description of source");
  for (BSTR text : texts) SysFreeString(text);
  EXPECT_EQ(found->Release(), 0U);
  EXPECT_EQ(GetErrorInfo(0, &found), S_FALSE);  // it is handed out once
}

}  // namespace
}  // namespace quendal::test
