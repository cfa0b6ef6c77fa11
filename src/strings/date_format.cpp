#include "strings/date_format.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace quendal::strings {
namespace {

constexpr std::array<std::u16string_view, 12> kMonths{
    u"January", u"February", u"March",     u"April",   u"May",      u"June",
    u"July",    u"August",   u"September", u"October", u"November", u"December"};
constexpr std::array<std::u16string_view, 7> kDays{u"Sunday",   u"Monday", u"Tuesday", u"Wednesday",
                                                   u"Thursday", u"Friday", u"Saturday"};
constexpr std::size_t kShortName = 3;

enum class Part {
  UpperDayName,
  UpperMonthName,
  Half,
  DayName,
  MonthName,
  Year,
  UpperShortDay,
  UpperShortMonth,
  Hour24Two,
  Hour12Two,
  Ordinal,
  UpperOrdinal,
  ShortDay,
  ShortMonth,
  Hour24,
  Hour12,
  HourTwo,
  DayLetter,
  SecondTwo,
  MinuteTwo,
  YearTwo,
  MonthTwo,
  DayTwo,
  Weekday,
  Second,
  Minute,
  Month,
  Day,
};

struct Token {
  std::u16string_view name;  // what follows the "#"
  Part part;
};

// In the order in which they are replaced: longer ones before the shorter that they contain.
constexpr auto kTokens = std::to_array<Token>({
    {u"UWWWW", Part::UpperDayName},
    {u"UMMMM", Part::UpperMonthName},
    {u"AMPM", Part::Half},
    {u"WWWW", Part::DayName},
    {u"MMMM", Part::MonthName},
    {u"YYYY", Part::Year},
    {u"UWWW", Part::UpperShortDay},
    {u"UMMM", Part::UpperShortMonth},
    {u"HH24", Part::Hour24Two},
    {u"HH12", Part::Hour12Two},
    {u"LNTH", Part::Ordinal},
    {u"UNTH", Part::UpperOrdinal},
    {u"NTH", Part::Ordinal},
    {u"WWW", Part::ShortDay},
    {u"MMM", Part::ShortMonth},
    {u"H24", Part::Hour24},
    {u"H12", Part::Hour12},
    {u"HH", Part::HourTwo},
    {u"WW", Part::DayLetter},
    {u"SS", Part::SecondTwo},
    {u"NN", Part::MinuteTwo},
    {u"YY", Part::YearTwo},
    {u"MM", Part::MonthTwo},
    {u"DD", Part::DayTwo},
    {u"W", Part::Weekday},
    {u"S", Part::Second},
    {u"N", Part::Minute},
    {u"H", Part::Hour24},
    {u"M", Part::Month},
    {u"D", Part::Day},
});
// The tokens that begin with each letter, as one bit for each rank.
using Ranks = std::uint32_t;
static_assert(kTokens.size() < 32);
constexpr Ranks kAllRanks = (Ranks{1} << kTokens.size()) - 1;
constexpr auto kRanksOfLetter = [] {
  std::array<Ranks, 26> ranks{};
  for (std::size_t rank = 0; rank < kTokens.size(); ++rank) {
    ranks[static_cast<std::size_t>(kTokens[rank].name[0] - u'A')] |= Ranks{1} << rank;
  }
  return ranks;
}();
constexpr Ranks ranksOf(std::u16string_view text) noexcept {
  if (text.empty()) return kAllRanks;  // what follows decides
  return text[0] >= u'A' && text[0] <= u'Z' ? kRanksOfLetter[text[0] - u'A'] : 0;
}

constexpr std::size_t kLongestName = 5;
constexpr std::size_t kNever = kTokens.size();  // the rank of a "#" that begins no token

// A text of a few characters, held in place.
class ShortText {
 public:
  ShortText() noexcept = default;
  ShortText(std::u16string_view text) noexcept { append(text); }

