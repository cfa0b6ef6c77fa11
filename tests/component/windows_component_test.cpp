// The DLL itself: factories, and the type library inside it.
#include <gtest/gtest.h>
#include <quendal/object.h>

#include <string>

#include "base/utf8.h"
#include "component/catalogue.h"
#include "tests/component/windows_dll.h"

namespace quendal::test {
namespace {

TEST_F(ComponentTest, OnlyTwoClassesHaveFactories) {
  auto* const getClassObject =
      dll_.entry<HRESULT STDMETHODCALLTYPE(REFCLSID, REFIID, void**)>("DllGetClassObject");
  for (const CatalogueEntry& candidate : catalogue()) {
    const ClassIdentity& identity = candidate.description.identity();
    void* found = &found;
    const HRESULT code = getClassObject(identity.classId, IID_IClassFactory, &found);
    EXPECT_EQ(code, identity.programId.empty() ? CLASS_E_CLASSNOTAVAILABLE : S_OK);
    if (FAILED(code)) {
      EXPECT_EQ(found, nullptr);
      continue;
    }
    auto* factory = static_cast<IClassFactory*>(found);
    void* object = nullptr;
    EXPECT_EQ(factory->CreateInstance(factory, IID_IUnknown, &object), CLASS_E_NOAGGREGATION);
    EXPECT_EQ(factory->CreateInstance(nullptr, identity.interfaceId, &object), S_OK);
    static_cast<IUnknown*>(object)->Release();
    factory->LockServer(TRUE);
    factory->Release();
    EXPECT_EQ(dll_.call("DllCanUnloadNow"), S_FALSE);
    getClassObject(identity.classId, IID_IClassFactory, &found);
    factory = static_cast<IClassFactory*>(found);
    factory->LockServer(FALSE);
    factory->Release();
    EXPECT_EQ(dll_.call("DllCanUnloadNow"), S_OK);
  }
}

/// The type library of the DLL, and what it says of a type.
class TypeLibraryTest : public ::testing::Test {
 protected:
  TypeLibraryTest() {
    EXPECT_EQ(LoadTypeLibEx(oleText(dllPath().c_str()), REGKIND_NONE, &library_), S_OK);
  }
  ~TypeLibraryTest() override { library_->Release(); }

  static std::u16string nameOf(ITypeInfo* info) {
    BSTR name = nullptr;
    info->GetDocumentation(MEMBERID_NIL, &name, nullptr, nullptr, nullptr);
    return std::u16string(Text::attach(name).view());
  }

  ITypeLib* library_ = nullptr;
};

/// "id kind name/parameters" of a slot, from the library and from the table. The rest is as the
/// interface definition has it, which is made from the table.
std::string slotText(ITypeInfo* info, UINT index) {
  FUNCDESC* function = nullptr;
  if (FAILED(info->GetFuncDesc(index, &function))) return "?";
  BSTR name = nullptr;
  info->GetDocumentation(function->memid, &name, nullptr, nullptr, nullptr);
  std::string text = std::to_string(function->memid) + " " + std::to_string(function->invkind) +
                     " " + toUtf8(Text::attach(name).view()) + "/" +
                     std::to_string(function->cParams);
  info->ReleaseFuncDesc(function);
  return text;
}

std::string slotText(const MemberRow& row) {
  const int kind = row.kind == MemberKind::Method ? INVOKE_FUNC
                   : row.kind == MemberKind::Get  ? INVOKE_PROPERTYGET
                                                  : INVOKE_PROPERTYPUT;
  const std::size_t count = row.parameterCount + (row.result.type != InterfaceType::None ? 1 : 0);
  return std::to_string(row.id) + " " + std::to_string(kind) + " " + toUtf8(row.name) + "/" +
         std::to_string(count);
}

TEST_F(TypeLibraryTest, HoldsExactlyTheInterfacesOfTheTablesSlotBySlot) {
  UINT interfaces = 0;
  for (UINT i = 0; i < library_->GetTypeInfoCount(); ++i) {
    TYPEKIND kind;
    library_->GetTypeInfoType(i, &kind);
    if (kind == TKIND_DISPATCH || kind == TKIND_INTERFACE) ++interfaces;
  }
  EXPECT_EQ(interfaces, catalogue().size());

  for (const CatalogueEntry& entry : catalogue()) {
    const ClassIdentity& identity = entry.description.identity();
    ITypeInfo* dispatchInfo = nullptr;
    ASSERT_EQ(library_->GetTypeInfoOfGuid(identity.interfaceId, &dispatchInfo), S_OK);
    EXPECT_EQ(nameOf(dispatchInfo), identity.interfaceName);
    TYPEATTR* attributes = nullptr;
    dispatchInfo->GetTypeAttr(&attributes);
    constexpr WORD kFlags = TYPEFLAG_FHIDDEN | TYPEFLAG_FDUAL | TYPEFLAG_FNONEXTENSIBLE;
    EXPECT_EQ(attributes->wTypeFlags & kFlags, kFlags);
    dispatchInfo->ReleaseTypeAttr(attributes);

    HREFTYPE reference = 0;
    ITypeInfo* table = nullptr;  // the function table's side of the dual interface
    ASSERT_EQ(dispatchInfo->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference), S_OK);
    ASSERT_EQ(dispatchInfo->GetRefTypeInfo(reference, &table), S_OK);
    table->GetTypeAttr(&attributes);
    const UINT slots = attributes->cFuncs;
    EXPECT_NE(attributes->wTypeFlags & TYPEFLAG_FOLEAUTOMATION, 0);
    table->ReleaseTypeAttr(attributes);
    const auto members = entry.description.members();
    ASSERT_EQ(slots, members.size()) << toUtf8(identity.name);
    for (UINT i = 0; i < slots; ++i) EXPECT_EQ(slotText(table, i), slotText(members[i]));
    table->Release();
    dispatchInfo->Release();

    ITypeInfo* classInfo = nullptr;
    ASSERT_EQ(library_->GetTypeInfoOfGuid(identity.classId, &classInfo), S_OK);
    EXPECT_EQ(nameOf(classInfo), identity.name);
    classInfo->GetTypeAttr(&attributes);
    EXPECT_EQ((attributes->wTypeFlags & TYPEFLAG_FCANCREATE) != 0, !identity.programId.empty());
    classInfo->ReleaseTypeAttr(attributes);
    classInfo->Release();
  }
}

}  // namespace
}  // namespace quendal::test
