// Boxes, groups, aligned parameters and dumps.
#include <algorithm>
#include <cstdint>

#include "base/text.h"
#include "core/apartment.h"
#include "logging/logging.h"

namespace quendal {
namespace {

constexpr std::int32_t kGroupStep = 10;
constexpr std::int32_t kBoxWidth = 70;
constexpr std::u16string_view kErrorMarker = u"*** ERROR ***";

/// As many fill characters as a length differs from the width, so that a text longer than its width
/// is filled as well; deliberate.
std::u16string filling(char16_t fill, std::size_t length, std::int32_t width) {
  const std::int64_t difference = width - static_cast<std::int64_t>(length);
  return std::u16string(static_cast<std::size_t>(difference < 0 ? -difference : difference), fill);
}

/// The line with the text: centred up to 68 characters, wider than the box beyond. Raises 6 for a
/// margin that is no 16-bit number.
std::u16string boxedLine(std::u16string_view text) {
  const double blanks = kBoxWidth - 2.0 - static_cast<double>(text.size());
  const std::int16_t margin = int16Of(Variant(blanks / 2));  // halves to even
  std::u16string line = u'*' + filling(u' ', 0, margin);
  line += text;
  return line + filling(u' ', line.size(), kBoxWidth - 1) + u'*';
}

/// Moves each marker that stands behind a whole indentation in front of it. Linear also for an
/// indentation and a text of blanks alone.
void moveMarkersForward(std::u16string& line, std::size_t indentation) {
  std::size_t done = 0;
  for (std::size_t at = 0; (at = line.find(kErrorMarker, at)) != std::u16string::npos;) {
    std::size_t blanks = 0;
    while (blanks < indentation && at - blanks > done && line[at - blanks - 1] == u' ') ++blanks;
    if (blanks < indentation) {
      ++at;  // the next one may begin within this one
      continue;
    }
    const auto marker = line.begin() + static_cast<std::ptrdiff_t>(at);
    const auto end = marker + static_cast<std::ptrdiff_t>(kErrorMarker.size());
    std::rotate(marker - static_cast<std::ptrdiff_t>(indentation), marker, end);
    done = at += kErrorMarker.size();
  }
}

}  // namespace

std::u16string Logging::writeBox(Ref<std::int16_t> level, DefaultedRef& text) {
  clearError();
  // A box that is filtered out has no file to write to, and says so; deliberate.
  if (!passes(level)) throw AutomationError(error_number::kObjectNotSet);
  file_.ensure();
  const std::u16string middle = boxedLine(joinedTextOf(text.value()));
  const std::u16string border(middle.size(), u'*');
  LogFile::Opened opened = file_.open();
  std::u16string result = linePrefix();
  for (const std::u16string& line : {border, middle, border, std::u16string()})
    result.append(kLineEnd).append(linePrefix()).append(line);
  LogFile::append(std::move(opened), result);
  return result;
}

std::u16string Logging::startGroup(Ref<std::int16_t> level) {
  constexpr std::u16string_view kStart = u" ( START";
  clearError();
  if (!passes(level)) return {};
  std::int16_t& depth = apartment().groupDepth;
  depth = int16Of(Variant(depth - kGroupStep));  // or 6
  return write(level, filling(u'=', kStart.size(), depth).append(kStart));
}

std::u16string Logging::endGroup(Ref<std::int16_t> level) {
  constexpr std::u16string_view kEnd = u" END )";
  clearError();
  if (!passes(level)) return {};
  std::int16_t& depth = apartment().groupDepth;
  std::u16string result = write(level, filling(u'-', kEnd.size(), depth).append(kEnd));
  depth = int16Of(Variant(depth + kGroupStep));  // or 6
  return result;
}

Variant Logging::writeParam(Ref<std::int16_t> level, const VariantRef& name, const VARIANT& value,
                            Ref<std::int16_t> distance, Ref<std::int16_t> indent) {
  clearError();
  if (indent < 0) throw AutomationError(error_number::kInvalidCall);
  if (!passes(level)) return u"";
  const std::u16string blanks(static_cast<std::size_t>(indent), u' ');
  std::u16string line = blanks + joinedTextOf(name.value()) + u' ';
  line += filling(u'.', line.size() - blanks.size(), distance) + u' ';
  // Further lines stand under the first.
  line +=
      replaceAll(joinedTextOf(value), kLineEnd, std::u16string(kLineEnd).append(line.size(), u' '));
  moveMarkersForward(line, blanks.size());
  return write(level, line);
}

std::u16string Logging::writeRow(const Variant& name, const Variant& value, std::int16_t indent) {
  constexpr std::int16_t kDistance = 35;
  return textOf(writeParam(kLow, VariantRef(name), value, kDistance, indent));
}

std::u16string Logging::dump(Ref<std::int16_t> level, DefaultedRef& multiline, TextRef title) {
  clearError();
  const std::u16string prefix = linePrefix();  // also when the entry is filtered out
  const std::u16string body = u"\r\n\r\n" + joinedTextOf(multiline.value()) + u"\r\n";
  if (!passes(level)) {
    clearError();
    return {};
  }
  // A client of the function table gives the default by a null pointer. The page may change its
  // variable while the entry is written.
  const std::u16string ownTitle(title.isGiven() ? title.view() : kDumpTitle);
  std::u16string result = write(level, ownTitle);
  result += startGroup(level);
  result += write(level, replaceAll(body, kLineEnd, std::u16string(kLineEnd) + prefix + u'\t'));
  result += endGroup(level);
  result += write(level, u"");
  return result;
}

}  // namespace quendal
