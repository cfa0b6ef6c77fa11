// A C++ host that runs the page of page.vbs: it makes the page context a web server would hand
// over, creates the logger by its identifier and calls it by name. The folder of the page is the
// argument.
#include <quendal/classic_asp.h>

#include <cstdio>
#include <functional>
#include <string>
#include <vector>

namespace {

using quendal::Object;
using quendal::textOf;
using quendal::Variant;

/// An object whose members are the entries of a list: each is called with the first argument of
/// the call, or nothing, and gives its result.
class HostObject final : public IDispatch {
 public:
  using Member = std::function<Variant(const Variant& argument)>;
  struct Entry {
    std::u16string name;
    Member member;
  };

  static Object make(std::vector<Entry> entries) {
    return Object::attach(new HostObject(std::move(entries)));
  }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    const bool known = iid == IID_IUnknown || iid == IID_IDispatch;
    *object = known ? this : nullptr;
    if (known) AddRef();
    return known ? S_OK : E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    *count = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID,
                                          DISPID* ids) override {
    for (std::size_t i = 0; i < entries_.size(); ++i) {
      if (entries_[i].name != names[0]) continue;
      ids[0] = static_cast<DISPID>(i + 1);
      return S_OK;
    }
    return DISP_E_UNKNOWNNAME;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* params,
                                   VARIANT* result, EXCEPINFO*, UINT*) override {
    if (id < 1 || static_cast<std::size_t>(id) > entries_.size()) return DISP_E_MEMBERNOTFOUND;
    const Variant argument =
        params->cArgs == 0 ? Variant() : Variant::copyOf(params->rgvarg[params->cArgs - 1]);
    Variant value = entries_[static_cast<std::size_t>(id - 1)].member(argument);
    if (result != nullptr) *result = value.release();
    return S_OK;
  }

 private:
  explicit HostObject(std::vector<Entry> entries) : entries_(std::move(entries)) {}

  std::vector<Entry> entries_;
  ULONG references_ = 1;
};

Variant serverVariable(const std::u16string& folder, const Variant& name) {
  const struct {
    const char16_t* name;
    std::u16string value;
  } variables[] = {{u"REMOTE_ADDR", u"10.1.2.3"},
                   {u"PATH_TRANSLATED", folder + u"\\default.asp"},  // in the log, when it exists
                   {u"REQUEST_METHOD", u"GET"},
                   {u"HTTP_USER_AGENT", u"Mozilla/5.0 (demo)"},
                   {u"URL", u"/reports/default.asp"},
                   {u"QUERY_STRING", u"report=7&lang=en"}};
  for (const auto& variable : variables)
    if (textOf(name) == variable.name) return variable.value;
  return u"";
}

Object pageContext(const std::u16string& folder) {
  const auto constant = [](const Object& object) {
    return [object](const Variant&) { return Variant(object); };
  };
  const Object plain = HostObject::make({});
  const Object request = HostObject::make({{u"ServerVariables", [folder](const Variant& name) {
                                              return serverVariable(folder, name);
                                            }}});
  const Object server =
      HostObject::make({{u"MapPath", [folder](const Variant&) { return Variant(folder); }}});
  return HostObject::make({{u"Session", constant(plain)},
                           {u"Application", constant(plain)},
                           {u"Request", constant(request)},
                           {u"Response", constant(plain)},
                           {u"Server", constant(server)}});
}

void print(const std::u16string& text) {
  for (const char16_t c : text) std::putchar(c < 0x80 ? static_cast<char>(c) : '?');
  std::putchar('\n');
}

void runPage(const std::u16string& folder) {
  constexpr std::int16_t kLow = 2;
  const Object logger = quendal::createObject(u"QUENDAL_REPORTS_ASP.LOGGING");
  logger.call(u"OnStartPage", pageContext(folder));
  print(quendal::typeNameOf(Variant(logger)) + u" writes " + textOf(logger.get(u"FileName")) +
        u" for " + textOf(logger.get(u"RemoteIP")));
  logger.call(u"WriteASPStart");
  print(u"returned: " + textOf(logger.call(u"WriteLog", kLow, u"Loading the report")));
  logger.call(u"StartGroup", kLow);
  logger.call(u"WriteParam", kLow, u"Report", std::int16_t{7});
  logger.call(u"WriteParam", kLow, u"Title", u"Turnover, \u20AC");
  logger.call(u"WriteLog", std::int16_t{3}, u"too fine for the level: not written");
  logger.call(u"WriteLog", std::int16_t{1}, u"Two lines:\r\nthe second has the prefix too");
  const Object error = HostObject::make(
      {{u"Number", [](const Variant&) { return Variant(std::int32_t{11}); }},
       {u"source", [](const Variant&) { return Variant(u"default.asp"); }},
       {u"Description", [](const Variant&) { return Variant(u"Division by zero"); }}});
  logger.call(u"LogMSError", kLow, error, u"The total could not be computed");
  logger.call(u"EndGroup", kLow);
  logger.call(u"LogConfiguration");
  logger.call(u"WriteASPEnd");
  logger.call(u"OnEndPage");
  print(u"end of page");
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: native_host FOLDER\n");
    return 2;
  }
  try {
    const std::string folder = argv[1];
    runPage(std::u16string(folder.begin(), folder.end()));
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "the page failed: %s\n", error.what());
    return 1;
  }
}