  /// What does not fit is left out.
  ShortText& append(std::u16string_view text) noexcept {
    const std::size_t count = std::min(text.size(), characters_.size() - size_);
    std::copy_n(text.begin(), count, characters_.begin() + static_cast<std::ptrdiff_t>(size_));
    size_ += count;
    return *this;
  }
  ShortText& upper() noexcept {
    for (char16_t& c : characters_) {
      if (c >= u'a' && c <= u'z') c = static_cast<char16_t>(c - (u'a' - u'A'));
    }
    return *this;
  }
  [[nodiscard]] std::u16string_view view() const noexcept { return {characters_.data(), size_}; }

 private:
  std::array<char16_t, 12> characters_{};
  std::size_t size_ = 0;
};

// A number in decimal, with zeros before it up to `digits`.
ShortText decimal(unsigned number, int digits = 1) noexcept {
  std::array<char16_t, 10> text;
  auto at = text.end();
  for (; number != 0 || digits > 0; number /= 10, --digits) {
    *--at = static_cast<char16_t>(u'0' + number % 10);
  }
  return std::u16string_view(at, text.end());
}

// The texts that stand for the tokens.
class Replacements {
 public:
  Replacements(const Moment& moment, bool hasHalf) noexcept
      : moment_(moment),
        day_(kDays[moment.weekday - 1]),
        month_(kMonths[moment.month - 1]),
        hour12_(moment.hour > 12 ? moment.hour - 12 : moment.hour),
        hasHalf_(hasHalf) {
    // Midnight is 12 only beside AM or PM; deliberate.
    if (hour12_ == 0 && hasHalf) hour12_ = 12;
  }

  [[nodiscard]] ShortText of(Part part) const noexcept {
    switch (part) {
      case Part::UpperDayName:
        return ShortText(day_).upper();
      case Part::UpperMonthName:
        return ShortText(month_).upper();
      case Part::Half:
        return std::u16string_view(moment_.hour >= 12 ? u"PM" : u"AM");
      case Part::DayName:
        return day_;
      case Part::MonthName:
        return month_;
      case Part::Year:
        return decimal(static_cast<unsigned>(moment_.year));
      case Part::UpperShortDay:
        return ShortText(day_.substr(0, kShortName)).upper();
      case Part::UpperShortMonth:
        return ShortText(month_.substr(0, kShortName)).upper();
      case Part::Hour24Two:
        return decimal(moment_.hour, 2);
      case Part::Hour12Two:
        return decimal(hour12_, 2);
      case Part::Ordinal:
        return ordinal();
      case Part::UpperOrdinal:
        return ordinal().upper();
      case Part::ShortDay:
        return day_.substr(0, kShortName);
      case Part::ShortMonth:
        return month_.substr(0, kShortName);
      case Part::Hour24:
        return decimal(moment_.hour);
      case Part::Hour12:
        return decimal(hour12_);
      case Part::HourTwo:
        return decimal(hasHalf_ ? hour12_ : moment_.hour, 2);
      case Part::DayLetter:
        return day_.substr(0, 1);
      case Part::SecondTwo:
        return decimal(moment_.second, 2);
      case Part::MinuteTwo:
        return decimal(moment_.minute, 2);
      case Part::YearTwo:
        return decimal(static_cast<unsigned>(moment_.year) % 100, 2);
      case Part::MonthTwo:
        return decimal(moment_.month, 2);
      case Part::DayTwo:
        return decimal(moment_.day, 2);
      case Part::Weekday:
        return decimal(moment_.weekday);
      case Part::Second:
        return decimal(moment_.second);
      case Part::Minute:
        return decimal(moment_.minute);
      case Part::Month:
        return decimal(moment_.month);
      case Part::Day:
        return decimal(moment_.day);
    }
    return {};
  }

 private:
  // By the last digit alone, so that there are an 11st, a 12nd and a 13rd; deliberate.
  [[nodiscard]] ShortText ordinal() const noexcept {
    constexpr std::array<std::u16string_view, 4> kSuffixes{u"th", u"st", u"nd", u"rd"};
    const unsigned last = moment_.day % 10;
    return decimal(moment_.day).append(kSuffixes[last < kSuffixes.size() ? last : 0]);
  }

