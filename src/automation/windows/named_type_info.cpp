#include "automation/windows/named_type_info.h"

#include <atomic>
#include <string>

namespace quendal::automation {
namespace {

class NamedTypeInfo final : public ITypeInfo {
 public:
  NamedTypeInfo(Reference<ITypeInfo> info, std::u16string_view name)
      : info_(std::move(info)), name_(name) {}
  virtual ~NamedTypeInfo() = default;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    if (object == nullptr) return E_POINTER;
    const bool known = IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_ITypeInfo);
    *object = known ? static_cast<ITypeInfo*>(this) : nullptr;
    if (!known) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) std::default_delete<NamedTypeInfo>()(this);
    return left;
  }

  HRESULT STDMETHODCALLTYPE GetDocumentation(MEMBERID id, BSTR* name, BSTR* help, DWORD* context,
                                             BSTR* helpFile) override {
    const HRESULT result = info_->GetDocumentation(id, name, help, context, helpFile);
    if (FAILED(result) || id != MEMBERID_NIL || name == nullptr) return result;
    const BSTR own = SysAllocStringLen(oleText(name_.data()), static_cast<UINT>(name_.size()));
    if (own == nullptr) return result;  // the name of the type library will do
    SysFreeString(*name);
    *name = own;
    return result;
  }

  HRESULT STDMETHODCALLTYPE GetTypeAttr(TYPEATTR** attributes) override {
    return info_->GetTypeAttr(attributes);
  }
  HRESULT STDMETHODCALLTYPE GetTypeComp(ITypeComp** comp) override {
    return info_->GetTypeComp(comp);
  }
  HRESULT STDMETHODCALLTYPE GetFuncDesc(UINT index, FUNCDESC** description) override {
    return info_->GetFuncDesc(index, description);
  }
  HRESULT STDMETHODCALLTYPE GetVarDesc(UINT index, VARDESC** description) override {
    return info_->GetVarDesc(index, description);
  }
  HRESULT STDMETHODCALLTYPE GetNames(MEMBERID id, BSTR* names, UINT max, UINT* count) override {
    return info_->GetNames(id, names, max, count);
  }
  HRESULT STDMETHODCALLTYPE GetRefTypeOfImplType(UINT index, HREFTYPE* type) override {
    return info_->GetRefTypeOfImplType(index, type);
  }
  HRESULT STDMETHODCALLTYPE GetImplTypeFlags(UINT index, INT* flags) override {
    return info_->GetImplTypeFlags(index, flags);
  }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(LPOLESTR* names, UINT count, MEMBERID* ids) override {
    return info_->GetIDsOfNames(names, count, ids);
  }
  HRESULT STDMETHODCALLTYPE Invoke(void* object, MEMBERID id, WORD flags, DISPPARAMS* params,
                                   VARIANT* result, EXCEPINFO* exception,
                                   UINT* argumentError) override {
    return info_->Invoke(object, id, flags, params, result, exception, argumentError);
  }
  HRESULT STDMETHODCALLTYPE GetDllEntry(MEMBERID id, INVOKEKIND kind, BSTR* library, BSTR* name,
                                        WORD* ordinal) override {
    return info_->GetDllEntry(id, kind, library, name, ordinal);
  }
  HRESULT STDMETHODCALLTYPE GetRefTypeInfo(HREFTYPE type, ITypeInfo** info) override {
    return info_->GetRefTypeInfo(type, info);
  }
  HRESULT STDMETHODCALLTYPE AddressOfMember(MEMBERID id, INVOKEKIND kind, void** address) override {
    return info_->AddressOfMember(id, kind, address);
  }
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** object) override {
    return info_->CreateInstance(outer, iid, object);
  }
  HRESULT STDMETHODCALLTYPE GetMops(MEMBERID id, BSTR* mops) override {
    return info_->GetMops(id, mops);
  }
  HRESULT STDMETHODCALLTYPE GetContainingTypeLib(ITypeLib** library, UINT* index) override {
    return info_->GetContainingTypeLib(library, index);
  }
  void STDMETHODCALLTYPE ReleaseTypeAttr(TYPEATTR* attributes) override {
    info_->ReleaseTypeAttr(attributes);
  }
  void STDMETHODCALLTYPE ReleaseFuncDesc(FUNCDESC* description) override {
    info_->ReleaseFuncDesc(description);
  }
  void STDMETHODCALLTYPE ReleaseVarDesc(VARDESC* description) override {
    info_->ReleaseVarDesc(description);
  }

 private:
  std::atomic<ULONG> references_{1};
  Reference<ITypeInfo> info_;
  std::u16string name_;
};

}  // namespace

ITypeInfo* nameTypeInfo(Reference<ITypeInfo> info, std::u16string_view name) {
  return std::make_unique<NamedTypeInfo>(std::move(info), name).release();
}

}  // namespace quendal::automation
