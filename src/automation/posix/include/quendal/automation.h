// The part of the automation ABI that the library needs where the system does not supply it.
// Names, layouts and tags are those of the platform's own headers, so that the classes compile
// unchanged in both homes. Only what is called is here.
#pragma once

#include <cstdint>
#include <cstring>

#define QUENDAL_EXPORT __attribute__((visibility("default")))
#define STDMETHODCALLTYPE

using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using LONG = std::int32_t;
using ULONG = std::uint32_t;
using INT = int;
using UINT = unsigned int;
using USHORT = std::uint16_t;
using BOOL = int;
using HRESULT = std::int32_t;
using SCODE = std::int32_t;
using LCID = std::uint32_t;
using DISPID = std::int32_t;
using MEMBERID = DISPID;
using OLECHAR = char16_t;
using LPOLESTR = OLECHAR*;
using LPCOLESTR = const OLECHAR*;
using BSTR = OLECHAR*;
using DATE = double;
using VARTYPE = std::uint16_t;
using VARIANT_BOOL = std::int16_t;

struct GUID {
  std::uint32_t Data1;
  std::uint16_t Data2;
  std::uint16_t Data3;
  std::uint8_t Data4[8];
};
using IID = GUID;
using CLSID = GUID;
using REFGUID = const GUID&;
using REFIID = const IID&;
using REFCLSID = const CLSID&;
inline bool operator==(const GUID& a, const GUID& b) noexcept {
  return std::memcmp(&a, &b, sizeof(GUID)) == 0;
}

union CY {
  std::int64_t int64;
};

struct DECIMAL {
  USHORT wReserved;
  BYTE scale;
  BYTE sign;
  ULONG Hi32;
  std::uint64_t Lo64;
};

constexpr VARIANT_BOOL VARIANT_TRUE = -1;
constexpr VARIANT_BOOL VARIANT_FALSE = 0;

enum VARENUM : VARTYPE {
  VT_EMPTY = 0,
  VT_NULL = 1,
  VT_I2 = 2,
  VT_I4 = 3,
  VT_R4 = 4,
  VT_R8 = 5,
  VT_CY = 6,
  VT_DATE = 7,
  VT_BSTR = 8,
  VT_DISPATCH = 9,
  VT_ERROR = 10,
  VT_BOOL = 11,
  VT_VARIANT = 12,
  VT_UNKNOWN = 13,
  VT_DECIMAL = 14,
  VT_I1 = 16,
  VT_UI1 = 17,
  VT_UI2 = 18,
  VT_UI4 = 19,
  VT_I8 = 20,
  VT_UI8 = 21,
  VT_INT = 22,
  VT_UINT = 23,
  VT_ARRAY = 0x2000,
  VT_BYREF = 0x4000,
  VT_TYPEMASK = 0x0FFF,
};

struct IUnknown;
struct IDispatch;
struct IErrorInfo;
struct ITypeInfo;

struct SAFEARRAYBOUND {
  ULONG cElements;
  LONG lLbound;
};

struct SAFEARRAY {
  USHORT cDims;
  USHORT fFeatures;
  ULONG cbElements;
  ULONG cLocks;
  void* pvData;
  SAFEARRAYBOUND rgsabound[1];  // one for each dimension, the last dimension first
};
constexpr USHORT FADF_AUTO = 0x1;
constexpr USHORT FADF_STATIC = 0x2;
constexpr USHORT FADF_FIXEDSIZE = 0x10;
constexpr USHORT FADF_HAVEVARTYPE = 0x80;
constexpr USHORT FADF_BSTR = 0x100;
constexpr USHORT FADF_UNKNOWN = 0x200;
constexpr USHORT FADF_DISPATCH = 0x400;
constexpr USHORT FADF_VARIANT = 0x800;

