// Values on their way into arrays, the names of their types, their order, and failures that others
// report.
#include "tests/automation/values.h"
#include "core/compare.h"
#include "core/dictionary.h"
#include "tests/support/text_rows.h"

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
  forEachPair(
      u"2=Integer|4=Single|6=Currency|7=Date|10=Error|11=Boolean|13=Nothing|17=Byte|14=Decimal"
      u"|19=Unknown|8204=Variant()",
      [](std::u16string_view type, const std::string& name) {
        VARIANT value{};
        value.vt = static_cast<VARTYPE>(std::stoi(toUtf8(type)));
        EXPECT_EQ(toUtf8(typeNameOf(value)), name);
      });
}

Variant gives(ScriptObject::Call call) {
  return Variant(ScriptObject().defaultMember(std::move(call)).object());
}

TEST(CompareValues, FollowsTheHostsRules) {
  const auto n = [](std::int32_t value) { return Variant(value); };
  const auto t = [](const char16_t* text) { return Variant(text); };
  const Variant empty, null = Variant::null(), yes(Boolean::True);
  const Variant two = gives([](auto) { return Variant(2.0); });
  const Variant unknown = gives([](auto) { return Variant::null(); });
  const Variant nan(std::numeric_limits<double>::quiet_NaN());
  constexpr std::int64_t kBig = 1LL << 53, kMost = INT64_MAX;
  constexpr auto less = std::partial_ordering::less;
  constexpr auto equal = std::partial_ordering::equivalent;
  constexpr auto never = std::partial_ordering::unordered;
  const struct {
    Variant a, b;
    std::partial_ordering order;
  } rows[] = {{yes, Variant(-0.5), less},
              {n(2), Variant::date(2.0), equal},
              {cy(20000), n(2), equal},
              {cy(kBig * 999), cy(kBig * 999 + 1), less},
              {i8(kBig + 1), i8(kBig + 2), less},
              {i8(kMost - 1), ui8(kMost), less},
              {make(VT_I1, &VARIANT::cVal, -1), make(VT_UI4, &VARIANT::ulVal, 0xFFFFFFFF), less},
              {t(u"ABC"), t(u"abc"), less},
              {Variant(1e300), t(u""), less},
              {empty, n(0), equal},
              {empty, t(u""), equal},
              {two, n(2), equal},
              {two, t(u""), less},
              {unknown, n(2), never},
              {null, Variant(Object()), never},
              {nan, n(2), never}};
  int index = 0;
  for (const auto& row : rows) {
    const auto opposite = row.order == less ? std::partial_ordering::greater : row.order;
    PageVariable variable(row.a, false, true);
    EXPECT_EQ(compareValues(variable.argument(), row.b), row.order) << index;
    EXPECT_EQ(compareValues(row.b, row.a), opposite) << index++;
  }
}

TEST(CompareValues, FailsWhereTheHostDoes) {
  const Object self = ScriptObject().object();
  const std::pair<Variant, int> rows[] = {
      {of(u"a"), 13},
      {Variant::missing(), 13},
      {Variant(Object()), 91},
      {gives([&](auto) { return Variant(self); }), 438},
      {gives([](auto) -> Variant { throw AutomationError(1234); }), 1234}};
  for (const auto& [value, number] : rows)
    EXPECT_EQ(raisedBy([&] { static_cast<void>(compareValues(value, Variant(1.0))); }), number);
}

template <class Step>
std::string raised(Step&& step) {
  return textOrFailure([&] { return step(), std::string(); });
}

TEST(Failures, HaveTheNumbersAndTextsThatAScriptKnows) {
  forEachPair(
      u"80020005=13|8002000A=6|80020008=458|8002000B=9|8002000D=10|80020006=438|80020003=438"
      u"|8002000E=450|8002000F=449|80020004=448|80020007=446|8007000E=7|80070057=5|80004002=430"
      u"|80004001=445|80070005=70|80004005=-2147467259|800A0039=57",
      [](std::u16string_view code, const std::string& number) {
        const auto bits = std::stoul(toUtf8(code), nullptr, 16);
        EXPECT_EQ(std::to_string(AutomationError::fromRuntime(static_cast<HRESULT>(bits)).number()),
                  number);
      });
  EXPECT_EQ(raised([] { check(E_NOTIMPL); }),
            "445 QUENDAL_REPORTS_ASP: Object doesn't support this action");
  EXPECT_EQ(raised([] { check(errorCode(457)); }),
            "457 QUENDAL_REPORTS_ASP: Automation error 0x800A01C9");
  EXPECT_EQ(raised([] { checkDictionary(errorCode(457)); }),
            "457 QUENDAL_REPORTS_ASP: This key is already associated with an element of this "
            "collection");
}

/// An object whose members fail, by what they put into the exception or leave to be asked for; a
/// read without arguments gives its value, if it has one.
class Failing final : public IDispatch {
 public:
  HRESULT code = DISP_E_EXCEPTION;
  EXCEPINFO details{};
  Object value;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
  ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID* ids) override {
    *ids = 1;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS* params, VARIANT* result,
                                   EXCEPINFO* exception, UINT*) override {
    if (value && params->cArgs == 0) return *result = Variant(value).release(), S_OK;
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
  // Arguments that a plain property refuses are those of its value's default member.
  Failing property;
  property.value = ScriptObject().defaultMember([](auto key) { return textOf(key[0]); }).object();
  for (const HRESULT code : {DISP_E_BADPARAMCOUNT, DISP_E_MEMBERNOTFOUND, errorCode(450)}) {
    property.code = code;
    EXPECT_EQ(textOf(Object(&property).get(u"Plain", u"key")), u"key");
  }
}

}  // namespace
}  // namespace quendal::test
