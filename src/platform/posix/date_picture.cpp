#include "platform/posix/date_picture.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

#include "base/characters.h"

namespace quendal::platform {
namespace {

constexpr int kMaxNesting = 3;

// The blanks that keep a line together read as plain ones.
constexpr bool isBlank(char16_t c) { return c == u' ' || c == 0x00A0 || c == 0x202F; }

struct Element {
  char16_t conversion;
  bool isDate;
  std::u16string_view picture;
  std::u16string_view unpadded = {};  // with the "-" flag
  std::u16string_view spelled = {};   // in a long date
};
constexpr Element kElements[] = {
    {u'd', true, u"dd", u"d"},
    {u'e', true, u"d"},
    {u'm', true, u"MM", u"M"},
    {u'b', true, u"MMM", {}, u"MMMM"},
    {u'h', true, u"MMM", {}, u"MMMM"},
    {u'B', true, u"MMMM"},
    {u'y', true, u"yy"},
    {u'Y', true, u"yyyy"},
    {u'a', true, u"ddd", {}, u"dddd"},
    {u'A', true, u"dddd"},
    {u'H', false, u"HH", u"H"},
    {u'k', false, u"H"},
    {u'I', false, u"hh", u"h"},
    {u'l', false, u"h"},
    {u'M', false, u"mm", u"m"},
    {u'S', false, u"ss", u"s"},
    {u'p', false, u"tt"},
    {u'P', false, u"tt"},
};

class Builder {
 public:
  Builder(PictureKind kind, const StrftimeFormats& formats) : kind_(kind), formats_(formats) {}

  void add(std::u16string_view format, int nesting = 0) {
    for (std::size_t i = 0; i < format.size(); ++i) {
      if (format[i] != u'%') {
        literal_ += isBlank(format[i]) ? u' ' : format[i];
        continue;
      }
      bool unpadded = false;
      for (++i; i < format.size() && isModifier(format[i]); ++i) unpadded |= format[i] == u'-';
      if (i < format.size()) convert(format[i], unpadded, nesting);
    }
  }

  std::u16string finish() {
    if (!afterOther_) put(literal_);
    literal_.clear();
    const std::size_t first = out_.find_first_not_of(u' ');
    if (!any_ || first == std::u16string::npos) return {};
    return out_.substr(first, out_.find_last_not_of(u' ') - first + 1);
  }

 private:
  static bool isModifier(char16_t c) {
    return std::u16string_view(u"-_0^#+EO").find(c) != std::u16string_view::npos;
  }

  void convert(char16_t conversion, bool unpadded, int nesting) {
    if (conversion == u'%') {
      literal_ += u'%';
    } else if (conversion == u'n' || conversion == u't') {
      literal_ += u' ';
    } else if (const auto inner = compound(conversion); !inner.empty()) {
      if (nesting < kMaxNesting) add(inner, nesting + 1);
    } else {
      element(conversion, unpadded);
    }
  }

  std::u16string_view compound(char16_t conversion) const {
    switch (conversion) {
      case u'D':
        return u"%m/%d/%y";
      case u'F':
        return u"%Y-%m-%d";
      case u'T':
        return u"%H:%M:%S";
      case u'R':
        return u"%H:%M";
      case u'r':
        return formats_.halfDays;
      case u'x':
        return formats_.date;
      case u'X':
        return formats_.time;
      default:
        return {};
    }
  }

  void element(char16_t conversion, bool unpadded) {
    const auto* const found =
        std::find_if(std::begin(kElements), std::end(kElements),
                     [conversion](const Element& each) { return each.conversion == conversion; });
    if (found == std::end(kElements) || found->isDate != (kind_ != PictureKind::Time)) {
      return passOther();
    }
    if (afterOther_) literal_.clear();
    put(literal_);
    literal_.clear();
    if (kind_ == PictureKind::LongDate && !found->spelled.empty()) {
      out_ += found->spelled;
    } else {
      out_ += unpadded && !found->unpadded.empty() ? found->unpadded : found->picture;
    }
    any_ = true;
    afterOther_ = false;
  }

  // An element of the other half: of the text before it, only what clings to the last element
  // stays ("2024年" before a time), and not a comma.
  void passOther() {
    if (any_ && !afterOther_) {
      std::u16string_view cling = std::u16string_view(literal_).substr(0, literal_.find(u' '));
      while (cling.ends_with(u',')) cling.remove_suffix(1);
      put(cling);
    }
    literal_.clear();
    afterOther_ = true;
  }

  // Letters would read as elements, so a text with any is quoted.
  void put(std::u16string_view literal) {
    const bool quoted = std::any_of(literal.begin(), literal.end(),
                                    [](char16_t c) { return isLetter(c) || !isAscii(c); });
    if (!quoted) {
      out_ += literal;
      return;
    }
    out_ += u'\'';
    for (const char16_t c : literal) out_.append(c == u'\'' ? 2u : 1u, c);
    out_ += u'\'';
  }

  PictureKind kind_;
  const StrftimeFormats& formats_;
  std::u16string out_;
  std::u16string literal_;   // not yet placed
  bool any_ = false;         // an element was placed
  bool afterOther_ = false;  // the last element was of the other half
};

}  // namespace

std::u16string pictureOf(std::u16string_view format, PictureKind kind,
                         const StrftimeFormats& formats) {
  Builder builder(kind, formats);
  builder.add(format);
  return builder.finish();
}

std::u16string pictureSeparator(std::u16string_view picture) {
  while (!picture.empty() && !isLetter(picture.front())) {  // up to the first element
    const bool quoted = picture.front() == u'\'';
    const std::size_t end = quoted ? picture.find(u'\'', 1) : 0;
    picture.remove_prefix(std::min(end, picture.size() - 1) + 1);
  }
  const auto begin = std::find_if_not(picture.begin(), picture.end(), isLetter<char16_t>);
  const auto end =
      std::find_if(begin, picture.end(), [](char16_t c) { return isLetter(c) || c == u'\''; });
  return end == picture.end() ? std::u16string() : std::u16string(begin, end);
}

}  // namespace quendal::platform