struct VARIANT {
  union {
    struct {
      VARTYPE vt;
      WORD wReserved1;
      WORD wReserved2;
      WORD wReserved3;
      union {
        std::int64_t llVal;
        LONG lVal;
        BYTE bVal;
        std::int16_t iVal;
        float fltVal;
        double dblVal;
        VARIANT_BOOL boolVal;
        SCODE scode;
        CY cyVal;
        DATE date;
        BSTR bstrVal;
        IUnknown* punkVal;
        IDispatch* pdispVal;
        SAFEARRAY* parray;
        BYTE* pbVal;
        std::int16_t* piVal;
        LONG* plVal;
        std::int64_t* pllVal;
        float* pfltVal;
        double* pdblVal;
        VARIANT_BOOL* pboolVal;
        CY* pcyVal;
        DATE* pdate;
        BSTR* pbstrVal;
        IUnknown** ppunkVal;
        IDispatch** ppdispVal;
        SAFEARRAY** pparray;
        VARIANT* pvarVal;
        void* byref;
        signed char cVal;
        USHORT uiVal;
        ULONG ulVal;
        std::uint64_t ullVal;
        DECIMAL* pdecVal;
        struct {
          void* pvRecord;
          void* pRecInfo;
        };
      };
    };
    DECIMAL decVal;
  };
};
using VARIANTARG = VARIANT;
static_assert(sizeof(VARIANT) == 8 + 2 * sizeof(void*));

struct DISPPARAMS {
  VARIANTARG* rgvarg;  // the last argument first
  DISPID* rgdispidNamedArgs;
  UINT cArgs;
  UINT cNamedArgs;
};

struct EXCEPINFO {
  WORD wCode;
  WORD wReserved;
  BSTR bstrSource;
  BSTR bstrDescription;
  BSTR bstrHelpFile;
  DWORD dwHelpContext;
  void* pvReserved;
  HRESULT(STDMETHODCALLTYPE* pfnDeferredFillIn)(EXCEPINFO*);
  SCODE scode;
};

constexpr WORD DISPATCH_METHOD = 1;
constexpr WORD DISPATCH_PROPERTYGET = 2;
constexpr WORD DISPATCH_PROPERTYPUT = 4;
constexpr WORD DISPATCH_PROPERTYPUTREF = 8;
constexpr DISPID DISPID_VALUE = 0;
constexpr DISPID DISPID_UNKNOWN = -1;
constexpr DISPID DISPID_PROPERTYPUT = -3;
constexpr DISPID DISPID_NEWENUM = -4;
constexpr MEMBERID MEMBERID_NIL = DISPID_UNKNOWN;

constexpr HRESULT hresult(std::uint32_t code) noexcept { return static_cast<HRESULT>(code); }
constexpr HRESULT S_OK = 0;
constexpr HRESULT S_FALSE = 1;
constexpr HRESULT E_NOTIMPL = hresult(0x80004001);
constexpr HRESULT E_NOINTERFACE = hresult(0x80004002);
constexpr HRESULT E_POINTER = hresult(0x80004003);
constexpr HRESULT E_FAIL = hresult(0x80004005);
constexpr HRESULT E_UNEXPECTED = hresult(0x8000FFFF);
constexpr HRESULT E_ACCESSDENIED = hresult(0x80070005);
constexpr HRESULT E_OUTOFMEMORY = hresult(0x8007000E);
constexpr HRESULT E_INVALIDARG = hresult(0x80070057);
constexpr HRESULT CLASS_E_NOAGGREGATION = hresult(0x80040110);
constexpr HRESULT CLASS_E_CLASSNOTAVAILABLE = hresult(0x80040111);
constexpr HRESULT DISP_E_UNKNOWNINTERFACE = hresult(0x80020001);
constexpr HRESULT DISP_E_MEMBERNOTFOUND = hresult(0x80020003);
constexpr HRESULT DISP_E_PARAMNOTFOUND = hresult(0x80020004);
constexpr HRESULT DISP_E_TYPEMISMATCH = hresult(0x80020005);
constexpr HRESULT DISP_E_UNKNOWNNAME = hresult(0x80020006);
constexpr HRESULT DISP_E_NONAMEDARGS = hresult(0x80020007);
constexpr HRESULT DISP_E_BADVARTYPE = hresult(0x80020008);
constexpr HRESULT DISP_E_EXCEPTION = hresult(0x80020009);
constexpr HRESULT DISP_E_OVERFLOW = hresult(0x8002000A);
constexpr HRESULT DISP_E_BADINDEX = hresult(0x8002000B);
constexpr HRESULT DISP_E_ARRAYISLOCKED = hresult(0x8002000D);
constexpr HRESULT DISP_E_BADPARAMCOUNT = hresult(0x8002000E);
constexpr HRESULT DISP_E_PARAMNOTOPTIONAL = hresult(0x8002000F);
constexpr HRESULT TYPE_E_ELEMENTNOTFOUND = hresult(0x8002802B);
constexpr bool SUCCEEDED(HRESULT code) noexcept { return code >= 0; }
constexpr bool FAILED(HRESULT code) noexcept { return code < 0; }

