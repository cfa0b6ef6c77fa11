#include "base/date_pattern.h"

#include <array>
#include <optional>

#include "base/date.h"

namespace quendal {
namespace {

constexpr std::uint32_t kTimeSeparatorItem = 0x1E;
constexpr std::uint32_t kFirstShortMonthItem = 0x44;

void appendNumber(std::u16string& out, unsigned number, int digits) {
  std::array<char16_t, 4> text{};
  for (int i = digits; i > 0; number /= 10) {
    text[static_cast<std::size_t>(--i)] = static_cast<char16_t>(u'0' + number % 10);
  }
  out.append(text.data(), static_cast<std::size_t>(digits));
}

// A locale text that is read when it is first needed.
class LateText {
 public:
  LateText(LocaleItemReader locale, std::uint32_t item) noexcept : locale_(locale), item_(item) {}
  void appendTo(std::u16string& out) {
    if (!length_) length_ = locale_(item_, text_);
    out.append(text_.data(), *length_);
  }

 private:
  LocaleItemReader locale_;
  std::uint32_t item_;
  std::array<char16_t, 100> text_;
  std::optional<std::size_t> length_;
};

}  // namespace

std::u16string formatDatePattern(double date, std::u16string_view pattern,
                                 LocaleItemReader locale) {
  const std::optional<Moment> moment = momentOf(date);
  if (!moment) return {};
  LateText month(locale, kFirstShortMonthItem + moment->month - 1);
  LateText separator(locale, kTimeSeparatorItem);

  std::u16string out;
  out.reserve(pattern.size() + 8);
  const auto take = [&pattern](std::u16string_view token) {
    if (!pattern.starts_with(token)) return false;
    pattern.remove_prefix(token.size());
    return true;
  };
  while (!pattern.empty()) {
    if (take(u"dd")) {
      appendNumber(out, moment->day, 2);
    } else if (take(u"MMM")) {
      month.appendTo(out);
    } else if (take(u"yyyy")) {
      appendNumber(out, static_cast<unsigned>(moment->year), 4);
    } else if (take(u"HH")) {
      appendNumber(out, moment->hour, 2);
    } else if (take(u"nn")) {
      appendNumber(out, moment->minute, 2);
    } else if (take(u"ss")) {
      appendNumber(out, moment->second, 2);
    } else if (take(u":")) {
      separator.appendTo(out);
    } else {
      out += pattern.front();
      pattern.remove_prefix(1);
    }
  }
  return out;
}

}  // namespace quendal
