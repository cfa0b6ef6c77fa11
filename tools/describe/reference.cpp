#include "describe/reference.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <fstream>
#include <set>
#include <sstream>
#include <string_view>
#include <vector>

#include "base/text.h"
#include "component/catalogue.h"
#include "core/enumerations.h"
#include "core/guid.h"
#include "describe/piece.h"

namespace quendal {
namespace {

/// Everything in the tables is ASCII.
std::string narrow(std::u16string_view text) { return {text.begin(), text.end()}; }
std::u16string widen(std::string_view text) { return {text.begin(), text.end()}; }

std::string code(const std::string& text) { return '`' + text + '`'; }
std::string code(std::u16string_view text) { return code(narrow(text)); }

std::string block(const std::string& language, const std::string& text) {
  return "```" + language + '\n' + text + "\n```\n\n";
}

/// Adds what is not there yet to a list with separators.
void addTo(std::string& list, const std::string& separator, const std::string& item) {
  if (list.find(item) == std::string::npos) list += (list.empty() ? "" : separator) + item;
}

/// A type as the users of scripts call it.
std::string typeName(const TypeReference& type) {
  static constexpr std::array kNames = {
      "none",    "Integer", "Long",     "Boolean", "String",
      "Variant", "Object",  "Object, ", "Long, ",  "Variants, any number"};
  const std::string name = kNames.at(static_cast<std::size_t>(type.type));
  return type.name.empty() ? name : name + code(type.name);
}

bool isList(const ParameterRow& parameter) {
  return parameter.type.type == InterfaceType::VariantList;
}

/// What an omitted parameter becomes.
std::string defaultText(const ParameterRow& parameter) {
  if (isList(parameter)) return "none";
  if (!parameter.optional) return "required";
  const bool isFlag = parameter.type.type == InterfaceType::Boolean;
  if (const auto* number = std::get_if<std::int32_t>(&parameter.defaultValue))
    return code(isFlag ? *number != 0 ? "True" : "False" : std::to_string(*number));
  if (const auto* text = std::get_if<std::u16string_view>(&parameter.defaultValue))
    return code('"' + narrow(*text) + '"');
  if (std::holds_alternative<EmptyText>(parameter.defaultValue)) return "`\"\"`";
  return isFlag ? "`False`" : "`0`";
}

/// A member as it is called: `Slice(Arr, bRemove, iStart, [iEnd])`.
std::string callOf(const MemberRow& member) {
  std::string list;
  for (const ParameterRow& parameter : member.parameters()) {
    const std::string name = narrow(parameter.name) + (isList(parameter) ? ", ..." : "");
    list += list.empty() ? "" : ", ";
    list += parameter.optional || isList(parameter) ? '[' + name + ']' : name;
  }
  const std::string name = narrow(member.name);
  if (member.kind == MemberKind::Put) return name + " = " + list;
  return list.empty() && member.kind == MemberKind::Get ? name : name + '(' + list + ')';
}

std::string kindOf(const MemberRow& member) {
  static constexpr std::array kKinds = {"method", "property, read", "property, set"};
  return kKinds.at(static_cast<std::size_t>(member.kind));
}

/// A text as a sentence on one line, for the cell of a table.
std::string cell(std::string text) {
  std::ranges::replace(text, '\n', ' ');
  text[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(text[0])));
  return text;
}

/// "Created as ...", or the properties that hand an object of the class out.
std::string wayTo(const ClassIdentity& identity) {
  if (!identity.programId.empty()) return "created as " + code(identity.programId);
  std::string ways;
  for (const CatalogueEntry& entry : catalogue())
    for (const MemberRow& member : entry.description.members())
      if (member.result.type == InterfaceType::Class && member.result.name == identity.name)
        addTo(ways, ", ",
              code(narrow(entry.description.identity().name) + '.' + narrow(member.name)));
  return ways.empty() ? "not reached by pages" : ways;
}

/// The anchor that a heading of this text gets.
std::string anchorOf(const std::string& title) {
  std::string anchor;
  for (const char c : title) {
    if (c == ' ') anchor += '-';
    if (isLetter(c) || isDigit(c) || c == '_') anchor += asciiLower(c);
  }
  return anchor;
}

/// A class with the words about it.
class ClassText {
 public:
  ClassText(const ClassDescription& description, const std::filesystem::path& pieces)
      : class_(description),
        name_(narrow(description.identity().name)),
        piece_(readPiece(pieces / (name_ + ".md"))) {
    std::set<std::string> members, headings;
    for (const MemberRow& member : class_.members()) members.insert(narrow(member.name));
    for (const Entry& entry : piece_.entries)
      for (const std::string& name : entry.names) {
        if (!members.contains(name)) piece_.fail(name, "there is nothing of this name");
        if (!headings.insert(name).second) piece_.fail(name, "has two entries");
      }
  }