struct IUnknown {
  virtual HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) = 0;
  virtual ULONG STDMETHODCALLTYPE AddRef() = 0;
  virtual ULONG STDMETHODCALLTYPE Release() = 0;
};

struct IDispatch : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count,
                                                  LCID locale, DISPID* ids) = 0;
  virtual HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID reserved, LCID locale, WORD flags,
                                           DISPPARAMS* params, VARIANT* result,
                                           EXCEPINFO* exception, UINT* argumentError) = 0;
};

struct IEnumVARIANT : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE Next(ULONG count, VARIANT* items, ULONG* fetched) = 0;
  virtual HRESULT STDMETHODCALLTYPE Skip(ULONG count) = 0;
  virtual HRESULT STDMETHODCALLTYPE Reset() = 0;
  virtual HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT** copy) = 0;
};

struct IErrorInfo : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE GetGUID(GUID* guid) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetSource(BSTR* source) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetDescription(BSTR* description) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetHelpFile(BSTR* file) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetHelpContext(DWORD* context) = 0;
};

struct ICreateErrorInfo : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE SetGUID(REFGUID guid) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetSource(LPOLESTR source) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetDescription(LPOLESTR description) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetHelpFile(LPOLESTR file) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetHelpContext(DWORD context) = 0;
};

struct ISupportErrorInfo : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID iid) = 0;
};

struct IProvideClassInfo : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** info) = 0;
};

struct IClassFactory : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** object) = 0;
  virtual HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) = 0;
};

/// Type information, down to the one question asked of it here: the name. The entries before
/// `GetDocumentation` stand for their places in the function table.
struct ITypeInfo : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE GetTypeAttr(void** attributes) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetTypeComp(void** comp) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetFuncDesc(UINT index, void** description) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetVarDesc(UINT index, void** description) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetNames(MEMBERID id, BSTR* names, UINT max, UINT* count) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetRefTypeOfImplType(UINT index, DWORD* type) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetImplTypeFlags(UINT index, INT* flags) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetIDsOfNames(LPOLESTR* names, UINT count, MEMBERID* ids) = 0;
  virtual HRESULT STDMETHODCALLTYPE Invoke(void* object, MEMBERID id, WORD flags,
                                           DISPPARAMS* params, VARIANT* result,
                                           EXCEPINFO* exception, UINT* argumentError) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetDocumentation(MEMBERID id, BSTR* name, BSTR* help,
                                                     DWORD* context, BSTR* helpFile) = 0;
};

