// The cost of a call: by name against the same through the function table.
#include <quendal/object.h>

#include <cstdint>
#include <cstdlib>

#include "bench/row.h"
#include "core/dispatch.h"
#include "logging/logging.h"

/// `LogLevel`'s place in the function table of `_LOGGING`. Not in an unnamed namespace, where the
/// compiler would take it for a class without implementations.
struct LoggingTable : IDispatch {
  virtual HRESULT STDMETHODCALLTYPE OnStartPage(IDispatch**) = 0;
  virtual HRESULT STDMETHODCALLTYPE OnEndPage() = 0;
  virtual HRESULT STDMETHODCALLTYPE Class_Initialize() = 0;
  virtual HRESULT STDMETHODCALLTYPE Class_Terminate() = 0;
  virtual HRESULT STDMETHODCALLTYPE get_IsASP(VARIANT_BOOL*) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_Unicode(VARIANT_BOOL*) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_Unicode(VARIANT_BOOL*) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_LogLevel(std::int16_t*) = 0;
};

namespace quendal::bench {

void run() {
  const Object logger = Owned<Logging>::make().object();
  auto* table = reinterpret_cast<LoggingTable*>(logger.dispatch());
  constexpr int kCalls = 200'000;
  std::int64_t sum = 0;
  const auto early = [&] {
    std::int16_t level = 0;
    table->get_LogLevel(&level);
    sum += level;
  };
  std::u16string name = u"LogLevel";
  auto* raw = const_cast<LPOLESTR>(oleText(name.c_str()));
  DISPID id = DISPID_UNKNOWN;
  const auto lookUp = [&] { logger.dispatch()->GetIDsOfNames(IID_NULL, &raw, 1, 0, &id); };
  const auto byId = [&] {
    DISPPARAMS none{};
    VARIANT result;
    VariantInit(&result);
    logger.dispatch()->Invoke(id, IID_NULL, 0, DISPATCH_PROPERTYGET, &none, &result, nullptr,
                              nullptr);
    sum += result.iVal;
  };
  const auto byName = [&] {
    lookUp();
    byId();
  };
  compare("call by name (function table)", kCalls, byName, early);
  // As script engines do it: the name is looked up once, then called by its identifier.
  compare("call by identifier (function table)", kCalls, byId, early);
  // As the library itself calls the objects of a page.
  compare(
      "call by name from C++ (function table)", kCalls,
      [&] { sum += logger.get(u"LogLevel").iVal; }, early);
  if (sum == 0) std::abort();
}

}  // namespace quendal::bench