  [[nodiscard]] std::string text() const {
    const ClassIdentity& identity = class_.identity();
    std::string text = "## " + name_ + "\n\n" + narrow(identity.help) + " Interface " +
                       code(identity.interfaceName) + ", class identifier " +
                       code(registryForm(identity.classId)) + "; " + wayTo(identity) + ".\n\n";
    if (!piece_.opening.notes.empty()) text += piece_.opening.notes + "\n\n";
    text += "| | Member | |\n|---|---|---|\n";
    int slot = 0;
    for (const MemberRow& member : class_.members())
      text += "| " + std::to_string(++slot) + " | [" + code(member.name) + "](#" +
              anchorOf(titleOf(piece_.entryOf(narrow(member.name)))) + "), " + kindOf(member) +
              " | " + narrow(member.help) + " |\n";
    text += '\n';
    if (!piece_.opening.example.empty())
      text += "The examples begin with:\n\n" + block("vbscript", piece_.opening.example);
    for (const Entry& entry : piece_.entries) text += entryText(entry);
    return text;
  }

  void writeExamples(const std::filesystem::path& folder) const {
    if (piece_.opening.example.empty()) return;
    const std::string name = "reference_" + name_ + ".vbs";
    std::ofstream page(folder / name), expected(folder / (name + ".expected"));
    page << piece_.opening.example << '\n';
    int number = 0;
    for (const Entry& entry : piece_.entries) {
      std::string heading = "==";
      for (const std::string& member : entry.names) heading += ' ' + member;
      // In a procedure of its own, so that examples share nothing but the preamble.
      const std::string procedure = "Example" + std::to_string(++number);
      page << "\nSub " << procedure << '\n'
           << entry.example << "\nEnd Sub\nWScript.Echo \"" << heading << "\"\n"
           << procedure << '\n';
      expected << heading << '\n' << entry.output << '\n';
    }
    if (!page.flush() || !expected.flush()) piece_.fail("examples", "cannot be written");
  }

 private:
  /// "Class.A, B", or "Class.A to Z" for many.
  [[nodiscard]] std::string titleOf(const Entry& entry) const {
    constexpr std::size_t kMaxNames = 4;
    if (entry.names.size() > kMaxNames)
      return name_ + '.' + entry.names.front() + " to " + entry.names.back();
    std::string list;
    for (const std::string& name : entry.names) list += (list.empty() ? "" : ", ") + name;
    return name_ + '.' + list;
  }

  [[nodiscard]] const std::string& meaningOf(const std::string& name, const Entry& entry) const {
    for (const Entry* words : {&entry, &piece_.opening})
      if (const auto found = words->meanings.find(name); found != words->meanings.end())
        return found->second;
    piece_.fail(entry.names[0], "says nothing of its parameter " + name);
  }

