#include <algorithm>
#include <cctype>

#include "core/enumerations.h"
#include "core/guid.h"
#include "describe/reference.h"

namespace quendal {
namespace {

std::string code(std::string_view text) { return '`' + std::string(text) + '`'; }

/// A type as the users of scripts call it.
std::string typeName(const TypeReference& type) {
  switch (type.type) {
    case InterfaceType::None:
      return "none";
    case InterfaceType::Int16:
      return "Integer";
    case InterfaceType::Int32:
      return "Long";
    case InterfaceType::Boolean:
      return "Boolean";
    case InterfaceType::String:
      return "String";
    case InterfaceType::Variant:
      return "Variant";
    case InterfaceType::Dispatch:
      return "Object";
    case InterfaceType::Class:
      return "Object, " + code(narrow(type.name));
    case InterfaceType::Enumeration:
      return "Long, " + code(narrow(type.name));
    case InterfaceType::VariantList:
      return "Variants, any number";
  }
  return {};
}

/// What an omitted parameter becomes.
std::string defaultText(const ParameterRow& parameter) {
  const bool isFlag = parameter.type.type == InterfaceType::Boolean;
  if (const auto* number = std::get_if<std::int32_t>(&parameter.defaultValue))
    return isFlag ? code(*number != 0 ? "True" : "False") : code(std::to_string(*number));
  if (const auto* text = std::get_if<std::u16string_view>(&parameter.defaultValue))
    return code('"' + narrow(*text) + '"');
  if (std::holds_alternative<EmptyText>(parameter.defaultValue)) return code("\"\"");
  return code(isFlag ? "False" : "0");
}

bool isList(const ParameterRow& parameter) {
  return parameter.type.type == InterfaceType::VariantList;
}

/// A member as it is called: `Slice(Arr, bRemove, iStart, [iEnd])`.
std::string callOf(const MemberRow& member) {
  std::string list, separator;
  for (const ParameterRow& parameter : member.parameters()) {
    const std::string name = narrow(parameter.name);
    list += separator;
    if (isList(parameter))
      list += '[' + name + ", ...]";
    else
      list += parameter.optional ? '[' + name + ']' : name;
    separator = ", ";
  }
  const std::string name = narrow(member.name);
  if (member.kind == MemberKind::Put) return name + " = " + list;
  return list.empty() && member.kind == MemberKind::Get ? name : name + '(' + list + ')';
}

std::string_view kindOf(const MemberRow& member) {
  switch (member.kind) {
    case MemberKind::Method:
      return "method";
    case MemberKind::Get:
      return "property, read";
    case MemberKind::Put:
      return "property, set";
  }
  return {};
}

/// "Class.A, B", or "Class.A to Z" for many.
std::string titleOf(const DescribedClass& described, const PieceEntry& entry) {
  constexpr std::size_t kMaxNames = 4;
  std::string title = narrow(described.description.identity().name) + '.' + entry.names.front();
  if (entry.names.size() > kMaxNames) return title + " to " + entry.names.back();
  for (std::size_t i = 1; i < entry.names.size(); ++i) title += ", " + entry.names[i];
  return title;
}

/// The anchor that a heading of this text gets.
std::string anchorOf(std::string_view title) {
  std::string anchor;
  for (const char c : title) {
    if (c == ' ') anchor += '-';
    if (std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_')
      anchor += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  }
  return anchor;
}

/// A text as a sentence on one line, for the cell of a table.
std::string cell(std::string text) {
  std::ranges::replace(text, '\n', ' ');
  text[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(text[0])));
  return text;
}

std::string paragraph(const std::string& text) { return text.empty() ? text : text + "\n\n"; }

std::string block(std::string_view language, const std::string& text) {
  return "```" + std::string(language) + '\n' + text + "\n```\n\n";
}

std::string parameterTable(const DescribedClass& described, const PieceEntry& entry) {
  std::string rows;
  std::vector<std::u16string_view> shown;  // the members of one entry share their parameters
  for (const MemberRow* member : described.membersOf(entry)) {
    for (const ParameterRow& parameter : member->parameters()) {
      if (std::ranges::find(shown, parameter.name) != shown.end()) continue;
      shown.push_back(parameter.name);
      const std::string name = narrow(parameter.name);
      const auto own = entry.meanings.find(name);
      const std::string& meaning =
          own != entry.meanings.end() ? own->second : described.piece.opening.meanings.at(name);
      rows += "| " + code(name) + " | " + typeName(parameter.type) + " | " +
              (parameter.byReference ? "in, out" : "in") + " | " +
              (parameter.optional  ? defaultText(parameter)
               : isList(parameter) ? "none"
                                   : "required") +
              " | " + cell(meaning) + " |\n";
    }
  }
  if (rows.empty()) return {};
  return "| Parameter | Type | Direction | Default | |\n|---|---|---|---|---|\n" + rows + '\n';
}

std::string resultText(const DescribedClass& described, const PieceEntry& entry) {
  std::vector<std::string> types;
  for (const MemberRow* member : described.membersOf(entry)) {
    if (member->kind == MemberKind::Put) continue;
    const std::string type = typeName(member->result);
    if (std::ranges::find(types, type) == types.end()) types.push_back(type);
  }
  std::string text = "**Result:** ", separator;
  for (const std::string& type : types) {
    text += separator + type;
    separator = " or ";
  }
  text += entry.result.empty() ? "." : ". " + entry.result;
  return text + "\n\n";
}

std::string entryText(const DescribedClass& described, const PieceEntry& entry) {
  std::string text = "### " + titleOf(described, entry) + "\n\n";
  for (const MemberRow* member : described.membersOf(entry))
    text += "- " + code(callOf(*member)) + ", " + std::string(kindOf(*member)) + ": " +
            narrow(member->help) + '\n';
  text += '\n' + paragraph(entry.notes) + parameterTable(described, entry) +
          resultText(described, entry);
  text += "**Errors:** " + (entry.errors.empty() ? "none of its own." : entry.errors) + "\n\n";
  if (entry.example.empty()) return text;
  return text + block("vbscript", entry.example) + block("text", entry.output);
}

std::string memberTable(const DescribedClass& described) {
  std::string text = "| | Member | |\n|---|---|---|\n";
  int slot = 0;
  for (const MemberRow& member : described.description.members()) {
    const auto& entries = described.piece.entries;
    const auto entry = std::ranges::find_if(entries, [&](const PieceEntry& candidate) {
      return std::ranges::find(candidate.names, narrow(member.name)) != candidate.names.end();
    });
    text += "| " + std::to_string(++slot) + " | [" + code(narrow(member.name)) + "](#" +
            anchorOf(titleOf(described, *entry)) + "), " + std::string(kindOf(member)) + " | " +
            narrow(member.help) + " |\n";
  }
  return text + '\n';
}

/// "Created as ...", or the properties that hand an object of the class out.
std::string wayTo(const ClassIdentity& identity) {
  if (!identity.programId.empty()) return "created as " + code(narrow(identity.programId));
  std::string ways;
  for (const CatalogueEntry& entry : catalogue())
    for (const MemberRow& member : entry.description.members())
      if (member.result.type == InterfaceType::Class && member.result.name == identity.name)
        ways += (ways.empty() ? "" : ", ") +
                code(narrow(entry.description.identity().name) + '.' + narrow(member.name));
  return ways.empty() ? "not reached by pages" : ways;
}

std::string contents(const Reference& reference) {
  std::string text = "| Class | | |\n|---|---|---|\n";
  for (const DescribedClass& described : reference.classes) {
    const ClassIdentity& identity = described.description.identity();
    const std::string name = narrow(identity.name);
    text += "| [" + code(name) + "](#" + anchorOf(name) + ") | " + narrow(identity.help) + " | " +
            wayTo(identity) + " |\n";
  }
  return text + "| [Enumerations](#enumerations) | | |\n\n";
}

std::string classText(const DescribedClass& described) {
  const ClassIdentity& identity = described.description.identity();
  std::string text = "## " + narrow(identity.name) + "\n\n" + narrow(identity.help) +
                     " Interface " + code(narrow(identity.interfaceName)) + ", class identifier " +
                     code(narrow(registryForm(identity.classId))) + "; " + wayTo(identity) +
                     ".\n\n" + paragraph(described.piece.opening.notes) + memberTable(described);
  if (!described.piece.opening.example.empty())
    text += "The examples begin with:\n\n" + block("vbscript", described.piece.opening.example);
  for (const PieceEntry& entry : described.piece.entries) text += entryText(described, entry);
  return text;
}

std::string enumerationsText(const Piece& piece) {
  std::string text = "## Enumerations\n\n" + paragraph(piece.opening.notes);
  for (const EnumerationDescription& enumeration : enumerations()) {
    const std::string name = narrow(enumeration.name);
    const auto entry = std::ranges::find_if(
        piece.entries, [&](const PieceEntry& candidate) { return candidate.names[0] == name; });
    text +=
        "### " + name + "\n\n" + paragraph(entry->notes) + "| Member | Value | |\n|---|---|---|\n";
    for (const EnumerationMember& member : enumeration.members)
      text += "| " + code(narrow(member.name)) + " | " + std::to_string(member.value) + " | " +
              cell(entry->meanings.at(narrow(member.name))) + " |\n";
    text += '\n';
  }
  return text;
}

}  // namespace

std::string referenceText(const Reference& reference) {
  std::string text =
      "<!-- Made from the classes' tables and docs/reference/ by tools/describe; a test compares. "
      "-->\n" +
      reference.introduction + '\n' + contents(reference);
  for (const DescribedClass& described : reference.classes) text += classText(described);
  text += enumerationsText(reference.enumerations);
  text.resize(text.size() - 1);
  return text;
}

}  // namespace quendal
