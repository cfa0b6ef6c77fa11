#include "automation/posix/date_text.h"

#include <array>
#include <initializer_list>
#include <optional>

#include "automation/date_text.h"
#include "base/date.h"
#include "base/text.h"
#include "platform/clock.h"

namespace quendal::automation {
namespace {

constexpr std::array<std::u16string_view, 12> kMonths{
    u"january", u"february", u"march",     u"april",   u"may",      u"june",
    u"july",    u"august",   u"september", u"october", u"november", u"december"};
constexpr std::array<std::u16string_view, 7> kWeekdays{
    u"sunday", u"monday", u"tuesday", u"wednesday", u"thursday", u"friday", u"saturday"};

// Index of the name that a word is, in full or by its first three letters; -1 when it is none.
template <std::size_t kCount>
int indexOf(std::u16string_view word, const std::array<std::u16string_view, kCount>& names) {
  for (std::size_t i = 0; i < kCount; ++i) {
    if (equalNoCase(word, names[i]) || equalNoCase(word, names[i].substr(0, 3)))
      return static_cast<int>(i);
  }
  return -1;
}

struct Number {
  int value = 0;
  int digits = 0;  // as written, leading zeros included
};

enum class Token { End, Number, Month, Weekday, Am, Pm, Mark, Other };

class Scanner {
 public:
  explicit Scanner(std::u16string_view text) noexcept : text_(text) { advance(); }

  Token token = Token::End;
  Number number;            // of a Number
  int month = 0;            // of a Month
  char16_t mark = u'\0';    // of a Mark: one of / - : , T
  bool afterBlank = false;  // blanks stand before the token

  void advance() noexcept {
    afterBlank = false;
    while (position_ < text_.size() && isSpace(text_[position_])) {
      ++position_;
      afterBlank = true;
    }
    if (position_ == text_.size()) {
      token = Token::End;
    } else if (isDigit(text_[position_])) {
      readNumber();
    } else if (isLetter(text_[position_])) {
      readWord();
    } else {
      mark = text_[position_++];
      const bool known = mark == u'/' || mark == u'-' || mark == u':' || mark == u',';
      token = known ? Token::Mark : Token::Other;
    }
  }

  [[nodiscard]] bool isMark(char16_t c) const noexcept { return token == Token::Mark && mark == c; }

 private:
  void readNumber() noexcept {
    number = {};
    token = Token::Number;
    for (; position_ < text_.size() && isDigit(text_[position_]); ++position_) {
      if (++number.digits > 4) {
        token = Token::Other;  // no part of a date is longer
        return;
      }
      number.value = number.value * 10 + (text_[position_] - u'0');
    }
  }

  void readWord() noexcept {
    const std::size_t first = position_;
    while (position_ < text_.size() && isLetter(text_[position_])) ++position_;
    const std::u16string_view word = text_.substr(first, position_ - first);
    if (const int index = indexOf(word, kMonths); index >= 0) {
      month = index + 1;
      token = Token::Month;
    } else if (indexOf(word, kWeekdays) >= 0) {
      token = Token::Weekday;
    } else if (equalNoCase(word, u"am")) {
      token = Token::Am;
    } else if (equalNoCase(word, u"pm")) {
      token = Token::Pm;
    } else if (equalNoCase(word, u"t")) {
      mark = u'T';
      token = Token::Mark;
    } else {
      token = Token::Other;
    }
  }

  std::u16string_view text_;
  std::size_t position_ = 0;
};

int yearOf(const Number& number) noexcept {
  if (number.digits > 2) return number.value;
  return number.value + (number.value < 30 ? 2000 : 1900);
}

bool isYearOnly(const Number& number) noexcept { return number.digits > 2 || number.value > 31; }

int currentYear() noexcept { return momentOf(platform::localNow())->year; }

struct Reading {
  int year, month, day;
};

// The day of the first of some readings of the numbers that is a date.
std::optional<int> firstDay(std::initializer_list<Reading> readings) noexcept {
  for (const Reading& reading : readings) {
    if (const auto day = dayOf(reading.year, reading.month, reading.day)) return day;
  }
  return std::nullopt;
}

// What stands in a text, put together by `finish`.
class DateReader {
 public:
  explicit DateReader(std::u16string_view text) noexcept : in_(text) {}

  bool read(double& date) noexcept {
    for (; in_.token != Token::End; isFirst_ = false) {
      if (!readPart()) return false;
    }
    return finish(date);
  }

 private:
  static constexpr std::size_t kMostNumbers = 3;

  bool readPart() noexcept {
    switch (in_.token) {
      case Token::Number:
        return readNumber();
      case Token::Month:
        if (month_ != 0) return false;
        month_ = in_.month;
        return nextOfDate();
      case Token::Weekday:
        if (hasWeekday_) return false;
        hasWeekday_ = true;
        return nextOfDate();
      case Token::Mark:
        // A comma may stand between parts; other marks are read with the number before them.
        if (in_.mark != u',' || isFirst_) return false;
        in_.advance();
        return in_.token != Token::Mark && in_.token != Token::End;
      default:
        return false;
    }
  }

  // A number begins a time when ":" or AM or PM follows, and is a part of the date otherwise.
  bool readNumber() noexcept {
    const Number number = in_.number;
    in_.advance();
    if (in_.isMark(u':') || in_.token == Token::Am || in_.token == Token::Pm) {
      return readTime(number);
    }
    if (count_ == kMostNumbers) return false;
    numbers_[count_++] = number;
    return afterDatePart();
  }

