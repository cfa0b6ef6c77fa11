// Values on their way into arrays, the names of their types, and failures that others report.
#include <gtest/gtest.h>

#include "base/utf8.h"
#include "core/array_view.h"
#include "core/dictionary.h"
#include "tests/core/raw_call.h"
#include "tests/support/outcome.h"
#include "tests/support/script_object.h"

namespace quendal::test {
namespace {

TEST(Values, AnArrayOfOneTypeKeepsOnlyThatType) {
  const Object object = ScriptObject().defaultMember([](auto) { return Variant(1.0); }).object();
  Variant variable(u"8");
  const Variant reference = referenceTo(variable);
  const struct {
    Variant value;
    VARTYPE type;
    const char* element;
  } rows[] = {{variable, VT_I2, "Integer 8"},       {reference, VT_R8, "Double 8"},
              {reference, VT_VARIANT, "String 8"},  {variable, VT_DISPATCH, "error 424"},
              {Variant::null(), VT_I2, "error 94"}, {object, VT_I2, "error 13"}};
  for (const auto& row : rows)
    EXPECT_EQ(textOrError([&] {
                const Variant element = elementOf(row.value, row.type);
                return toUtf8(typeNameOf(element) + u" " + textOf(element));
              }),
              row.element);
  for (const int type : {VT_DISPATCH, VT_UNKNOWN, VT_VARIANT}) {
    const Variant element = elementOf(Variant(object), static_cast<VARTYPE>(type));
    EXPECT_EQ(element.vt, type == VT_VARIANT ? VT_DISPATCH : type);
    EXPECT_EQ(element.punkVal, object.dispatch());
  }
}

TEST(Values, TypesHaveTheHostsNames) {
  std::u16string names;
  for (const int type :
       std::initializer_list<int>{VT_I2, VT_R4, VT_CY, VT_DATE, VT_ERROR, VT_BOOL, VT_UNKNOWN,
                                  VT_UI1, VT_DECIMAL, VT_UI4, kVariantArray}) {
    VARIANT value{};
    value.vt = static_cast<VARTYPE>(type);
    names.append(typeNameOf(value)).append(u" ");
  }
  EXPECT_EQ(toUtf8(names),
            "Integer Single Currency Date Error Boolean Nothing Byte Decimal Unknown Variant() ");
}

template <class Step>
std::string raised(Step&& step) {
  return textOrFailure([&] { return step(), std::string(); });
}

TEST(Failures, HaveTheNumbersAndTextsThatAScriptKnows) {
  const std::pair<HRESULT, std::int32_t> rows[] = {{DISP_E_TYPEMISMATCH, 13},
                                                   {DISP_E_OVERFLOW, 6},
                                                   {DISP_E_BADVARTYPE, 458},
                                                   {DISP_E_BADINDEX, 9},
                                                   {DISP_E_ARRAYISLOCKED, 10},
                                                   {DISP_E_UNKNOWNNAME, 438},
                                                   {DISP_E_MEMBERNOTFOUND, 438},
                                                   {DISP_E_BADPARAMCOUNT, 450},
                                                   {DISP_E_PARAMNOTOPTIONAL, 449},
                                                   {DISP_E_PARAMNOTFOUND, 448},
                                                   {DISP_E_NONAMEDARGS, 446},
                                                   {E_OUTOFMEMORY, 7},
                                                   {E_INVALIDARG, 5},
                                                   {E_NOINTERFACE, 430},
                                                   {E_NOTIMPL, 445},
                                                   {E_ACCESSDENIED, 70},
                                                   {E_FAIL, E_FAIL},
                                                   {errorCode(57), 57}};
  for (const auto& [code, number] : rows)
    EXPECT_EQ(AutomationError::fromRuntime(code).number(), number);
  EXPECT_EQ(raised([] { check(E_NOTIMPL); }),
            "445 QUENDAL_REPORTS_ASP: Object doesn't support this action");
  EXPECT_EQ(raised([] { check(errorCode(457)); }),
            "457 QUENDAL_REPORTS_ASP: Automation error 0x800A01C9");
  EXPECT_EQ(raised([] { checkDictionary(errorCode(457)); }),
            "457 QUENDAL_REPORTS_ASP: This key is already associated with an element of this "
            "collection");
}

/// An object whose members all fail, by what they put into the exception or leave to be asked for.
class Failing final : public IDispatch {
 public:
  HRESULT code = DISP_E_EXCEPTION;
  EXCEPINFO details{};

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
  ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID* ids) override {
    *ids = 1;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*,
                                   EXCEPINFO* exception, UINT*) override {
    *exception = details;
    return code;
  }

  static HRESULT STDMETHODCALLTYPE fillIn(EXCEPINFO* exception) {
    exception->scode = errorCode(1234);
    exception->bstrSource = newBstr(u"Late");
    exception->bstrDescription = newBstr(u"told when asked");
    return S_OK;
  }
};

TEST(Failures, OfAnObjectArePassedOnAsTheyCame) {
  const struct {
    HRESULT code, scode;
    WORD number;
    bool isDeferred;
    const char* error;
  } rows[] = {
      {DISP_E_EXCEPTION, 0, 0, true, "1234 Late: told when asked"},
      {DISP_E_EXCEPTION, 0, 99, false, "99 QUENDAL_REPORTS_ASP: Automation error 0x800A0063"},
      {DISP_E_EXCEPTION, S_FALSE, 0, false,
       "-2147467259 QUENDAL_REPORTS_ASP: Automation error 0x80004005"},
      {DISP_E_OVERFLOW, E_FAIL, 99, false, "6 QUENDAL_REPORTS_ASP: Overflow"}};
  for (const auto& row : rows) {
    Failing failing;
    failing.code = row.code;
    failing.details.scode = row.scode;
    failing.details.wCode = row.number;
    failing.details.pfnDeferredFillIn = row.isDeferred ? &Failing::fillIn : nullptr;
    EXPECT_EQ(raised([&] { Object(&failing).call(u"Anything"); }), row.error);
  }
}

}  // namespace
}  // namespace quendal::test
