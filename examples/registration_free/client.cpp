// A Windows program that uses the component without any registration: its manifest names the
// component's assembly, and the DLL with the assembly's manifest lies beside the program. Build it
// as client.exe, link with ole32, oleaut32 and uuid, and put it into the package's x64 or x86
// folder, where client.exe.manifest is.
#include <windows.h>

#include <cstdio>
#include <exception>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

void require(HRESULT code, const char* what) {
  if (FAILED(code)) {
    char text[100];
    std::snprintf(text, sizeof text, "%s: 0x%08lX", what, static_cast<unsigned long>(code));
    throw std::runtime_error(text);
  }
}

/// A VARIANT that owns what it holds.
struct Value : VARIANT {
  Value() { VariantInit(this); }
  explicit Value(const wchar_t* text) {
    vt = VT_BSTR;
    bstrVal = SysAllocString(text);
  }
  Value(Value&& other) noexcept : VARIANT(other) { VariantInit(&other); }
  Value& operator=(Value&&) = delete;
  ~Value() { VariantClear(this); }
};

/// An object of a class, called by name.
class Client {
 public:
  explicit Client(const wchar_t* programId) {
    CLSID classId;
    require(CLSIDFromProgID(programId, &classId), "CLSIDFromProgID");
    require(CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                             reinterpret_cast<void**>(&object_)),
            "CoCreateInstance");
  }
  explicit Client(const Value& value) : object_(value.pdispVal) { object_->AddRef(); }
  Client(const Client&) = delete;
  Client& operator=(const Client&) = delete;
  ~Client() { object_->Release(); }

  /// Calls a method or reads a property; an argument is consumed.
  Value call(const wchar_t* name, std::vector<Value> arguments = {}) const {
    auto* plainName = const_cast<wchar_t*>(name);
    DISPID id = DISPID_UNKNOWN;
    require(object_->GetIDsOfNames(IID_NULL, &plainName, 1, LOCALE_USER_DEFAULT, &id), "name");
    DISPPARAMS parameters{arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
    Value result;
    require(
        object_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD | DISPATCH_PROPERTYGET,
                        &parameters, &result, nullptr, nullptr),
        "Invoke");
    return result;
  }

 private:
  IDispatch* object_ = nullptr;
};

std::vector<Value> argument(Value value) {
  std::vector<Value> list;
  list.push_back(std::move(value));
  return list;
}

void useComponent() {
  const Client functions(L"QUENDAL_REPORTS_ASP.FUNCTIONS");
  const Client json(functions.call(L"JSON"));
  Value decoded = json.call(L"Decode", argument(Value(L"{\"report\": 7, \"open\": [true, null]}")));
  const Value text = json.call(L"Encode", argument(std::move(decoded)));
  std::printf("FUNCTIONS: %ls\n", text.bstrVal);

  const Client logger(L"QUENDAL_REPORTS_ASP.LOGGING");
  logger.call(L"SetLogFile", argument(Value(L"CLIENT.TXT")));
  std::printf("LOGGING: %ls\n", logger.call(L"FileName").bstrVal);

  // The type library is found in the same way, for tools and for early-bound clients.
  const GUID libraryId = {
      0xDC707A50, 0x8E70, 0x479C, {0x94, 0xD7, 0xBD, 0x63, 0x08, 0x8D, 0xE0, 0x0B}};
  ITypeLib* library = nullptr;
  require(LoadRegTypeLib(libraryId, 1, 0, LOCALE_NEUTRAL, &library), "LoadRegTypeLib");
  std::printf("Type library: %u types\n", library->GetTypeInfoCount());
  library->Release();
}

}  // namespace

int main() {
  int status = 0;
  try {
    require(CoInitialize(nullptr), "CoInitialize");
    useComponent();
  } catch (const std::exception& error) {
    std::printf("failed: %s\n", error.what());
    status = 1;
  }
  CoUninitialize();
  return status;
}