inline constexpr GUID GUID_NULL{0, 0, 0, {0, 0, 0, 0, 0, 0, 0, 0}};
inline constexpr GUID IID_NULL = GUID_NULL;
inline constexpr GUID IID_IUnknown{0, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
inline constexpr GUID IID_IClassFactory{1, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
inline constexpr GUID IID_IDispatch{0x00020400, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
inline constexpr GUID IID_ITypeInfo{0x00020401, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
inline constexpr GUID IID_IEnumVARIANT{0x00020404, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
inline constexpr GUID IID_IErrorInfo{
    0x1CF2B120, 0x547D, 0x101B, {0x8E, 0x65, 0x08, 0x00, 0x2B, 0x2B, 0xD1, 0x19}};
inline constexpr GUID IID_ICreateErrorInfo{
    0x22F03340, 0x547D, 0x101B, {0x8E, 0x65, 0x08, 0x00, 0x2B, 0x2B, 0xD1, 0x19}};
inline constexpr GUID IID_ISupportErrorInfo{
    0xDF0B3D60, 0x548F, 0x101B, {0x8E, 0x65, 0x08, 0x00, 0x2B, 0x2B, 0xD1, 0x19}};
inline constexpr GUID IID_IProvideClassInfo{
    0xB196B283, 0xBAB4, 0x101A, {0xB6, 0x9C, 0x00, 0xAA, 0x00, 0x34, 0x1D, 0x07}};

// Strings: counted UTF-16 with the byte length in the four bytes before the first character.
// Null means the empty string wherever a BSTR is read.
QUENDAL_EXPORT BSTR SysAllocString(const OLECHAR* text) noexcept;
QUENDAL_EXPORT BSTR SysAllocStringLen(const OLECHAR* text, UINT length) noexcept;
QUENDAL_EXPORT void SysFreeString(BSTR text) noexcept;
inline UINT SysStringLen(BSTR text) noexcept {
  if (text == nullptr) return 0;
  std::uint32_t bytes = 0;
  std::memcpy(&bytes, reinterpret_cast<const unsigned char*>(text) - sizeof(bytes), sizeof(bytes));
  return bytes / static_cast<UINT>(sizeof(OLECHAR));
}

// Values. Results are HRESULTs of the automation runtime: DISP_E_TYPEMISMATCH,
// DISP_E_OVERFLOW, DISP_E_BADVARTYPE, E_OUTOFMEMORY, E_INVALIDARG, DISP_E_ARRAYISLOCKED.
constexpr USHORT VARIANT_ALPHABOOL = 2;    // Boolean to text as "True" and "False"
constexpr USHORT VARIANT_NOVALUEPROP = 1;  // objects are not asked for their default value
QUENDAL_EXPORT void VariantInit(VARIANTARG* value) noexcept;
QUENDAL_EXPORT HRESULT VariantClear(VARIANTARG* value) noexcept;
QUENDAL_EXPORT HRESULT VariantCopy(VARIANTARG* target, const VARIANTARG* source) noexcept;
/// As VariantCopy, but a reference is followed (one level, and through a nested variant).
QUENDAL_EXPORT HRESULT VariantCopyInd(VARIANT* target, const VARIANTARG* source) noexcept;
QUENDAL_EXPORT HRESULT VariantChangeTypeEx(VARIANTARG* target, const VARIANTARG* source,
                                           LCID locale, USHORT flags, VARTYPE type) noexcept;

// Arrays.
QUENDAL_EXPORT SAFEARRAY* SafeArrayCreate(VARTYPE type, UINT dimensions,
                                          SAFEARRAYBOUND* bounds) noexcept;
QUENDAL_EXPORT SAFEARRAY* SafeArrayCreateVector(VARTYPE type, LONG lowerBound,
                                                ULONG count) noexcept;
QUENDAL_EXPORT HRESULT SafeArrayDestroy(SAFEARRAY* array) noexcept;
QUENDAL_EXPORT HRESULT SafeArrayCopy(SAFEARRAY* source, SAFEARRAY** target) noexcept;
/// Re-dimensions the last dimension, keeping the contents. DISP_E_ARRAYISLOCKED when locked or
/// of fixed size.
QUENDAL_EXPORT HRESULT SafeArrayRedim(SAFEARRAY* array, SAFEARRAYBOUND* bound) noexcept;
QUENDAL_EXPORT HRESULT SafeArrayAccessData(SAFEARRAY* array, void** data) noexcept;
QUENDAL_EXPORT HRESULT SafeArrayUnaccessData(SAFEARRAY* array) noexcept;
QUENDAL_EXPORT HRESULT SafeArrayGetLBound(SAFEARRAY* array, UINT dimension, LONG* bound) noexcept;
QUENDAL_EXPORT HRESULT SafeArrayGetUBound(SAFEARRAY* array, UINT dimension, LONG* bound) noexcept;
QUENDAL_EXPORT HRESULT SafeArrayGetVartype(SAFEARRAY* array, VARTYPE* type) noexcept;
QUENDAL_EXPORT UINT SafeArrayGetDim(SAFEARRAY* array) noexcept;

// Error information, one per thread.
QUENDAL_EXPORT HRESULT SetErrorInfo(ULONG reserved, IErrorInfo* info) noexcept;
QUENDAL_EXPORT HRESULT GetErrorInfo(ULONG reserved, IErrorInfo** info) noexcept;
QUENDAL_EXPORT HRESULT CreateErrorInfo(ICreateErrorInfo** info) noexcept;

namespace quendal {

/// Library text as the ABI's characters and back: the same type here.
inline const OLECHAR* oleText(const char16_t* text) noexcept { return text; }
inline const char16_t* plainText(const OLECHAR* text) noexcept { return text; }

}  // namespace quendal
