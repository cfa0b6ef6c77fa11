// Calls by name and through the function table, as hosts make them.
#include <gtest/gtest.h>

#include "base/utf8.h"
#include "core/dispatch.h"
#include "tests/core/probe.h"
#include "tests/core/raw_call.h"

namespace quendal::test {

/// The members' places in the function table after IDispatch, by a C++ client's declaration. Not
/// in the unnamed namespace: there the compiler would take it for a class without implementations.
struct ProbeTable : IDispatch {
  virtual HRESULT STDMETHODCALLTYPE Numbers(std::int16_t*, std::int32_t*, VARIANT_BOOL*,
                                            VARIANT_BOOL, BSTR*) = 0;
  virtual HRESULT STDMETHODCALLTYPE Defaults(std::int16_t*, BSTR, VARIANT*, VARIANT*, VARIANT_BOOL,
                                             std::int32_t, BSTR*) = 0;
  virtual HRESULT STDMETHODCALLTYPE Replace(VARIANT*, VARIANT) = 0;
  virtual HRESULT STDMETHODCALLTYPE Texts(BSTR, BSTR*, BSTR*) = 0;
  virtual HRESULT STDMETHODCALLTYPE List(std::int32_t, SAFEARRAY**, BSTR*) = 0;
  virtual HRESULT STDMETHODCALLTYPE NameOf(IDispatch**, BSTR*) = 0;
  virtual HRESULT STDMETHODCALLTYPE Fail(std::int32_t, std::int16_t*, std::int32_t*) = 0;
};

namespace {

std::string shown(const VARIANT& value) { return toUtf8(textOf(value)); }

class DispatchTest : public ::testing::Test {
 protected:
  Owned<Probe> probe_ = Owned<Probe>::make();
  Object object_ = probe_.object();
};

TEST_F(DispatchTest, NamesAreFoundInAnyCaseAndParametersByTheirOwn) {
  const auto ids = idsOf(object_.dispatch(), {u"nUMBERS", u"flag", u"SMALL", u"nothing"});
  EXPECT_GT(ids[0], 0);
  EXPECT_EQ(ids[1], 2);
  EXPECT_EQ(ids[2], 0);
  EXPECT_EQ(ids[3], DISPID_UNKNOWN);
  EXPECT_EQ(idsOf(object_.dispatch(), {u"Numberss"})[0], DISPID_UNKNOWN);
}

TEST_F(DispatchTest, NumbersConvertFromWhateverTheHostPasses) {
  const Variant text(u"7"), big(2.5), yes(Boolean::True), null = Variant::null();
  EXPECT_EQ(shown(rawCall(object_, u"Numbers", {text, big, yes}).value), "7,2,-1");
  // A Boolean keeps its bits; a number becomes one.
  Variant oddFlag(Boolean{1});
  EXPECT_EQ(shown(rawCall(object_, u"Numbers", {text, text, oddFlag}).value), "7,7,1");
  EXPECT_EQ(shown(rawCall(object_, u"Numbers", {text, text, big}).value), "7,7,-1");

  const struct {
    Variant value;
    HRESULT code;
  } refused[] = {{Variant(u"x"), DISP_E_TYPEMISMATCH},
                 {Variant(std::int32_t{40000}), DISP_E_OVERFLOW},
                 {null, DISP_E_TYPEMISMATCH},
                 {Variant(Object()), DISP_E_TYPEMISMATCH},
                 {Variant::missing(), DISP_E_PARAMNOTOPTIONAL}};
  for (const auto& row : refused) {
    const Outcome outcome = rawCall(object_, u"Numbers", {row.value, big, yes});
    EXPECT_EQ(outcome.code, row.code);
    EXPECT_EQ(outcome.argumentError, 2u);  // the first of three stands last
  }
}

TEST_F(DispatchTest, ReferencesAreWrittenBackOnlyWhenTheMemberChangedThem) {
  Variant small(u"5"), nested(std::int32_t{9});
  Variant middle = Variant::attach(referenceTo(nested));
  VARIANT_BOOL flag = VARIANT_FALSE;
  const Variant change(Boolean::True);
  const std::vector<VARIANT> arguments = {referenceTo(small), referenceTo(middle),
                                          typedReference(VT_BOOL, &flag)};
  EXPECT_EQ(shown(rawCall(object_, u"Numbers", arguments).value), "5,9,0");
  EXPECT_EQ(small.vt, VT_BSTR);  // unchanged, so it keeps its own type

  auto changing = arguments;
  changing.push_back(change);
  rawCall(object_, u"Numbers", changing);
  EXPECT_EQ(small.vt, VT_I2);
  EXPECT_EQ(small.iVal, 6);
  EXPECT_EQ(nested.lVal, 10);
  EXPECT_EQ(flag, VARIANT_TRUE);

  std::int32_t typed = 3;  // a reference of another type than the parameter's
  double real = 4.0;
  changing[0] = typedReference(VT_I4, &typed);
  changing[1] = typedReference(VT_R8, &real);
  rawCall(object_, u"Numbers", changing);
  EXPECT_EQ(typed, 4);
  EXPECT_EQ(real, 5.0);
}

TEST_F(DispatchTest, OmittedArgumentsTakeTheirDefaults) {
  const char* const allDefaults = "35|TEXT|String|Error|0|0";
  const Variant gap = Variant::missing();
  EXPECT_EQ(shown(rawCall(object_, u"Defaults", {}).value), allDefaults);
  EXPECT_EQ(shown(rawCall(object_, u"Defaults", {gap, gap, gap, gap, gap, gap}).value),
            allDefaults);
  const Variant four(std::int16_t{4}), text(u"t");
  EXPECT_EQ(shown(rawCall(object_, u"Defaults", {gap, gap, four}, {{u"style", four}}).value),
            "35|TEXT|Integer|Error|0|4");
  EXPECT_EQ(
      shown(rawCall(object_, u"Defaults", {four}, {{u"MISSING", text}, {u"Text", text}}).value),
      "4|t|String|String|0|0");
}

TEST_F(DispatchTest, WrongArgumentListsAreRefused) {
  const Variant one(std::int16_t{1});
  EXPECT_EQ(rawCall(object_, u"Texts", {one}).code, DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(rawCall(object_, u"Texts", {one, one}, {{u"ByValue", one}}).code,
            DISP_E_PARAMNOTFOUND);  // given twice
  EXPECT_EQ(rawCall(object_, u"Texts", {one}, {{u"Unknown", one}}).code, DISP_E_PARAMNOTFOUND);
  EXPECT_EQ(rawCall(object_, u"Unknown", {}).code, DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(rawCall(object_, u"Texts", {one, one}, {}, DISPATCH_PROPERTYGET).code,
            DISP_E_MEMBERNOTFOUND);  // a read does not run a method
}

TEST_F(DispatchTest, VariantReferencesAreReplacedInPlace) {
  Variant variable(u"old");
  const Variant number(2.5), text(u"12");
  rawCall(object_, u"Replace", {referenceTo(variable), number});
  EXPECT_EQ(variable.vt, VT_R8);

  BSTR typedText = newBstr(u"old");
  rawCall(object_, u"Replace", {typedReference(VT_BSTR, &typedText), number});
  EXPECT_EQ(Text::attach(typedText).view(), u"2.5");
  std::int16_t typedNumber = 1;
  rawCall(object_, u"Replace", {typedReference(VT_I2, &typedNumber), text});
  EXPECT_EQ(typedNumber, 12);
  const Outcome refused =
      rawCall(object_, u"Replace", {typedReference(VT_I2, &typedNumber), Variant(u"x")});
  EXPECT_EQ(refused.error, u"13 QUENDAL_REPORTS_ASP: Type mismatch");

  SAFEARRAY* typedArray = SafeArrayCreateVector(VT_VARIANT, 0, 2);
  const Variant three = Variant::array(SafeArrayCreateVector(VT_VARIANT, 0, 3));
  rawCall(object_, u"Replace", {typedReference(kVariantArray, &typedArray), three});
  EXPECT_EQ(typedArray->rgsabound[0].cElements, 3u);
  SafeArrayDestroy(typedArray);
}

TEST_F(DispatchTest, TextsObjectsAndListsArrive) {
  const Variant one(std::int16_t{1}), text(u"b"), null = Variant::null();
  Variant variable(u"a");
  EXPECT_EQ(shown(rawCall(object_, u"Texts", {one, referenceTo(variable)}).value), "1+a");
  EXPECT_EQ(shown(rawCall(object_, u"List", {one}).value), "1");
  EXPECT_EQ(shown(rawCall(object_, u"List", {one, text, referenceTo(variable), null}).value),
            "1,b,a,");
  EXPECT_EQ(rawCall(object_, u"List", {}, {{u"Rest", one}}).code, DISP_E_PARAMNOTFOUND);

  object_.put(u"Property", u"mine");
  IUnknown* unknown = object_.dispatch();
  VARIANT bare;
  VariantInit(&bare);
  bare.vt = VT_UNKNOWN;
  bare.punkVal = unknown;
  Variant holder(object_);
  for (const VARIANT& argument :
       {VARIANT(Variant(object_)), bare, typedReference(VT_UNKNOWN, &unknown), referenceTo(holder)})
    EXPECT_EQ(shown(rawCall(object_, u"NameOf", {argument}).value), "mine");
  EXPECT_EQ(shown(rawCall(object_, u"NameOf", {Variant(Object())}).value), "Nothing");
  EXPECT_EQ(rawCall(object_, u"NameOf", {text}).code, DISP_E_TYPEMISMATCH);
}

TEST_F(DispatchTest, FailuresReachTheCallerWithNumberSourceAndDescription) {
  const struct {
    std::int32_t how;
    const char16_t* error;
  } rows[] = {{1, u"8732 its source: its text"},
              {2, u"7 QUENDAL_REPORTS_ASP: Out of memory"},
              {3, u"51 QUENDAL_REPORTS_ASP: Internal error"},
              {4, u"7 QUENDAL_REPORTS_ASP: Out of memory"}};
  for (const auto& row : rows) {
    Variant changed(std::int16_t{0});
    const Outcome outcome = rawCall(object_, u"Fail", {Variant(row.how), referenceTo(changed)});
    EXPECT_EQ(outcome.code, DISP_E_EXCEPTION);
    EXPECT_EQ(outcome.error, row.error);
    EXPECT_EQ(changed.iVal, 7);  // what it changed before it failed stays changed
  }
  Variant equal(u"7");
  rawCall(object_, u"Fail", {Variant(std::int32_t{0}), referenceTo(equal)});
  EXPECT_EQ(equal.vt, VT_BSTR);  // an equal value leaves the variable its own type
}

TEST_F(DispatchTest, PropertiesAreReadWrittenAndForwardTheirArguments) {
  const Variant text(u"value");
  EXPECT_EQ(rawCall(object_, u"Property", {text}, {}, DISPATCH_PROPERTYPUT).code, S_OK);
  EXPECT_EQ(rawCall(object_, u"Property", {text, text}, {}, DISPATCH_PROPERTYPUT).code,
            DISP_E_BADPARAMCOUNT);  // it has no indexes
  EXPECT_EQ(shown(rawCall(object_, u"Property", {}, {}, DISPATCH_PROPERTYGET).value), "value");
  EXPECT_EQ(rawCall(object_, u"Property", {text}, {}, DISPATCH_PROPERTYGET).code,
            DISP_E_BADPARAMCOUNT);  // text has no members to apply it to

  const Object dictionary = Object::attach(automation::newDictionary());
  dictionary.call(u"Add", u"key", u"item");
  object_.put(u"Property", dictionary);
  EXPECT_EQ(shown(object_.get(u"Property", u"key")), "item");
}

TEST_F(DispatchTest, OneObjectHasOneIdentityAndTellsItsClass) {
  const IID own = describe<Probe>().identity().interfaceId;
  IUnknown* identity = object_.dispatch();
  for (const IID& iid :
       {IID_IUnknown, IID_IDispatch, own, IID(IID_ISupportErrorInfo), IID(IID_IProvideClassInfo)}) {
    void* found = nullptr;
    ASSERT_EQ(identity->QueryInterface(iid, &found), S_OK);
    void* again = nullptr;
    auto* unknown = static_cast<IUnknown*>(found);
    ASSERT_EQ(unknown->QueryInterface(IID_IUnknown, &again), S_OK);
    EXPECT_EQ(again, identity);
    unknown->Release();
    unknown->Release();
  }
  void* other = &other;
  EXPECT_EQ(identity->QueryInterface(IID_IEnumVARIANT, &other), E_NOINTERFACE);
  EXPECT_EQ(other, nullptr);
}

TEST_F(DispatchTest, TheFunctionTableServesEarlyBoundCallers) {
  auto* table = reinterpret_cast<ProbeTable*>(object_.dispatch());
  const auto taken = [](BSTR text) { return toUtf8(Text::attach(text).view()); };
  BSTR result = nullptr;
  std::int16_t small = 2;
  Variant gap = Variant::missing(), other = Variant::missing();
  ASSERT_EQ(table->Defaults(&small, nullptr, &gap, &other, VARIANT_FALSE, 5, &result), S_OK);
  EXPECT_EQ(taken(result), "2||String|Error|0|5");

  std::int32_t number = 5;
  EXPECT_EQ(table->Fail(1, &small, &number), errorCode(8732));
  EXPECT_EQ(small, 7);
  EXPECT_EQ(number, 0);
  IErrorInfo* info = nullptr;
  ASSERT_EQ(GetErrorInfo(0, &info), S_OK);
  BSTR source = nullptr;
  info->GetSource(&source);
  EXPECT_EQ(taken(source), "its source");
  info->Release();
  EXPECT_EQ(table->Fail(0, nullptr, &number), E_POINTER);
}

}  // namespace
}  // namespace quendal::test