  [[nodiscard]] std::string entryText(const Entry& entry) const {
    std::string calls, rows, results;
    std::set<std::string> parameters;  // those of an entry's members are the same
    for (const MemberRow& member : class_.members()) {
      if (std::ranges::count(entry.names, narrow(member.name)) == 0) continue;
      calls +=
          "- " + code(callOf(member)) + ", " + kindOf(member) + ": " + narrow(member.help) + '\n';
      if (member.kind != MemberKind::Put) addTo(results, " or ", typeName(member.result));
      for (const ParameterRow& parameter : member.parameters()) {
        const std::string name = narrow(parameter.name);
        if (!parameters.insert(name).second) continue;
        rows += "| " + code(name) + " | " + typeName(parameter.type) + " | " +
                (parameter.byReference ? "in, out" : "in") + " | " + defaultText(parameter) +
                " | " + cell(meaningOf(name, entry)) + " |\n";
      }
    }
    for (const auto& [name, meaning] : entry.meanings)
      if (!parameters.contains(name)) piece_.fail(entry.names[0], "has no parameter " + name);

    std::string text = "### " + titleOf(entry) + "\n\n" + calls + '\n';
    if (!entry.notes.empty()) text += entry.notes + "\n\n";
    if (!rows.empty())
      text += "| Parameter | Type | Direction | Default | |\n|---|---|---|---|---|\n" + rows + '\n';
    text += "**Result:** " + results + (entry.result.empty() ? "." : ". " + entry.result) +
            "\n\n**Errors:** " + (entry.errors.empty() ? "none of its own." : entry.errors) +
            "\n\n" + exampleText(entry);
    return text;
  }

  [[nodiscard]] std::string exampleText(const Entry& entry) const {
    const std::string& about = entry.names[0];
    if (piece_.opening.example.empty()) return {};
    if (entry.example.empty()) piece_.fail(about, "has no example");
    if (entry.output.empty()) piece_.fail(about, "does not say what the example prints");
    for (const std::string& name : entry.names)
      if (!containsNoCase(widen(entry.example), widen("." + name)))
        piece_.fail(name, "is not used in its example");
    return block("vbscript", entry.example) + block("text", entry.output);
  }

  const ClassDescription& class_;
  std::string name_;
  Piece piece_;
};

std::string enumerationsText(const Piece& piece) {
  std::string text = "## Enumerations\n\n" + piece.opening.notes + "\n\n";
  for (const EnumerationDescription& enumeration : enumerations()) {
    const std::string name = narrow(enumeration.name);
    const Entry& entry = piece.entryOf(name);
    if (entry.meanings.size() > enumeration.members.size()) piece.fail(name, "has other members");
    text += "### " + name + "\n\n" + entry.notes + "\n\n| Member | Value | |\n|---|---|---|\n";
    for (const EnumerationMember& member : enumeration.members) {
      const auto meaning = entry.meanings.find(narrow(member.name));
      if (meaning == entry.meanings.end())
        piece.fail(name, "says nothing of " + narrow(member.name));
      text += "| " + code(member.name) + " | " + std::to_string(member.value) + " | " +
              cell(meaning->second) + " |\n";
    }
    text += '\n';
  }
  if (piece.entries.size() > enumerations().size()) piece.fail("entries", "there are too many");
  return text;
}

}  // namespace

std::string referenceText(const std::filesystem::path& pieces) {
  std::ostringstream introduction;
  introduction << std::ifstream(pieces / "Introduction.md").rdbuf();
  std::string contents = "| Class | | |\n|---|---|---|\n", classes;
  for (const CatalogueEntry& entry : catalogue()) {
    const ClassIdentity& identity = entry.description.identity();
    contents += "| [" + code(identity.name) + "](#" + anchorOf(narrow(identity.name)) + ") | " +
                narrow(identity.help) + " | " + wayTo(identity) + " |\n";
    classes += ClassText(entry.description, pieces).text();
  }
  std::string text =
      "<!-- Made from the classes' tables and docs/reference/ by tools/describe; a test compares. "
      "-->\n" +
      introduction.str() + '\n' + contents + "| [Enumerations](#enumerations) | | |\n\n" + classes +
      enumerationsText(readPiece(pieces / "Enumerations.md"));
  text.pop_back();
  return text;
}

void writeExamples(const std::filesystem::path& pieces, const std::filesystem::path& folder) {
  std::filesystem::create_directories(folder);
  for (const CatalogueEntry& entry : catalogue())
    ClassText(entry.description, pieces).writeExamples(folder);
}

}  // namespace quendal
