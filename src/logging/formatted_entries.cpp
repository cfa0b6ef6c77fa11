// Boxes, groups, aligned parameters and dumps.
#include <algorithm>
#include <limits>

#include "base/text.h"
#include "core/apartment.h"
#include "logging/fill.h"
#include "logging/logging.h"

namespace quendal {
namespace {

constexpr std::int16_t kGroupStep = 10;
constexpr std::int32_t kBoxWidth = 70;
constexpr std::u16string_view kErrorMarker = u"*** ERROR ***";

std::int16_t int16OrOverflow(std::int64_t value) {
  using Limits = std::numeric_limits<std::int16_t>;
  if (value < Limits::min() || value > Limits::max())
    throw AutomationError(error_number::kOverflow);
  return static_cast<std::int16_t>(value);
}

/// Half of a whole number, halves to even.
constexpr std::int64_t halfToEven(std::int64_t twice) noexcept {
  const std::int64_t down = (twice - (twice % 2 != 0 && twice < 0 ? 1 : 0)) / 2;  // the floor
  return twice % 2 != 0 && down % 2 != 0 ? down + 1 : down;
}

/// The line with the text: centred up to 68 characters, wider than the box beyond.
std::u16string boxedLine(std::u16string_view text) {
  const std::int16_t margin =
      int16OrOverflow(halfToEven(kBoxWidth - 2 - static_cast<std::int64_t>(text.size())));
  std::u16string line = u"*";
  line.append(static_cast<std::size_t>(margin < 0 ? -margin : margin), u' ').append(text);
  return padRight(line, u" ", kBoxWidth - 1) + u"*";
}

/// Moves each marker that stands behind a whole indentation in front of it. Linear also for an
/// indentation and a text of blanks alone.
void moveMarkersForward(std::u16string& line, std::size_t indentation) {
  std::size_t done = 0;
  for (std::size_t at = 0; (at = line.find(kErrorMarker, at)) != std::u16string::npos;) {
    std::size_t blanks = 0;
    while (blanks < indentation && at - blanks > done && line[at - blanks - 1] == u' ') ++blanks;
    at += kErrorMarker.size();
    if (blanks < indentation) continue;
    const auto end = line.begin() + static_cast<std::ptrdiff_t>(at);
    const auto marker = end - static_cast<std::ptrdiff_t>(kErrorMarker.size());
    std::rotate(marker - static_cast<std::ptrdiff_t>(indentation), marker, end);
    done = at;
  }
}

}  // namespace

std::u16string Logging::writeBox(Ref<std::int16_t> level, DefaultedRef& text) {
  beginBox(level);
  return box(joinedTextOf(text.value()));
}

void Logging::beginBox(std::int16_t level) {
  clearError();
  // A box that is filtered out has no file to write to, and says so; deliberate.
  if (!passes(level)) throw AutomationError(error_number::kObjectNotSet);
  file_.ensure();
}

std::u16string Logging::box(std::u16string_view text) {
  const std::u16string middle = boxedLine(text);
  LogFile::Opened opened = file_.open();
  const std::u16string border(middle.size(), u'*');
  std::u16string result = linePrefix();
  for (const std::u16string_view line : {std::u16string_view(border), std::u16string_view(middle),
                                         std::u16string_view(border), std::u16string_view()})
    result.append(kLineEnd).append(linePrefix()).append(line);
  LogFile::append(std::move(opened), result);
  return result;
}

std::u16string Logging::startGroup(Ref<std::int16_t> level) { return openGroup(level); }

std::u16string Logging::endGroup(Ref<std::int16_t> level) { return closeGroup(level); }

std::u16string Logging::openGroup(std::int16_t level) {
  clearError();
  if (!passes(level)) return {};
  std::int16_t& depth = apartment().groupDepth;
  depth = int16OrOverflow(depth - kGroupStep);
  return write(level, padLeft(u" ( START", u"=", depth));
}

std::u16string Logging::closeGroup(std::int16_t level) {
  clearError();
  if (!passes(level)) return {};
  std::int16_t& depth = apartment().groupDepth;
  std::u16string result = write(level, padLeft(u" END )", u"-", depth));
  depth = int16OrOverflow(depth + kGroupStep);
  return result;
}

Variant Logging::writeParam(Ref<std::int16_t> level, VariantRef& name, const VARIANT& value,
                            Ref<std::int16_t> distance, Ref<std::int16_t> indent) {
  return parameter(level, name.value(), value, distance, indent);
}

std::u16string Logging::parameter(std::int16_t level, const VARIANT& name, const VARIANT& value,
                                  std::int16_t distance, std::int16_t indent) {
  clearError();
  if (indent < 0) throw AutomationError(error_number::kInvalidCall);
  if (!passes(level)) return {};
  const std::u16string blanks(static_cast<std::size_t>(indent), u' ');
  std::u16string line = blanks + padRight(joinedTextOf(name) + u" ", u".", distance) + u" ";
  const std::u16string valueText = joinedTextOf(value);
  if (valueText.find(kLineEnd) == std::u16string::npos) {
    line += valueText;
  } else {  // further lines stand under the first
    line += replaceAll(valueText, kLineEnd,
                       std::u16string(kLineEnd) + std::u16string(line.size(), u' '));
  }
  moveMarkersForward(line, blanks.size());
  return write(level, line);
}

std::u16string Logging::dump(Ref<std::int16_t> level, DefaultedRef& multiline, TextRef title) {
  clearError();
  const std::u16string prefix = linePrefix();  // also when the entry is filtered out
  std::u16string body = u"\r\n\r\n" + joinedTextOf(multiline.value()) + u"\r\n";
  if (!passes(level)) return finished({});
  body = replaceAll(body, kLineEnd, std::u16string(kLineEnd) + prefix + u"\t");
  // A client of the function table gives the default by a null pointer.
  std::u16string result = write(level, std::u16string(title.isGiven() ? title.view() : kDumpTitle));
  result += openGroup(level);
  result += write(level, body);
  result += closeGroup(level);
  result += write(level, u"");
  return finished(std::move(result));
}

}  // namespace quendal