  bool nextOfDate() noexcept {
    in_.advance();
    return afterDatePart();
  }

  // A "/" or "-" joins two parts of one date, "T" an ISO date and its time.
  bool afterDatePart() noexcept {
    isOpen_ = false;
    if (in_.isMark(u'/') || in_.isMark(u'-')) {
      if (separator_ != u'\0' && separator_ != in_.mark) return false;
      separator_ = in_.mark;
      ++joins_;
      in_.advance();
      isOpen_ = true;
      return in_.token == Token::Number || in_.token == Token::Month;
    }
    if (in_.isMark(u'T')) {
      if (count_ != kMostNumbers || separator_ != u'-' || !isYearOnly(numbers_[0])) return false;
      if (in_.afterBlank) return false;
      in_.advance();
      if (in_.token != Token::Number || in_.afterBlank) return false;
      const Number hour = in_.number;
      in_.advance();
      return in_.isMark(u':') && readTime(hour);
    }
    return true;
  }

  bool readTime(const Number& hour) noexcept {
    if (hasTime_ || isOpen_ || hour.digits > 2) return false;
    hasTime_ = true;
    std::array<int, 3> parts{hour.value, 0, 0};
    for (std::size_t i = 1; i < parts.size() && in_.isMark(u':'); ++i) {
      in_.advance();
      if (in_.token != Token::Number || in_.number.digits > 2) return false;
      parts[i] = in_.number.value;
      in_.advance();
    }
    if (in_.token == Token::Am || in_.token == Token::Pm) {
      if (in_.token == Token::Pm && parts[0] < 12) parts[0] += 12;
      if (in_.token == Token::Am && parts[0] == 12) parts[0] = 0;
      in_.advance();
    }
    if (parts[0] > 23 || parts[1] > 59 || parts[2] > 59) return false;
    seconds_ = parts[0] * 3600 + parts[1] * 60 + parts[2];
    return true;
  }

  [[nodiscard]] std::optional<int> namedMonthDate() const noexcept {
    const Number& first = numbers_[0];
    if (count_ == 1) {
      return isYearOnly(first)
                 ? firstDay({{yearOf(first), month_, 1}})
                 : firstDay({{currentYear(), month_, first.value}, {yearOf(first), month_, 1}});
    }
    if (count_ != 2) return std::nullopt;
    const Number& second = numbers_[1];
    return isYearOnly(first) ? firstDay({{yearOf(first), month_, second.value}})
                             : firstDay({{yearOf(second), month_, first.value}});
  }

  [[nodiscard]] std::optional<int> numberDate() const noexcept {
    if (joins_ + 1 != count_) return std::nullopt;
    const Number& a = numbers_[0];
    const Number& b = numbers_[1];
    const Number& c = numbers_[2];
    if (count_ == 2) {
      return firstDay({{currentYear(), a.value, b.value},
                       {currentYear(), b.value, a.value},
                       {yearOf(b), a.value, 1},
                       {yearOf(a), b.value, 1}});
    }
    if (count_ != 3) return std::nullopt;
    const Reading yearMonthDay{yearOf(a), b.value, c.value};
    const Reading yearDayMonth{yearOf(a), c.value, b.value};
    if (isYearOnly(a)) return firstDay({yearMonthDay, yearDayMonth});
    return firstDay(
        {{yearOf(c), a.value, b.value}, yearMonthDay, yearDayMonth, {yearOf(c), b.value, a.value}});
  }

  bool finish(double& date) const noexcept {
    if (count_ == 0 && month_ == 0 && !hasWeekday_) {
      if (!hasTime_) return false;
      date = dateOf(0, seconds_);
      return true;
    }
    const auto day = month_ != 0 ? namedMonthDate() : numberDate();
    if (!day) return false;
    date = dateOf(*day, seconds_);
    return true;
  }

  Scanner in_;
  std::array<Number, kMostNumbers> numbers_{};
  std::size_t count_ = 0;
  int month_ = 0;
  int seconds_ = 0;
  std::size_t joins_ = 0;
  bool isFirst_ = true;
  bool hasWeekday_ = false;
  bool hasTime_ = false;
  bool isOpen_ = false;         // a "/" or "-" waits for what it joins
  char16_t separator_ = u'\0';  // the one that this date uses
};

std::u16string twoDigits(unsigned number) {
  return (number < 10 ? u"0" : u"") + decimalText(number);
}

}  // namespace

bool parseDate(std::u16string_view text, double& date) { return DateReader(text).read(date); }

std::u16string dateText(const Moment& at) {
  std::u16string text;
  if (dayOf(at.year, static_cast<int>(at.month), static_cast<int>(at.day)) != 0) {
    text = decimalText(at.month) + u"/" + decimalText(at.day) + u"/" + decimalText(at.year);
    if (at.hour == 0 && at.minute == 0 && at.second == 0) return text;
    text += u" ";
  }
  text += decimalText(at.hour % 12 == 0 ? 12 : at.hour % 12);
  text += u":" + twoDigits(at.minute) + u":" + twoDigits(at.second);
  return text + (at.hour < 12 ? u" AM" : u" PM");
}

}  // namespace quendal::automation
