#include "page_parser.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <stdexcept>
#include <utility>

#include "base/text.h"
#include "base/utf8.h"

namespace quendal::host {
namespace {

constexpr std::size_t kDeepestInclude = 32;
constexpr std::size_t kMostFiles = 1000;
constexpr std::u16string_view kBlanks = u" \t\r\n";

bool startsWith(std::u16string_view text, std::u16string_view start) {
  return equalNoCase(text.substr(0, start.size()), start);
}

std::u16string_view trimmed(std::u16string_view text) {
  const auto first = text.find_first_not_of(kBlanks);
  if (first == std::u16string_view::npos) return text.substr(0, 0);
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

/// The value of `name = value` or `name="value"` among the attributes of a tag or directive.
std::optional<std::u16string> attribute(std::u16string_view text, std::u16string_view wanted) {
  while (!(text = trimmed(text)).empty()) {
    const std::size_t nameEnd = std::min(text.find_first_of(u"= \t\r\n"), text.size());
    const std::u16string_view name = text.substr(0, nameEnd);
    std::u16string_view rest = trimmed(text.substr(nameEnd));
    std::u16string_view value;
    if (!rest.empty() && rest.front() == u'=') {
      rest = trimmed(rest.substr(1));
      if (!rest.empty() && (rest.front() == u'"' || rest.front() == u'\'')) {
        const std::size_t end = std::min(rest.find(rest.front(), 1), rest.size());
        value = rest.substr(1, end - 1);
        rest = rest.substr(std::min(end + 1, rest.size()));
      } else {
        const std::size_t end = std::min(rest.find_first_of(kBlanks), rest.size());
        value = rest.substr(0, end);
        rest = rest.substr(end);
      }
    }
    if (equalNoCase(name, wanted)) return std::u16string(value);
    text = rest;
  }
  return std::nullopt;
}

Language languageOf(std::u16string_view name) {
  if (equalNoCase(name, u"VBScript")) return Language::VBScript;
  if (equalNoCase(name, u"JScript") || equalNoCase(name, u"JavaScript")) return Language::JScript;
  throw std::invalid_argument("no script language of this name is known");
}

/// The text of one file.
struct SourceText {
  std::u16string file;
  std::u16string text;

  /// Where a part of the text begins.
  [[nodiscard]] SourceLine place(std::u16string_view part) const {
    return {file, 1 + static_cast<int>(std::count(text.data(), part.data(), u'\n'))};
  }
};

class Parser {
 public:
  explicit Parser(const PageSources& sources) : sources_(sources) {}

  ParsedPage parse(const std::u16string& file) {
    place_ = {file, 1};
    try {
      parseFile(file);
    } catch (const PageError&) {
      throw;
    } catch (const std::exception& error) {
      throw PageError(place_, fromUtf8(error.what()));
    }
    const Language other = language_ == Language::VBScript ? Language::JScript : Language::VBScript;
    if (!foreign_.text.empty()) page_.scripts.push_back({other, foreign_.text, foreign_.lines});
    inline_.text += functions_.text;
    inline_.lines.insert(inline_.lines.end(), functions_.lines.begin(), functions_.lines.end());
    page_.scripts.push_back({language_, inline_.text, inline_.lines});
    return std::move(page_);
  }

 private:
  void parseFile(const std::u16string& file) {
    const bool isCycle = std::ranges::any_of(
        open_, [&](const std::u16string& outer) { return equalNoCase(outer, file); });
    if (isCycle) throw PageError(place_, u"the file includes itself: " + file);
    if (open_.size() == kDeepestInclude || ++files_ > kMostFiles)
      throw PageError(place_, u"there are too many includes");
    const std::string bytes = sources_.read(file);
    if (open_.empty()) readDirectiveOf(bytes);
    const SourceText source{file, decode(bytes)};
    open_.push_back(file);
    const std::u16string_view text = source.text;
    std::size_t literal = 0;  // where the text that is written as it is begins
    std::size_t position = 0;
    while ((position = text.find(u'<', position)) != text.npos) {
      if (const auto next = parseConstruct(source, literal, position))
        literal = position = *next;
      else
        ++position;
    }
    addBlock(source, text.substr(literal));
    open_.pop_back();
  }

  /// The page's language and code page, which is needed before its characters can be read.
  void readDirectiveOf(std::string_view bytes) {
    const std::size_t start = bytes.find("<%@");
    if (start == std::string_view::npos) return;
    const std::string_view directive = bytes.substr(start + 3, bytes.find("%>", start) - start - 3);
    const std::u16string text(directive.begin(), directive.end());
    if (const auto language = attribute(text, u"language")) language_ = languageOf(*language);
    if (const auto number = attribute(text, u"codepage")) {
      constexpr std::size_t kMostDigits = 5;
      const std::string digits = toUtf8(number->substr(0, kMostDigits + 1));
      const auto [end, error] =
          std::from_chars(digits.data(), digits.data() + digits.size(), page_.codePage);
      if (error != std::errc() || *end != '\0' || digits.size() > kMostDigits)
        throw std::invalid_argument("a code page is a number");
    }
  }

  [[nodiscard]] std::u16string decode(std::string_view bytes) const {
    if (bytes.starts_with("\xEF\xBB\xBF")) return fromUtf8(bytes.substr(3));
    return sources_.decode(bytes, page_.codePage);
  }

  /// Reads what begins with the "<" at a position, and the text that is waiting before it. Returns
  /// where the text goes on; nothing for a "<" that is only text.
  std::optional<std::size_t> parseConstruct(const SourceText& source, std::size_t literal,
                                            std::size_t position) {
    const std::u16string_view text = source.text;
    const std::u16string_view rest = text.substr(position);
    const auto writeWaiting = [&] { addBlock(source, text.substr(literal, position - literal)); };
    if (rest.starts_with(u"<%")) {
      const bool isDirective = rest.starts_with(u"<%@");
      const bool isExpression = rest.starts_with(u"<%=");
      const auto [body, next] =
          enclosed(source, position, position + (isDirective || isExpression ? 3 : 2), u"%>");
      if (isDirective && (open_.size() > 1 || std::exchange(directiveSeen_, true)))
        throw PageError(source.place(rest), u"a page has one directive, in its own file");
      writeWaiting();
      // Nothing may stand before "Option Explicit", not even a line end.
      if (isDirective) return std::min(text.find_first_not_of(kBlanks, next), text.size());
      if (isExpression)
        add(inline_, u"Response.Write(" + std::u16string(trimmed(body)) + u")",
            source.place(trimmed(body)));
      else
        add(inline_, body, source.place(rest));
      return next;
    }
    if (rest.starts_with(u"<!--") && startsWith(trimmed(rest.substr(4)), u"#include")) {
      const auto [body, next] = enclosed(source, position, position + 4, u"-->");
      writeWaiting();
      place_ = source.place(rest);
      include(trimmed(body).substr(8));
      return next;
    }
    if (startsWith(rest, u"<script")) {
      const std::size_t tagEnd = std::min(rest.find(u'>'), rest.size());
      const std::u16string_view attributes = rest.substr(7, tagEnd - 7);
      if (!equalNoCase(attribute(attributes, u"runat").value_or(u""), u"server")) return {};
      const auto [body, next] = enclosed(source, position, position + tagEnd + 1, u"</script>");
      writeWaiting();
      place_ = source.place(rest);
      const auto name = attribute(attributes, u"language");
      const Language language = name ? languageOf(*name) : language_;
      add(language == language_ ? functions_ : foreign_, body, source.place(body));
      return next;
    }
    return {};
  }

  /// What is between `start` and an end mark, in any case, which must come, and where the text goes
  /// on.
  static std::pair<std::u16string_view, std::size_t> enclosed(const SourceText& source,
                                                              std::size_t construct,
                                                              std::size_t start,
                                                              std::u16string_view end) {
    const std::u16string_view text = source.text;
    const std::u16string_view rest = text.substr(std::min(start, text.size()));
    const auto found =
        std::search(rest.begin(), rest.end(), end.begin(), end.end(),
                    [](char16_t a, char16_t b) { return asciiLower(a) == asciiLower(b); });
    if (found == rest.end())
      throw PageError(source.place(text.substr(construct)),
                      u"there is no " + std::u16string(end) + u" for this");
    const auto length = static_cast<std::size_t>(found - rest.begin());
    return {rest.substr(0, length), start + length + end.size()};
  }

  void include(std::u16string_view attributes) {
    const auto file = attribute(attributes, u"file");
    const auto path = attribute(attributes, u"virtual");
    if (!file && !path) throw PageError(place_, u"an include names a file or a virtual path");
    parseFile(sources_.locate(path ? *path : *file, path.has_value(), open_.back()));
  }

  void addBlock(const SourceText& source, std::u16string_view text) {
    if (text.empty()) return;
    add(inline_,
        u"Response.WriteBlock(" + decimalText(static_cast<std::int64_t>(page_.blocks.size())) +
            u")",
        source.place(text));
    page_.blocks.emplace_back(text);
  }

  /// Appends lines of code that begin at a place.
  static void add(PageScript& script, std::u16string_view code, SourceLine place) {
    for (;;) {
      const std::size_t end = std::min(code.find(u'\n'), code.size());
      std::u16string_view line = code.substr(0, end);
      if (line.ends_with(u'\r')) line.remove_suffix(1);
      script.text.append(line).append(u"\n");
      script.lines.push_back(place);
      if (end == code.size()) return;
      code.remove_prefix(end + 1);
      ++place.line;
    }
  }

  const PageSources& sources_;
  ParsedPage page_;
  SourceLine place_;  // of what is read, for what fails meanwhile
  Language language_ = Language::VBScript;
  bool directiveSeen_ = false;
  std::size_t files_ = 0;
  std::vector<std::u16string> open_;  // the files on the way to this one
  PageScript inline_;
  PageScript functions_;  // in the page's language
  PageScript foreign_;    // in the other one
};

}  // namespace

PageError::PageError(const SourceLine& place, std::u16string_view message)
    : std::runtime_error(toUtf8(place.file) + ", line " + std::to_string(place.line) + ": " +
                         toUtf8(message)) {}

ParsedPage parsePage(const std::u16string& file, const PageSources& sources) {
  return Parser(sources).parse(file);
}

}  // namespace quendal::host
