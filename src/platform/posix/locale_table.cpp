#include "platform/posix/locale_table.h"

#include <langinfo.h>
#include <locale.h>

#include <algorithm>
#include <climits>
#include <cwchar>
#include <iterator>
#include <utility>

#include "platform/posix/date_picture.h"
#include "platform/posix/host_files.h"

namespace quendal::platform {
namespace {

constexpr std::size_t kMaxLength = 98;

namespace item {
constexpr std::uint32_t kDecimal = 0x0E;
constexpr std::uint32_t kThousand = 0x0F;
constexpr std::uint32_t kGrouping = 0x10;
constexpr std::uint32_t kDigits = 0x11;
constexpr std::uint32_t kLeadingZero = 0x12;
constexpr std::uint32_t kCurrency = 0x14;
constexpr std::uint32_t kDateSeparator = 0x1D;
constexpr std::uint32_t kTimeSeparator = 0x1E;
constexpr std::uint32_t kShortDate = 0x1F;
constexpr std::uint32_t kLongDate = 0x20;
constexpr std::uint32_t kMorning = 0x28;
constexpr std::uint32_t kAfternoon = 0x29;
constexpr std::uint32_t kDay = 0x2A;         // Monday, and six more
constexpr std::uint32_t kShortDay = 0x31;    // Monday, and six more
constexpr std::uint32_t kMonth = 0x38;       // January, and eleven more
constexpr std::uint32_t kShortMonth = 0x44;  // January, and eleven more
constexpr std::uint32_t kPositiveSign = 0x50;
constexpr std::uint32_t kNegativeSign = 0x51;
constexpr std::uint32_t kPositivePosition = 0x52;
constexpr std::uint32_t kNegativePosition = 0x53;
constexpr std::uint32_t kEnglishLanguage = 0x1001;
constexpr std::uint32_t kEnglishCountry = 0x1002;
constexpr std::uint32_t kTimeFormat = 0x1003;
}  // namespace item

constexpr std::u16string_view kDays[] = {u"Monday", u"Tuesday",  u"Wednesday", u"Thursday",
                                         u"Friday", u"Saturday", u"Sunday"};
constexpr std::u16string_view kMonths[] = {u"January",   u"February", u"March",    u"April",
                                           u"May",       u"June",     u"July",     u"August",
                                           u"September", u"October",  u"November", u"December"};

// "de_DE" of "de_DE.UTF-8".
std::string_view codeOf(std::string_view name) { return name.substr(0, name.find_first_of(".@")); }

bool isAmericanEnglish(std::string_view name) {
  const std::string_view plain = codeOf(name);
  return plain.empty() || plain == "C" || plain == "POSIX" || plain == "en_US";
}

// A locale of the C library, with its texts as UTF-16.
class CLocale {
 public:
  explicit CLocale(const std::string& name)
      : name_(name),
        locale_(isAmericanEnglish(name) ? locale_t{}
                                        : newlocale(LC_ALL_MASK, name.c_str(), locale_t{})) {}
  CLocale(const CLocale&) = delete;
  CLocale& operator=(const CLocale&) = delete;
  ~CLocale() {
    if (locale_ != locale_t{}) freelocale(locale_);
  }

  explicit operator bool() const noexcept { return locale_ != locale_t{}; }
  [[nodiscard]] std::string_view name() const noexcept { return name_; }

  [[nodiscard]] const char* bytes(nl_item number) const { return nl_langinfo_l(number, locale_); }

  // Up to the first byte that the locale's own encoding cannot read.
  [[nodiscard]] std::u16string text(nl_item number) const {
    const Use use(locale_);
    std::u16string out;
    std::mbstate_t state{};
    std::string_view rest = bytes(number);
    while (!rest.empty()) {
      wchar_t wide = 0;
      const std::size_t used = std::mbrtowc(&wide, rest.data(), rest.size(), &state);
      if (used == 0 || used > rest.size()) break;
      rest.remove_prefix(used);
      if (wide <= 0xFFFF) out += static_cast<char16_t>(wide);  // no locale text has others
    }
    return out;
  }