  const Moment& moment_;
  std::u16string_view day_;
  std::u16string_view month_;
  unsigned hour12_;
  bool hasHalf_;
};

// Joins what the tokens leave behind. A token that reached beyond its own "#" has used up the first
// characters of what follows.
template <class Text>
class Joiner {
 public:
  explicit Joiner(Text& text) noexcept : text_(text) {}

  void take(std::u16string_view piece) {
    const std::size_t used = std::min(used_, piece.size());
    used_ -= used;
    text_.append(piece.substr(used));
  }
  void replace(const Token& token, const ShortText& by) {
    take(by.view());
    used_ += token.name.size();
  }

 private:
  Text& text_;
  std::size_t used_ = 0;
};

// Finds which token each "#" begins, from the last to the first, and writes the result from the
// first to the last. A "#" sees what follows it as it stands when its token's turn comes: its own
// text up to the next "#", and beyond that only if the next one has been replaced before.
class Formatter {
 public:
  Formatter(const Moment& moment, std::u16string_view format)
      : replacements_(moment, format.find(u"#AMPM") != std::u16string_view::npos) {
    marks_.reserve(static_cast<std::size_t>(std::count(format.begin(), format.end(), u'#')));
    std::size_t hash = format.find(u'#');
    head_ = format.substr(0, hash);
    while (hash != std::u16string_view::npos) {
      const std::size_t next = format.find(u'#', hash + 1);
      marks_.push_back({format.substr(hash + 1, next - hash - 1), kNever});
      hash = next;
    }
    size_ = format.size();
    for (std::size_t i = marks_.size(); i-- > 0;) marks_[i].rank = rankOf(i);
  }

  [[nodiscard]] std::u16string result() const {
    std::u16string out;
    out.reserve(size_ + 6 * marks_.size());
    out += head_;
    Joiner joiner(out);
    for (const Mark& mark : marks_) {
      if (mark.rank == kNever) {
        joiner.take(u"#");
      } else {
        const Token& token = kTokens[mark.rank];
        joiner.replace(token, replacements_.of(token.part));
      }
      joiner.take(mark.own);
    }
    return out;
  }

 private:
  struct Mark {
    std::u16string_view own;  // from the "#" to the next one
    std::size_t rank;         // of the token that it begins
  };

  [[nodiscard]] std::size_t rankOf(std::size_t i) const noexcept {
    const std::u16string_view own = marks_[i].own;
    for (Ranks ranks = ranksOf(own); ranks != 0; ranks &= ranks - 1) {
      const auto rank = static_cast<std::size_t>(std::countr_zero(ranks));
      const std::u16string_view name = kTokens[rank].name;
      if (own.size() >= name.size() ? own.starts_with(name)
                                    : name.starts_with(own) && isReplaced(i + 1, rank) &&
                                          following(i, rank).view().starts_with(name)) {
        return rank;
      }
    }
    return kNever;
  }

  // Whether the "#" is gone when the token of that rank has its turn.
  [[nodiscard]] bool isReplaced(std::size_t i, std::size_t rank) const noexcept {
    return i < marks_.size() && marks_[i].rank < rank;
  }

  // The first characters after a "#", as they stand when the token of that rank has its turn.
  [[nodiscard]] ShortText following(std::size_t i, std::size_t rank) const noexcept {
    ShortText out = marks_[i].own;
    Joiner joiner(out);
    while (out.view().size() < kLongestName && isReplaced(++i, rank)) {
      const Token& token = kTokens[marks_[i].rank];
      joiner.replace(token, replacements_.of(token.part));
      joiner.take(marks_[i].own);
    }
    return out;
  }

  Replacements replacements_;
  std::u16string_view head_;
  std::vector<Mark> marks_;
  std::size_t size_ = 0;
};

}  // namespace

std::u16string formatMoment(const Moment& moment, std::u16string_view format) {
  return Formatter(moment, format).result();
}

}  // namespace quendal::strings
