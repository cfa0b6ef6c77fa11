#include "strings/date_format.h"

#include <iterator>
#include <utility>

#include "base/text.h"

namespace quendal::strings {
namespace {

constexpr std::u16string_view kMonths[] = {u"January",   u"February", u"March",    u"April",
                                           u"May",       u"June",     u"July",     u"August",
                                           u"September", u"October",  u"November", u"December"};
constexpr std::u16string_view kDays[] = {u"Sunday",   u"Monday", u"Tuesday", u"Wednesday",
                                         u"Thursday", u"Friday", u"Saturday"};

std::u16string upper(std::u16string_view text) {
  std::u16string result(text);
  for (char16_t& c : result)
    if (c >= u'a' && c <= u'z') c = static_cast<char16_t>(c - (u'a' - u'A'));
  return result;
}

std::u16string_view shortName(std::u16string_view name) { return name.substr(0, 3); }

std::u16string twoDigits(unsigned number) {
  const std::u16string text = u"0" + decimalText(number);
  return text.substr(text.size() - 2);
}

// By the last digit alone, so that there are an 11st, a 12nd and a 13rd; deliberate.
std::u16string ordinal(unsigned day) {
  constexpr std::u16string_view kSuffixes[] = {u"th", u"st", u"nd", u"rd"};
  const unsigned last = day % 10;
  return decimalText(day).append(kSuffixes[last < std::size(kSuffixes) ? last : 0]);
}

}  // namespace

std::u16string formatMoment(const Moment& moment, std::u16string_view format) {
  const std::u16string_view month = kMonths[moment.month - 1];
  const std::u16string_view day = kDays[moment.weekday - 1];
  const bool hasHalf = format.find(u"#AMPM") != format.npos;
  unsigned hour12 = moment.hour > 12 ? moment.hour - 12 : moment.hour;
  // Midnight is 12 only beside AM or PM; deliberate.
  if (hour12 == 0 && hasHalf) hour12 = 12;

  // In the order in which they are replaced: longer ones before the shorter that they contain.
  const std::pair<std::u16string_view, std::u16string> replacements[] = {
      {u"#UWWWW", upper(day)},
      {u"#UMMMM", upper(month)},
      {u"#AMPM", moment.hour >= 12 ? u"PM" : u"AM"},
      {u"#WWWW", std::u16string(day)},
      {u"#MMMM", std::u16string(month)},
      {u"#YYYY", decimalText(moment.year)},
      {u"#UWWW", upper(shortName(day))},
      {u"#UMMM", upper(shortName(month))},
      {u"#HH24", twoDigits(moment.hour)},
      {u"#HH12", twoDigits(hour12)},
      {u"#LNTH", ordinal(moment.day)},
      {u"#UNTH", upper(ordinal(moment.day))},
      {u"#NTH", ordinal(moment.day)},
      {u"#WWW", std::u16string(shortName(day))},
      {u"#MMM", std::u16string(shortName(month))},
      {u"#H24", decimalText(moment.hour)},
      {u"#H12", decimalText(hour12)},
      {u"#HH", twoDigits(hasHalf ? hour12 : moment.hour)},
      {u"#WW", std::u16string(day.substr(0, 1))},
      {u"#SS", twoDigits(moment.second)},
      {u"#NN", twoDigits(moment.minute)},
      {u"#YY", twoDigits(static_cast<unsigned>(moment.year))},
      {u"#MM", twoDigits(moment.month)},
      {u"#DD", twoDigits(moment.day)},
      {u"#W", decimalText(moment.weekday)},
      {u"#S", decimalText(moment.second)},
      {u"#N", decimalText(moment.minute)},
      {u"#H", decimalText(moment.hour)},
      {u"#M", decimalText(moment.month)},
      {u"#D", decimalText(moment.day)},
  };
  std::u16string text(format);
  for (const auto& [token, by] : replacements)
    if (text.find(token) != text.npos) text = replaceAll(text, token, by);
  return text;
}

}  // namespace quendal::strings
