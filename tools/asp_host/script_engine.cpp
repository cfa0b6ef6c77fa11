#include "script_engine.h"

#include <servprov.h>

#include <algorithm>
#include <map>
#include <optional>

#include "automation/counted.h"
#include "base/text.h"
#include "page_object.h"

namespace quendal::host {

/// What the engine asks its host, and where it reports errors.
class ScriptSite final : public automation::Counted<IActiveScriptSite, IServiceProvider> {
 public:
  std::map<std::u16string, Object> globals;
  std::optional<PageError> failure;
  const PageScript* script = nullptr;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    return answer(iid,
                  {{__uuidof(IActiveScriptSite), static_cast<IActiveScriptSite*>(this)},
                   {__uuidof(IServiceProvider), static_cast<IServiceProvider*>(this)}},
                  object);
  }
  HRESULT STDMETHODCALLTYPE GetLCID(LCID* locale) override {
    *locale = GetUserDefaultLCID();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetItemInfo(LPCOLESTR name, DWORD wanted, IUnknown** item,
                                        ITypeInfo** info) override {
    if (info != nullptr) *info = nullptr;
    if (item == nullptr || (wanted & SCRIPTINFO_IUNKNOWN) == 0) return S_OK;
    *item = nullptr;
    const auto found = globals.find(plainText(name));
    if (found == globals.end()) return TYPE_E_ELEMENTNOTFOUND;
    *item = Object(found->second).release();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetDocVersionString(BSTR*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE OnScriptTerminate(const VARIANT*, const EXCEPINFO*) override {
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE OnStateChange(SCRIPTSTATE) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE OnEnterScript() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE OnLeaveScript() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE OnScriptError(IActiveScriptError* error) override;

  /// No service is offered; components only need somebody to ask.
  HRESULT STDMETHODCALLTYPE QueryService(REFGUID, REFIID, void** object) override {
    *object = nullptr;
    return E_NOINTERFACE;
  }
};

namespace {

const wchar_t* programIdOf(Language language) {
  return language == Language::VBScript ? L"VBScript" : L"JScript";
}

std::u16string hexadecimal(HRESULT code) { return hexText(static_cast<unsigned>(code), 8); }

/// "Microsoft VBScript runtime error 800A000D: Type mismatch"
std::u16string describe(const EXCEPINFO& exception) {
  const Text source = Text::attach(exception.bstrSource);
  const Text description = Text::attach(exception.bstrDescription);
  const Text help = Text::attach(exception.bstrHelpFile);
  std::u16string text(source.view().empty() ? u"error" : source.view());
  text.append(u" ").append(hexadecimal(exception.scode));
  return description.view().empty() ? text : text.append(u": ").append(description.view());
}

}  // namespace

HRESULT ScriptSite::OnScriptError(IActiveScriptError* error) {
  EXCEPINFO exception{};
  DWORD context = 0;
  ULONG line = 0;
  LONG column = 0;
  error->GetExceptionInfo(&exception);
  if (exception.pfnDeferredFillIn != nullptr) exception.pfnDeferredFillIn(&exception);
  error->GetSourcePosition(&context, &line, &column);
  const std::u16string message = describe(exception);
  if (failure || script == nullptr || script->lines.empty()) return S_OK;
  // An error at the very end is one line behind the last.
  failure.emplace(script->lines[std::min<std::size_t>(line, script->lines.size() - 1)], message);
  return S_OK;
}

ScriptEngine::ScriptEngine(Language language, const Object& page)
    : site_(automation::makeCounted<ScriptSite>()) {
  CLSID classId{};
  void* created = nullptr;
  if (FAILED(CLSIDFromProgID(programIdOf(language), &classId)) ||
      FAILED(CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, __uuidof(IActiveScript),
                              &created)))
    raise(error_number::kCannotCreate, u"The script engine cannot be created");
  engine_.reset(static_cast<IActiveScript*>(created));
  void* parser = nullptr;
  check(engine_->QueryInterface(__uuidof(IActiveScriptParse), &parser));
  parser_.reset(static_cast<IActiveScriptParse*>(parser));
  check(engine_->SetScriptSite(site_.get()));
  check(parser_->InitNew());
  addGlobals(L"PageContext", page);
}

ScriptEngine::~ScriptEngine() {
  engine_->Close();
  site_->globals.clear();
}

void ScriptEngine::addGlobals(const wchar_t* name, const Object& object) {
  site_->globals.emplace(plainText(name), object);
  check(engine_->AddNamedItem(name, SCRIPTITEM_ISVISIBLE | SCRIPTITEM_GLOBALMEMBERS));
}

void ScriptEngine::addFunctionsOf(ScriptEngine& other) {
  IDispatch* functions = nullptr;
  check(other.engine_->GetScriptDispatch(nullptr, &functions));
  addGlobals(L"PageFunctions", Object::attach(functions));
}

void ScriptEngine::run(const PageScript& script) {
  site_->script = &script;
  check(engine_->SetScriptState(SCRIPTSTATE_STARTED));
  Variant result;
  EXCEPINFO exception{};
  const Text text(script.text);
  const HRESULT code = parser_->ParseScriptText(text.get(), nullptr, nullptr, nullptr, 0, 0,
                                                SCRIPTTEXT_ISVISIBLE, &result, &exception);
  site_->script = nullptr;
  if (site_->failure) throw PageError(*site_->failure);
  if (FAILED(code))
    throw PageError(script.lines.front(), u"the script engine gave up: " + hexadecimal(code));
}

void ScriptEngine::interrupt() noexcept {
  EXCEPINFO exception{};
  exception.scode = E_ABORT;
  engine_->InterruptScriptThread(SCRIPTTHREADID_ALL, &exception, 0);
}

IUnknown* ScriptEngine::site() const noexcept {
  return static_cast<IActiveScriptSite*>(site_.get());
}

}  // namespace quendal::host
