// The DLL itself: factories, and the type library inside it.
#include <gtest/gtest.h>
#include <quendal/object.h>

#include <array>
#include <string>

#include "component/catalogue.h"
#include "core/enumerations.h"
#include "core/names.h"
#include "platform/code_page.h"
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

/// A type of the library as the interface definition writes it.
std::string typeText(ITypeInfo* info, const TYPEDESC& type) {
  switch (type.vt) {
    case VT_I2:
      return "short";
    case VT_I4:
      return "long";
    case VT_BOOL:
      return "VARIANT_BOOL";
    case VT_BSTR:
      return "BSTR";
    case VT_VARIANT:
      return "VARIANT";
    case VT_DISPATCH:
      return "IDispatch*";
    case VT_VOID:
    case VT_HRESULT:
      return "void";
    case VT_PTR:
      return typeText(info, *type.lptdesc) + "*";
    case VT_SAFEARRAY:
      return "SAFEARRAY(" + typeText(info, *type.lptdesc) + ")";
    case VT_USERDEFINED: {
      ITypeInfo* referred = nullptr;
      if (FAILED(info->GetRefTypeInfo(type.hreftype, &referred))) return "?";
      BSTR name = nullptr;
      referred->GetDocumentation(MEMBERID_NIL, &name, nullptr, nullptr, nullptr);
      referred->Release();
      return platform::toUtf8(Text::attach(name).view());
    }
    default:
      return "type " + std::to_string(type.vt);
  }
}

std::string typeText(const TypeReference& type) {
  switch (type.type) {
    case InterfaceType::None:
      return "void";
    case InterfaceType::Int16:
      return "short";
    case InterfaceType::Int32:
      return "long";
    case InterfaceType::Boolean:
      return "VARIANT_BOOL";
    case InterfaceType::String:
      return "BSTR";
    case InterfaceType::Variant:
      return "VARIANT";
    case InterfaceType::Dispatch:
      return "IDispatch*";
    case InterfaceType::Class:
      return "_" + platform::toUtf8(type.name) + "*";
    case InterfaceType::Enumeration:
      return platform::toUtf8(type.name);
    case InterfaceType::VariantList:
      return "SAFEARRAY(VARIANT)";
  }
  return {};
}

std::string defaultText(const PARAMDESC& parameter) {
  if ((parameter.wParamFlags & PARAMFLAG_FHASDEFAULT) == 0) return {};
  return " = " + platform::toUtf8(textOf(parameter.pparamdescex->varDefaultValue));
}

std::string defaultText(const ParameterRow& row) {
  if (const auto* number = std::get_if<std::int32_t>(&row.defaultValue)) {
    const bool isFlag = row.type.type == InterfaceType::Boolean;
    return isFlag ? (*number != 0 ? " = True" : " = False") : " = " + std::to_string(*number);
  }
  const auto* text = std::get_if<std::u16string_view>(&row.defaultValue);
  // A pointer takes no text default in the type library; dispatch supplies it.
  return text == nullptr || row.byReference ? std::string() : " = " + platform::toUtf8(*text);
}

/// "name(type name = default, ...) type" of a slot, from the library and from the table.
std::string slotText(ITypeInfo* info, UINT index) {
  FUNCDESC* function = nullptr;
  if (FAILED(info->GetFuncDesc(index, &function))) return "?";
  std::array<BSTR, kMaxParameters + 2> names{};
  UINT count = 0;
  info->GetNames(function->memid, names.data(), names.size(), &count);
  std::string text = std::to_string(function->memid) + " " + std::to_string(function->invkind) +
                     " " + platform::toUtf8(viewOf(names[0])) + "(";
  std::string result = "void";
  const bool isPut = function->invkind == INVOKE_PROPERTYPUT;  // names are those of the getter
  for (SHORT i = 0; i < function->cParams; ++i) {
    const ELEMDESC& element = function->lprgelemdescParam[i];
    if ((element.paramdesc.wParamFlags & PARAMFLAG_FRETVAL) != 0) {
      result = typeText(info, *element.tdesc.lptdesc);
      continue;
    }
    const auto name = static_cast<std::size_t>(i) + 1;
    text += typeText(info, element.tdesc) + " " +
            (name < count && !isPut ? platform::toUtf8(viewOf(names[name])) : "value") +
            ((element.paramdesc.wParamFlags & PARAMFLAG_FOPT) != 0 ? "?" : "") +
            defaultText(element.paramdesc) + ", ";
  }
  for (UINT i = 0; i < count; ++i) SysFreeString(names[i]);
  info->ReleaseFuncDesc(function);
  return text + ") " + result;
}

std::string slotText(const MemberRow& row) {
  const int kind = row.kind == MemberKind::Method ? INVOKE_FUNC
                   : row.kind == MemberKind::Get  ? INVOKE_PROPERTYGET
                                                  : INVOKE_PROPERTYPUT;
  std::string text =
      std::to_string(row.id) + " " + std::to_string(kind) + " " + platform::toUtf8(row.name) + "(";
  for (const ParameterRow& parameter : row.parameters()) {
    const bool isValue = row.kind == MemberKind::Put;
    text += typeText(parameter.type) + (parameter.byReference ? "* " : " ") +
            (isValue ? "value" : platform::toUtf8(parameter.name)) +
            (parameter.optional ? "?" : "") + defaultText(parameter) + ", ";
  }
  return text + ") " + typeText(row.result);
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
    ASSERT_EQ(slots, members.size()) << platform::toUtf8(identity.name);
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

TEST_F(TypeLibraryTest, HoldsTheEnumerationsAndItsOwnIdentity) {
  TLIBATTR* attributes = nullptr;
  ASSERT_EQ(library_->GetLibAttr(&attributes), S_OK);
  EXPECT_TRUE(attributes->guid == kLibraryId);
  library_->ReleaseTLibAttr(attributes);
  BSTR name = nullptr, help = nullptr;
  library_->GetDocumentation(-1, &name, &help, nullptr, nullptr);
  EXPECT_EQ(Text::attach(name).view(), u"QUENDAL_REPORTS_ASP");
  EXPECT_EQ(Text::attach(help).view(), u"Tolvex Reports Classic ASP Library");

  for (const EnumerationDescription& enumeration : enumerations()) {
    ITypeInfo* info = nullptr;
    ASSERT_EQ(library_->GetTypeInfoOfGuid(enumeration.id, &info), S_OK);
    EXPECT_EQ(nameOf(info), enumeration.name);
    for (UINT i = 0; i < enumeration.members.size(); ++i) {
      VARDESC* variable = nullptr;
      ASSERT_EQ(info->GetVarDesc(i, &variable), S_OK);
      BSTR member = nullptr;
      info->GetDocumentation(variable->memid, &member, nullptr, nullptr, nullptr);
      EXPECT_EQ(Text::attach(member).view(), enumeration.members[i].name);
      EXPECT_EQ(int32Of(*variable->lpvarValue), enumeration.members[i].value);
      info->ReleaseVarDesc(variable);
    }
    info->Release();
  }
}

}  // namespace
}  // namespace quendal::test
