// The DLL itself: its entry points, and the type library inside it.
#include <gtest/gtest.h>
#include <quendal/object.h>

#include "base/utf8.h"
#include "component/catalogue.h"
#include "tests/component/windows_dll.h"

namespace quendal::test {
namespace {

TEST_F(ComponentTest, GivesItsFactoriesAndTellsWhetherTheyAreInUse) {
  const ClassIdentity& identity =
      findCreatable(u"QUENDAL_REPORTS_ASP.LOGGING")->description.identity();
  auto* const getClassObject =
      dll_.entry<HRESULT STDMETHODCALLTYPE(REFCLSID, REFIID, void**)>("DllGetClassObject");
  void* factory = nullptr;
  EXPECT_EQ(getClassObject(identity.interfaceId, IID_IClassFactory, &factory),
            CLASS_E_CLASSNOTAVAILABLE);
  ASSERT_EQ(getClassObject(identity.classId, IID_IClassFactory, &factory), S_OK);
  EXPECT_EQ(dll_.call("DllCanUnloadNow"), S_FALSE);
  static_cast<IUnknown*>(factory)->Release();
  EXPECT_EQ(dll_.call("DllCanUnloadNow"), S_OK);
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
