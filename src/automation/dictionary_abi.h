// The function table of the platform's keyed container, `Scripting.Dictionary`.
#pragma once

#include <quendal/automation.h>

namespace quendal::automation {

inline constexpr GUID kIidDictionary{
    0x42C642C1, 0x97E1, 0x11CF, {0x97, 0x8F, 0x00, 0xA0, 0x24, 0x63, 0xE0, 0x6F}};

inline constexpr CLSID kClsidDictionary{
    0xEE09B103, 0x97E0, 0x11CF, {0x97, 0x8F, 0x00, 0xA0, 0x24, 0x63, 0xE0, 0x6F}};

constexpr DISPID kDictionaryAdd = 1;

/// Keys are compared by value, numbers of any type alike, text by the compare mode (0 binary, 1
/// without case). Entries keep the order of insertion. Adding a key that exists is error 457;
/// reading a key that does not exist adds it with an Empty item, as the platform's does.
struct IDictionary : IDispatch {
  virtual HRESULT STDMETHODCALLTYPE putref_Item(VARIANT* key, VARIANT* item) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_Item(VARIANT* key, VARIANT* item) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_Item(VARIANT* key, VARIANT* item) = 0;
  virtual HRESULT STDMETHODCALLTYPE Add(VARIANT* key, VARIANT* item) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_Count(LONG* count) = 0;
  virtual HRESULT STDMETHODCALLTYPE Exists(VARIANT* key, VARIANT_BOOL* exists) = 0;
  virtual HRESULT STDMETHODCALLTYPE Items(VARIANT* items) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_Key(VARIANT* key, VARIANT* newKey) = 0;
  virtual HRESULT STDMETHODCALLTYPE Keys(VARIANT* keys) = 0;
  virtual HRESULT STDMETHODCALLTYPE Remove(VARIANT* key) = 0;
  virtual HRESULT STDMETHODCALLTYPE RemoveAll() = 0;
  virtual HRESULT STDMETHODCALLTYPE put_CompareMode(int mode) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_CompareMode(int* mode) = 0;
  virtual HRESULT STDMETHODCALLTYPE _NewEnum(IUnknown** enumerator) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_HashVal(VARIANT* key, VARIANT* hash) = 0;
};

}  // namespace quendal::automation
