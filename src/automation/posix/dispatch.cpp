#include "automation/dispatch.h"

#include <algorithm>
#include <array>

#include "automation/counted.h"
#include "automation/posix/dictionary.h"
#include "automation/posix/strings.h"
#include "automation/posix/variants.h"

namespace quendal::automation {
namespace {

// Type information that knows a class's name and nothing else.
class ClassName final : public Counted<ITypeInfo> {
 public:
  explicit ClassName(std::u16string_view name) : name_(name) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    return answer(iid, {{IID_ITypeInfo, this}}, object);
  }

  HRESULT STDMETHODCALLTYPE GetDocumentation(MEMBERID id, BSTR* name, BSTR* help, DWORD* context,
                                             BSTR* helpFile) override {
    if (name != nullptr) *name = nullptr;
    if (help != nullptr) *help = nullptr;
    if (context != nullptr) *context = 0;
    if (helpFile != nullptr) *helpFile = nullptr;
    if (id != MEMBERID_NIL) return TYPE_E_ELEMENTNOTFOUND;
    if (name == nullptr) return S_OK;
    *name = newText(name_);
    return *name == nullptr ? E_OUTOFMEMORY : S_OK;
  }

  HRESULT STDMETHODCALLTYPE GetTypeAttr(void**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetTypeComp(void**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetFuncDesc(UINT, void**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetVarDesc(UINT, void**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetNames(MEMBERID, BSTR*, UINT, UINT*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetRefTypeOfImplType(UINT, DWORD*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetImplTypeFlags(UINT, INT*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(LPOLESTR*, UINT, MEMBERID*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Invoke(void*, MEMBERID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                                   UINT*) override {
    return E_NOTIMPL;
  }

 private:
  std::u16string name_;
};

}  // namespace

HRESULT memberId(IDispatch* object, std::u16string_view name, DISPID* id) noexcept {
  if (object == nullptr || id == nullptr) return E_POINTER;
  *id = DISPID_UNKNOWN;
  constexpr std::size_t kLongestName = 255;
  if (name.size() > kLongestName) return DISP_E_UNKNOWNNAME;
  std::array<char16_t, kLongestName + 1> text;
  char16_t* const end = std::remove_copy(name.begin(), name.end(), text.data(), u'\0');
  if (end != text.data() + name.size()) return DISP_E_UNKNOWNNAME;  // a NUL ends a name
  *end = u'\0';
  LPOLESTR names = text.data();
  return object->GetIDsOfNames(IID_NULL, &names, 1, 0, id);
}

IDispatch* newDictionary() noexcept { return Dictionary::make(); }

HRESULT typeInformation(REFIID, REFCLSID, std::u16string_view className,
                        ITypeInfo** info) noexcept {
  if (info == nullptr) return E_POINTER;
  *info = nullptr;
  return guarded([&] {
    *info = makeCounted<ClassName>(className).release();
    return S_OK;
  });
}

}  // namespace quendal::automation
