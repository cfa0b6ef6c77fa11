// Calls by name and through the function table, as hosts make them.
#include <new>
#include <stdexcept>

#include "base/utf8.h"
#include "functions/functions.h"
#include "tests/core/raw_call.h"
#include "tests/logging/logger_fixture.h"

namespace quendal::test {

/// The first member's place in the function table after IDispatch, by a C++ client's declaration.
/// Not in the unnamed namespace: there the compiler would take it for a class without
/// implementations.
struct LoggingTable : IDispatch {
  virtual HRESULT STDMETHODCALLTYPE OnStartPage(IDispatch**) = 0;
};

namespace {

using Named = std::vector<std::pair<std::u16string, VARIANT>>;

class DispatchTest : public LoggerTest {
 protected:
  static std::string failed(HRESULT code) { return "failed " + std::to_string(code); }
  /// What a call gives, as masked text, or its code.
  std::string given(std::u16string_view member, std::vector<VARIANT> arguments, Named named = {},
                    WORD flags = DISPATCH_METHOD) {
    const Outcome outcome = rawCall(log, member, std::move(arguments), std::move(named), flags);
    return outcome.code == S_OK ? masked(outcome.value) : failed(outcome.code);
  }

  const Variant low_{kLow}, one_{std::int16_t{1}}, text_{u"b"}, gap_ = Variant::missing();
};

TEST_F(DispatchTest, NamesAreFoundInAnyCaseAndParametersByTheirOwn) {
  HRESULT code = S_OK;
  const auto ids =
      idsOf(log.dispatch(), {u"wRITElOG", u"in_irepeat", u"x", u"IN_ILOGLEVEL"}, &code);
  EXPECT_GT(ids[0], 0);
  EXPECT_EQ(std::vector(ids.begin() + 1, ids.end()), (std::vector<DISPID>{2, DISPID_UNKNOWN, 0}));
  EXPECT_EQ(code, DISP_E_UNKNOWNNAME);  // wherever that name stands
  EXPECT_EQ(idsOf(log.dispatch(), {u"WriteLogs"})[0], DISPID_UNKNOWN);
}

TEST_F(DispatchTest, ArgumentsConvertOrTakeTheirDefaults) {
  const std::string usual = "@     b " + std::string(33, '.') + " 1";
  const struct {
    std::vector<Variant> further;
    Named named;
    std::string text;
  } rows[] = {{{Variant(u"7"), Variant(2.5)}, {}, "@   b ..... 1"},  // halves to even
              {{}, {}, usual},
              {{gap_, gap_}, {}, usual},
              {{one_}, {{u"in_LINDENT", one_}}, "@  b . 1"},
              {{Variant::null()}, {}, failed(DISP_E_TYPEMISMATCH)},
              {{Variant(std::int32_t{40000})}, {}, failed(DISP_E_OVERFLOW)}};
  for (const auto& row : rows) {
    std::vector<VARIANT> arguments = {low_, text_, one_};
    arguments.insert(arguments.end(), row.further.begin(), row.further.end());
    EXPECT_EQ(given(u"WriteParam", arguments, row.named), row.text);
  }
  EXPECT_EQ(rawCall(log, u"WriteBox", {text_, one_}).argumentError, 1u);  // the last one is first
  for (const auto& [value, bits] : {std::pair(Variant(2.5), -1), {Variant(Boolean{1}), 0}}) {
    given(u"Unicode", {value}, {}, DISPATCH_PROPERTYPUT);
    EXPECT_EQ(log.get(u"Unicode").boolVal, bits);  // a Boolean keeps its bits
  }
}

TEST_F(DispatchTest, WrongArgumentListsAreRefused) {
  const struct {
    std::u16string_view member;
    std::vector<VARIANT> arguments;
    Named named;
    WORD flags;
    HRESULT code;
  } rows[] = {
      {u"WriteParam", {low_}, {}, DISPATCH_METHOD, DISP_E_BADPARAMCOUNT},
      {u"WriteBox", {gap_}, {}, DISPATCH_METHOD, DISP_E_PARAMNOTOPTIONAL},
      {u"WriteBox", {low_, text_, one_}, {}, DISPATCH_METHOD, DISP_E_BADPARAMCOUNT},
      // Given twice, or to no parameter.
      {u"WriteBox", {low_}, {{u"IN_iLogLevel", one_}}, DISPATCH_METHOD, DISP_E_PARAMNOTFOUND},
      {u"WriteBox", {low_}, {{u"Unknown", one_}}, DISPATCH_METHOD, DISP_E_PARAMNOTFOUND},
      {u"Unknown", {}, {}, DISPATCH_METHOD, DISP_E_MEMBERNOTFOUND},
      // A read does not run a method.
      {u"WriteBox", {low_, text_}, {}, DISPATCH_PROPERTYGET, DISP_E_MEMBERNOTFOUND},
      // A property has no indexes, and a Boolean no members to apply them to.
      {u"Unicode", {one_, one_}, {}, DISPATCH_PROPERTYPUT, DISP_E_BADPARAMCOUNT},
      {u"IsASP", {one_}, {}, DISPATCH_PROPERTYGET, DISP_E_BADPARAMCOUNT},
      {u"OnStartPage", {text_}, {}, DISPATCH_METHOD, DISP_E_TYPEMISMATCH},
  };
  int index = 0;
  for (const auto& [member, arguments, named, flags, code] : rows)
    EXPECT_EQ(given(member, arguments, named, flags), failed(code)) << index++;
}

TEST_F(DispatchTest, NumbersAreWrittenBackOnlyWhenTheMemberChangedThem) {
  Variant repeat(u"2");
  given(u"WriteLog", {low_, text_, referenceTo(repeat)});
  EXPECT_EQ(repeat.vt, VT_BSTR);
  repeat = u"-2";
  EXPECT_EQ(given(u"WriteLog", {low_, arrayOf({}), referenceTo(repeat)}), failed(DISP_E_EXCEPTION));
  EXPECT_EQ(repeat.vt, VT_I2);  // what was changed before the failure stays changed
  EXPECT_EQ(repeat.iVal, 1);
  Variant nested(std::int16_t{-9});
  VARIANT middle = referenceTo(nested);
  given(u"WriteLog", {low_, text_, referenceTo(middle)});
  EXPECT_EQ(nested.iVal, 1);
  double real = -4.0;
  given(u"WriteLog", {low_, text_, typedReference(VT_R8, &real)});
  EXPECT_EQ(real, 1.0);
}

TEST_F(DispatchTest, VariantsAreReplacedInPlace) {
  BSTR stamp = newBstr(u"old");
  EXPECT_EQ(given(u"WriteLog", {low_, text_, one_, typedReference(VT_BSTR, &stamp)}), "@ b");
  EXPECT_EQ(masked(Variant(Text::attach(stamp))), "@ ");
  std::int16_t number = 1;
  EXPECT_EQ(rawCall(log, u"WriteLog", {low_, text_, one_, typedReference(VT_I2, &number)}).error,
            u"13 QUENDAL_REPORTS_ASP: Type mismatch");
}

TEST_F(DispatchTest, ListsAndObjectsArrive) {
  Variant variable(u"a");
  const Object functions = Owned<Functions>::make().object();
  const Object builder = Object::from(functions.get(u"Concat"));
  rawCall(builder, u"Append", {one_, text_, referenceTo(variable), Variant::null()});
  EXPECT_EQ(textOf(builder.get(u"Value")), u"1ba");
  EXPECT_EQ(rawCall(builder, u"Append", {}, {{u"IN_szString", one_}}).code, DISP_E_PARAMNOTFOUND);

  const Object dictionary = Object::attach(automation::newDictionary());
  dictionary.call(u"Add", u"key", u"item");
  IUnknown* unknown = dictionary.dispatch();
  Variant holder(dictionary);
  for (const VARIANT& argument :
       {typedReference(VT_UNKNOWN, &unknown), typedReference(VT_VARIANT, &holder)})
    EXPECT_EQ(given(u"LogDictionary", {argument}), "0");
  // Arguments to a property are its value's.
  EXPECT_EQ(given(u"ODBCDrivers", {text_}, {}, DISPATCH_PROPERTYGET), "");
}

TEST_F(DispatchTest, FailuresReachTheCallerWithNumberSourceAndDescription) {
  const Variant failing(ScriptObject()
                            .defaultMember([](auto) -> Variant {
                              throw AutomationError(8732, u"its text", u"its source");
                            })
                            .object());
  EXPECT_EQ(rawCall(log, u"SetLogFile", {failing}).error, u"8732 its source: its text");
  const std::pair<std::exception_ptr, std::u16string_view> rows[] = {
      {std::make_exception_ptr(std::bad_alloc()), u"Out of memory"},
      {std::make_exception_ptr(std::length_error("a text longer than any")), u"Out of memory"},
      {std::make_exception_ptr(std::runtime_error("unforeseen")), u"Internal error"}};
  for (const auto& [thrown, description] : rows) {
    EXCEPINFO told{};
    try {
      std::rethrow_exception(thrown);
    } catch (...) {
      EXPECT_EQ(publishCurrentException(&told), DISP_E_EXCEPTION);
    }
    EXPECT_EQ(told.scode, errorCode(description == u"Out of memory" ? 7 : 51));
    EXPECT_EQ(Text::attach(told.bstrSource).view(), u"QUENDAL_REPORTS_ASP");
    EXPECT_EQ(Text::attach(told.bstrDescription).view(), description);
  }
}

TEST_F(DispatchTest, OneObjectHasOneIdentity) {
  IUnknown* const identity = log.dispatch();
  for (const IID& iid : {IID_IDispatch, describe<Logging>().identity().interfaceId,
                         IID(IID_ISupportErrorInfo), IID(IID_IProvideClassInfo)}) {
    void *found = nullptr, *again = nullptr;
    ASSERT_EQ(identity->QueryInterface(iid, &found), S_OK);
    auto* const unknown = static_cast<IUnknown*>(found);
    EXPECT_EQ(unknown->QueryInterface(IID_IUnknown, &again), S_OK);
    EXPECT_EQ(again, identity);
    unknown->Release();
    unknown->Release();
  }
  void* other = &other;
  EXPECT_EQ(identity->QueryInterface(IID_IEnumVARIANT, &other), E_NOINTERFACE);
  EXPECT_EQ(other, nullptr);
}

TEST_F(DispatchTest, TheFunctionTableServesEarlyBoundCallers) {
  auto* const table = reinterpret_cast<LoggingTable*>(log.dispatch());
  IDispatch* nothing = nullptr;
  EXPECT_EQ(table->OnStartPage(&nothing), errorCode(error_number::kObjectNotSet));
  IErrorInfo* info = nullptr;
  ASSERT_EQ(GetErrorInfo(0, &info), S_OK);
  BSTR source = nullptr;
  info->GetSource(&source);
  EXPECT_EQ(Text::attach(source).view(), u"QUENDAL_REPORTS_ASP");
  info->Release();

  using WriteLog = HRESULT STDMETHODCALLTYPE(IDispatch*, std::int16_t*, VARIANT*, std::int16_t*,
                                             VARIANT*, BSTR*);
  auto* const writeLog = slotOf<Logging, WriteLog>(u"WriteLog");
  std::int16_t level = kLow, repeat = 0;
  Variant text(u"t"), stamp;
  BSTR entry = nullptr;
  EXPECT_EQ(writeLog(table, &level, &text, &repeat, &stamp, &entry), S_OK);
  EXPECT_EQ(masked(Variant(Text::attach(entry))), "@ t");
  EXPECT_EQ(masked(stamp), "@ ");
  EXPECT_EQ(repeat, 1);
  // A null title is the default, as the interface definition cannot tell one for it.
  using Dump = HRESULT STDMETHODCALLTYPE(IDispatch*, std::int16_t*, VARIANT*, BSTR*, BSTR*);
  EXPECT_EQ((slotOf<Logging, Dump>(u"Dump")(table, &level, &text, nullptr, &entry)), S_OK);
  EXPECT_TRUE(masked(Variant(Text::attach(entry))).starts_with("@ TEXT DUMP BELOW"));
  EXPECT_EQ(writeLog(table, &level, &text, &repeat, &stamp, nullptr), E_POINTER);
  EXPECT_EQ(writeLog(table, nullptr, &text, &repeat, &stamp, &entry), E_POINTER);
}

}  // namespace
}  // namespace quendal::test
