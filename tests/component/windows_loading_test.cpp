// The DLL as hosts load, use and unload it, together with other modules; the type library in it.
#include <gtest/gtest.h>
#include <quendal/object.h>

#include <vector>

#include "component/catalogue.h"
#include "tests/component/windows_dll.h"
#include "tests/support/outcome.h"

namespace quendal::test {
namespace {

/// A copy of the DLL beside it, for a test that nothing must have used before. It stays: a module
/// that was used cannot be deleted.
std::u16string copyOfDll(std::u16string_view name) {
  std::u16string path = besideProgram(name);
  EXPECT_TRUE(CopyFileW(oleText(dllPath().c_str()), oleText(path.c_str()), FALSE));
  return path;
}

/// The error that a new logger raises as it has no file to write to; 0 when it raises none.
std::int32_t errorOfAWrite(const LoadedModule& dll) {
  const ClassIdentity& identity =
      findCreatable(u"QUENDAL_REPORTS_ASP.LOGGING")->description.identity();
  void* found = nullptr;
  dll.entry<HRESULT STDMETHODCALLTYPE(REFCLSID, REFIID, void**)>("DllGetClassObject")(
      identity.classId, IID_IClassFactory, &found);
  auto* const factory = static_cast<IClassFactory*>(found);
  void* object = nullptr;
  const HRESULT code = factory->CreateInstance(nullptr, IID_IDispatch, &object);
  EXPECT_EQ(dll.call("DllCanUnloadNow"), S_FALSE);
  factory->Release();
  if (FAILED(code)) return code & 0xFFFF;
  return raisedBy([&] {
    Object::attach(static_cast<IDispatch*>(object)).call(u"WriteLog", std::int16_t{1}, u"x");
  });
}

constexpr std::int32_t kNoFile = 52;

TEST(LoadingTest, ErrorsAreCaughtWhenAnotherModuleBroughtTheSharedUnwinder) {
  EXPECT_EQ(errorOfAWrite(LoadedModule(copyOfDll(u"COPY_ALONE.DLL"))), kNoFile);
  // Start-up code that looks for the other unwinder knows it by its name.
  const LoadedModule other(copyOfDll(u"libgcc_s_dw2-1.dll"));
  EXPECT_EQ(errorOfAWrite(LoadedModule(copyOfDll(u"COPY_BESIDE.DLL"))), kNoFile);
}

TEST(LoadingTest, AThreadThatCannotHaveItsStateGetsError7) {
  const LoadedModule dll(copyOfDll(u"COPY_WITHOUT_STATE.DLL"));
  std::vector<DWORD> taken;  // all slots for the state of threads that are left
  for (DWORD slot = 0; (slot = FlsAlloc(nullptr)) != FLS_OUT_OF_INDEXES;) taken.push_back(slot);
  EXPECT_EQ(errorOfAWrite(dll), error_number::kOutOfMemory);
  for (const DWORD slot : taken) FlsFree(slot);
  EXPECT_EQ(errorOfAWrite(dll), kNoFile);
  EXPECT_EQ(dll.call("DllCanUnloadNow"), S_OK);
}

// Every unloading would cost the process one of the slots for the state of threads.
TEST(LoadingTest, StaysLoadedWithOrWithoutUse) {
  const std::u16string path = copyOfDll(u"COPY_ONCE.DLL");
  { const LoadedModule unused(path); }
  EXPECT_NE(GetModuleHandleW(oleText(path.c_str())), nullptr);
  EXPECT_EQ(errorOfAWrite(LoadedModule(path)), kNoFile);
}

TEST_F(ComponentTest, ItsTypeLibraryNamesTheClassesAndWhatCanBeDoneWithThem) {
  ITypeLib* library = nullptr;
  ASSERT_EQ(LoadTypeLibEx(oleText(dllPath().c_str()), REGKIND_NONE, &library), S_OK);
  const auto flagsOf = [&](const GUID& id, std::u16string_view name) {
    ITypeInfo* info = nullptr;
    EXPECT_EQ(library->GetTypeInfoOfGuid(id, &info), S_OK);
    BSTR found = nullptr;
    info->GetDocumentation(MEMBERID_NIL, &found, nullptr, nullptr, nullptr);
    EXPECT_EQ(Text::attach(found).view(), name);
    TYPEATTR* attributes = nullptr;
    info->GetTypeAttr(&attributes);
    const WORD flags = attributes->wTypeFlags;
    info->ReleaseTypeAttr(attributes);
    info->Release();
    return flags;
  };
  for (const CatalogueEntry& entry : catalogue()) {
    const ClassIdentity& identity = entry.description.identity();
    constexpr WORD kFlags = TYPEFLAG_FHIDDEN | TYPEFLAG_FDUAL | TYPEFLAG_FNONEXTENSIBLE;
    EXPECT_EQ(flagsOf(identity.interfaceId, identity.interfaceName) & kFlags, kFlags);
    EXPECT_EQ((flagsOf(identity.classId, identity.name) & TYPEFLAG_FCANCREATE) != 0,
              !identity.programId.empty());
  }
  library->Release();
}

}  // namespace
}  // namespace quendal::test