 private:
  // The thread's locale while it lasts.
  class Use {
   public:
    explicit Use(locale_t locale) noexcept : previous_(uselocale(locale)) {}
    Use(const Use&) = delete;
    Use& operator=(const Use&) = delete;
    ~Use() { uselocale(previous_); }

   private:
    locale_t previous_;
  };

  std::string name_;
  locale_t locale_;
};

// The C library's group sizes ("\3\2", the last for the rest) as "3;2;0".
std::u16string groupingText(const char* sizes) {
  std::u16string out;
  char last = 0;
  for (; *sizes > 0 && *sizes < 10; last = *sizes++) {
    if (*sizes == last && (sizes[1] == 0 || sizes[1] == last)) continue;
    if (!out.empty()) out += u';';
    out += static_cast<char16_t>(u'0' + *sizes);
  }
  if (out.empty()) return u"0";
  return *sizes == CHAR_MAX ? out : out + u";0";
}

// "American English" and the like name the language by its last word alone.
std::u16string plainLanguage(std::u16string name) {
  constexpr std::u16string_view kWorldLanguages[] = {u"English", u"French",     u"German",
                                                     u"Spanish", u"Portuguese", u"Italian"};
  for (const auto language : kWorldLanguages) {
    if (name.ends_with(language)) return std::u16string(language);
  }
  return name;
}

void set(LocaleTable::Items& items, std::uint32_t number, std::u16string text) {
  if (text.size() > kMaxLength) text.resize(kMaxLength);
  items[number] = std::move(text);
}

LocaleTable::Items englishItems() {
  LocaleTable::Items items;
  constexpr std::pair<std::uint32_t, std::u16string_view> kTexts[] = {
      {item::kDecimal, u"."},
      {item::kThousand, u","},
      {item::kGrouping, u"3;0"},
      {item::kDigits, u"2"},
      {item::kLeadingZero, u"1"},
      {item::kCurrency, u"$"},
      {item::kDateSeparator, u"/"},
      {item::kTimeSeparator, u":"},
      {item::kShortDate, u"M/d/yyyy"},
      {item::kLongDate, u"dddd, MMMM d, yyyy"},
      {item::kMorning, u"AM"},
      {item::kAfternoon, u"PM"},
      {item::kPositiveSign, u""},
      {item::kNegativeSign, u"-"},
      {item::kPositivePosition, u"3"},  // the sign directly before the currency symbol
      {item::kNegativePosition, u"0"},  // parentheses around number and symbol
      {item::kEnglishLanguage, u"English"},
      {item::kEnglishCountry, u"United States"},
      {item::kTimeFormat, u"h:mm:ss tt"},
  };
  for (const auto& [number, text] : kTexts) set(items, number, std::u16string(text));
  for (std::uint32_t i = 0; i < std::size(kDays); ++i) {
    set(items, item::kDay + i, std::u16string(kDays[i]));
    set(items, item::kShortDay + i, std::u16string(kDays[i].substr(0, 3)));
  }
  for (std::uint32_t i = 0; i < std::size(kMonths); ++i) {
    set(items, item::kMonth + i, std::u16string(kMonths[i]));
    set(items, item::kShortMonth + i, std::u16string(kMonths[i].substr(0, 3)));
  }
  return items;
}

void takeTime(LocaleTable::Items& items, const CLocale& locale) {
  const auto take = [&](std::uint32_t number, std::u16string text) {
    text.erase(0, text.find_first_not_of(u' '));  // names are padded in some locales
    if (!text.empty()) set(items, number, std::move(text));
  };
  for (int i = 0; i < 7; ++i) {  // the C library's week begins with Sunday
    const auto offset = static_cast<std::uint32_t>((i + 6) % 7);
    take(item::kDay + offset, locale.text(DAY_1 + i));
    take(item::kShortDay + offset, locale.text(ABDAY_1 + i));
  }
  for (int i = 0; i < 12; ++i) {  // months as they stand alone, not as after a day
    const auto offset = static_cast<std::uint32_t>(i);
    take(item::kMonth + offset, locale.text(ALTMON_1 + i));
    take(item::kShortMonth + offset, locale.text(ABMON_1 + i));
  }
  set(items, item::kMorning, locale.text(AM_STR));  // no texts where a day has 24 hours
  set(items, item::kAfternoon, locale.text(PM_STR));

  const StrftimeFormats formats{locale.text(D_FMT), locale.text(T_FMT), locale.text(T_FMT_AMPM)};
  take(item::kShortDate, pictureOf(formats.date, PictureKind::ShortDate, formats));
  take(item::kLongDate, pictureOf(locale.text(D_T_FMT), PictureKind::LongDate, formats));
  take(item::kTimeFormat, pictureOf(formats.time, PictureKind::Time, formats));
  take(item::kDateSeparator, pictureSeparator(items[item::kShortDate]));
  take(item::kTimeSeparator, pictureSeparator(items[item::kTimeFormat]));
}

void takeNumeric(LocaleTable::Items& items, const CLocale& locale) {
  set(items, item::kDecimal, locale.text(RADIXCHAR));
  set(items, item::kThousand, locale.text(THOUSEP));
  set(items, item::kGrouping, groupingText(locale.bytes(GROUPING)));
}

void takeMonetary(LocaleTable::Items& items, const CLocale& locale) {
  set(items, item::kCurrency, locale.text(CURRENCY_SYMBOL));
  // The positions are numbered alike in both worlds.
  for (const auto& [number, source] : {std::pair{item::kPositivePosition, P_SIGN_POSN},
                                       std::pair{item::kNegativePosition, N_SIGN_POSN}}) {
    const char position = *locale.bytes(source);
    if (position >= 0 && position <= 4) {
      set(items, number, std::u16string(1, static_cast<char16_t>(u'0' + position)));
    }
  }
}

void takeLanguage(LocaleTable::Items& items, const CLocale& locale) {
  const std::string_view code = codeOf(locale.name());
  const std::size_t end = std::min(code.find('_'), code.size());
  const auto orCode = [](const std::u16string& text, std::string_view part) {
    return text.empty() ? std::u16string(part.begin(), part.end()) : text;
  };
  set(items, item::kEnglishLanguage,
      orCode(plainLanguage(locale.text(_NL_IDENTIFICATION_LANGUAGE)), code.substr(0, end)));
  set(items, item::kEnglishCountry,
      orCode(locale.text(_NL_IDENTIFICATION_TERRITORY),
             code.substr(std::min(end + 1, code.size()))));
}

}  // namespace

LocaleNames localeNamesOfEnvironment() {
  const auto category = [](const char* name) {
    for (const char* variable : {"LC_ALL", name, "LANG"}) {
      if (std::string value = environmentText(variable); !value.empty()) return value;
    }
    return std::string();
  };
  return {category("LC_TIME"), category("LC_NUMERIC"), category("LC_MONETARY"), category("LANG")};
}

LocaleTable::LocaleTable(const LocaleNames& names) : items_(englishItems()) {
  const auto take = [this](const std::string& name, void (*part)(Items&, const CLocale&)) {
    if (const CLocale locale(name); locale) part(items_, locale);
  };
  take(names.time, takeTime);
  take(names.numeric, takeNumeric);
  take(names.monetary, takeMonetary);
  take(names.language, takeLanguage);
}

std::u16string_view LocaleTable::item(std::uint32_t number) const noexcept {
  const auto found = items_.find(number);
  return found != items_.end() ? std::u16string_view(found->second) : std::u16string_view();
}

}  // namespace quendal::platform
