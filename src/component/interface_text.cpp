#include "component/interface_text.h"

#include <cstdint>

#include "base/text.h"
#include "component/catalogue.h"
#include "core/enumerations.h"
#include "core/guid.h"
#include "core/names.h"

namespace quendal {
namespace {

// Everything in the tables is ASCII.
std::string narrow(std::u16string_view text) {
  std::string result;
  for (const char16_t c : text) result += static_cast<char>(c);
  return result;
}

std::string quoted(std::u16string_view text) {
  std::string result = "\"";
  for (const char16_t c : text) {
    if (c == u'"' || c == u'\\') result += '\\';
    result += static_cast<char>(c);
  }
  return result + '"';
}

std::string uuid(const GUID& id) {
  const std::string text = narrow(registryForm(id));
  return "uuid(" + text.substr(1, text.size() - 2) + ")";
}

std::string typeName(const TypeReference& type) {
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
      return "_" + narrow(type.name) + "*";
    case InterfaceType::Enumeration:
      return narrow(type.name);
    case InterfaceType::VariantList:
      return "SAFEARRAY(VARIANT)";
  }
  return {};
}

std::string parameterText(const ParameterRow& parameter) {
  std::string attributes = parameter.byReference ? "in, out" : "in";
  if (parameter.optional) attributes += ", optional";
  // The type library compiler takes no text default on a pointer, which Variants and texts by
  // reference are: those stay undeclared, and dispatch fills them in.
  if (const auto* number = std::get_if<std::int32_t>(&parameter.defaultValue))
    attributes += ", defaultvalue(" + std::to_string(*number) + ")";
  const auto* text = std::get_if<std::u16string_view>(&parameter.defaultValue);
  if (text != nullptr && !parameter.byReference)
    attributes += ", defaultvalue(" + quoted(*text) + ")";
  return "[" + attributes + "] " + typeName(parameter.type) + (parameter.byReference ? "* " : " ") +
         narrow(parameter.name);
}

std::string memberText(const MemberRow& member) {
  std::string text = "    [id(" + std::to_string(member.id) + ")";
  if (member.kind == MemberKind::Get) text += ", propget";
  if (member.kind == MemberKind::Put) text += ", propput";
  if (member.takesList()) text += ", vararg";
  text += ", helpstring(" + quoted(member.help) + ")]\n    HRESULT " + narrow(member.name) + "(";
  std::string separator;
  for (const ParameterRow& parameter : member.parameters()) {
    text += separator + parameterText(parameter);
    separator = ",\n        ";
  }
  if (member.result.type != InterfaceType::None)
    text += separator + "[out, retval] " + typeName(member.result) + "* result";
  return text + ");\n";
}

std::string enumerationText(const EnumerationDescription& enumeration) {
  const std::string name = narrow(enumeration.name);
  std::string text = "  typedef [" + uuid(enumeration.id) + "] enum " + name + " {\n";
  std::string separator;
  for (const EnumerationMember& member : enumeration.members) {
    text += separator + "    " + narrow(member.name) + " = " + std::to_string(member.value);
    separator = ",\n";
  }
  return text + "\n  } " + name + ";\n\n";
}

std::string interfaceText(const ClassDescription& description) {
  const ClassIdentity& identity = description.identity();
  std::string text = "  [odl, " + uuid(identity.interfaceId) +
                     ", hidden, dual, nonextensible, oleautomation]\n  interface " +
                     narrow(identity.interfaceName) + " : IDispatch {\n";
  for (const MemberRow& member : description.members()) text += memberText(member);
  return text + "  };\n\n";
}

std::string classText(const ClassIdentity& identity) {
  std::string text = "  [" + uuid(identity.classId) + ", helpstring(" + quoted(identity.help) + ")";
  if (identity.programId.empty()) text += ", noncreatable";
  return text + "]\n  coclass " + narrow(identity.name) + " {\n    [default] interface " +
         narrow(identity.interfaceName) + ";\n  };\n\n";
}

}  // namespace

std::string interfaceText() {
  std::string text =
      "// Made from the classes' tables by tools/describe; a test compares the two.\n"
      "import \"oaidl.idl\";\n\n[" +
      uuid(kLibraryId) + ", version(" + std::to_string(kLibraryMajor) + "." +
      std::to_string(kLibraryMinor) + "), helpstring(" + quoted(kLibraryHelp) + ")]\nlibrary " +
      narrow(kLibraryName) + " {\n  importlib(\"stdole2.tlb\");\n\n";
  for (const CatalogueEntry& entry : catalogue())
    text += "  interface " + narrow(entry.description.identity().interfaceName) + ";\n";
  text += "\n";
  for (const EnumerationDescription& enumeration : enumerations())
    text += enumerationText(enumeration);
  for (const CatalogueEntry& entry : catalogue()) text += interfaceText(entry.description);
  for (const CatalogueEntry& entry : catalogue()) text += classText(entry.description.identity());
  text.resize(text.size() - 1);
  return text + "};\n";
}

}  // namespace quendal
