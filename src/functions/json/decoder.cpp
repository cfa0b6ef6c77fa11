#include "functions/json/decoder.h"

#include <quendal/object.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <iterator>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "automation/dictionary_access.h"
#include "automation/reference.h"
#include "base/characters.h"
#include "functions/json/characters.h"
#include "functions/json/error.h"
#include "functions/json/nesting_limit.h"
#include "functions/json/number.h"

namespace quendal::json {
namespace {

using OwnedDictionary = automation::Reference<automation::IDictionary>;

/// Values that no array or object has taken yet, the latest one last.
class Values {
 public:
  Values() = default;
  Values(const Values&) = delete;
  Values& operator=(const Values&) = delete;
  ~Values() {
    for (VARIANT& value : values_) VariantClear(&value);
  }

  [[nodiscard]] std::size_t count() const noexcept { return values_.size(); }
  [[nodiscard]] VARIANT& last() noexcept { return values_.back(); }
  void pop() noexcept { values_.pop_back(); }

  /// A new last one, whose content is to be set.
  VARIANT& push(VARTYPE type) {
    VARIANT& value = values_.emplace_back();
    value.vt = type;
    return value;
  }

  /// Moves those from `first` on into an array, which is the last one then. It is no vector, as
  /// pages may push onto it.
  void gather(std::size_t first) {
    SAFEARRAYBOUND bound{static_cast<ULONG>(values_.size() - first), 0};
    values_.reserve(first + 1);
    SAFEARRAY* array = SafeArrayCreate(VT_VARIANT, 1, &bound);
    if (array == nullptr) throw std::bad_alloc();
    std::copy(values_.begin() + static_cast<std::ptrdiff_t>(first), values_.end(),
              static_cast<VARIANT*>(array->pvData));
    values_.resize(first);
    push(kVariantArray).parray = array;
  }

 private:
  std::vector<VARIANT> values_;
};

class Decoder {
 public:
  explicit Decoder(std::u16string_view text) noexcept
      : at_(text.data()), end_(at_ + text.size()), nextDigit_(at_) {}

  Variant run();

 private:
  /// An array or object whose end has not come yet.
  struct Open {
    OwnedDictionary dictionary;  // null for an array
    std::size_t firstElement = 0;
    // Of the member whose value comes next: as it stands in the text, or, if not empty, unescaped.
    std::u16string_view plainKey = {};
    std::u16string unescapedKey = {};
  };

  [[nodiscard]] bool isAt(char16_t c) const noexcept { return at_ != end_ && *at_ == c; }
  void skipBlanks() noexcept {
    if (at_ != end_ && isBlank(*at_)) skipFurtherBlanks();
  }
  void skipFurtherBlanks() noexcept;

  bool beginValue();
  bool beginObject();
  bool beginArray();
  bool endsInnermost();
  void addMember(Open& object);
  void readKey(Open& object);
  void closeInnermost();

  void readWord();
  void readNumber();
  const char16_t* findNumber();
  std::u16string_view readString();
  std::u16string_view readStringWithEscapes(const char16_t* begin);
  char16_t readEscape();
  char16_t readCode();

  const char16_t* at_;
  const char16_t* const end_;
  const char16_t* nextDigit_;  // no digit stands from where findNumber last looked up to here
  std::vector<Open> open_;     // in place of calls within calls: they would use up the stack
  Values values_;
  std::u16string unescaped_;  // a string with escapes
  NestingLimit limit_;
  automation::DictionaryMaker maker_;
};

Variant Decoder::run() {
  bool isComplete = false;
  do {
    isComplete = beginValue();
    while (isComplete && !open_.empty()) isComplete = endsInnermost();
  } while (!isComplete);
  Variant value = Variant::attach(values_.last());
  values_.pop();
  return value;
}

// Reads a value, or only the start of an array or object, whose first value comes next then.
// Returns whether the value is complete: it is the last one of `values_`.
bool Decoder::beginValue() {
  skipBlanks();
  switch (at_ != end_ ? *at_ : u'\0') {
    case u'{':
      return beginObject();
    case u'[':
      return beginArray();
    case u'"': {
      ++at_;
      VARIANT& value = values_.push(VT_BSTR);
      value.bstrVal = newBstr(readString());
      return true;
    }
    case u'n':
    case u't':
    case u'f':
      readWord();
      return true;
    default:
      readNumber();
      return true;
  }
}

// Most blanks indent a line.
void Decoder::skipFurtherBlanks() noexcept {
  constexpr char16_t kIndent[] = {u' ', u' ', u' ', u' ', u' ', u' ', u' ', u' '};
  ++at_;
  while (end_ - at_ >= std::ssize(kIndent) && std::memcmp(at_, kIndent, sizeof(kIndent)) == 0)
    at_ += std::ssize(kIndent);
  at_ = std::find_if_not(at_, end_, isBlank);
}

bool Decoder::beginObject() {
  limit_.checkBelow(open_.size());
  ++at_;
  OwnedDictionary dictionary(maker_.make());
  if (dictionary == nullptr) throw AutomationError(error_number::kCannotCreate);
  open_.push_back({std::move(dictionary)});
  skipBlanks();
  if (isAt(u'}')) {
    closeInnermost();
    return true;
  }
  readKey(open_.back());
  return false;
}

bool Decoder::beginArray() {
  limit_.checkBelow(open_.size());
  ++at_;
  open_.push_back({nullptr, values_.count()});
  skipBlanks();
  if (!isAt(u']')) return false;
  closeInnermost();
  return true;
}

// Puts the value just read into the innermost array or object. Returns whether that was its last
// one; then the array or object is the value just read.
bool Decoder::endsInnermost() {
  Open& innermost = open_.back();
  const bool isObject = innermost.dictionary != nullptr;
  if (isObject) addMember(innermost);
  skipBlanks();
  if (isAt(isObject ? u'}' : u']')) {
    closeInnermost();
    return true;
  }
  if (!isAt(u',')) raiseError(u"Expecting , delimiter");
  ++at_;
  if (isObject) {
    skipBlanks();
    readKey(innermost);
  }
  return false;
}

void Decoder::addMember(Open& object) {
  const std::u16string_view key =
      object.unescapedKey.empty() ? object.plainKey : object.unescapedKey;
  const HRESULT code = maker_.add(*object.dictionary, key, values_.last());
  values_.pop();
  if (SUCCEEDED(code)) return;
  // The error leaves with the standard text of its number instead of the dictionary's own.
  SetErrorInfo(0, nullptr);
  throw AutomationError(AutomationError::fromRuntime(code).number());
}

void Decoder::closeInnermost() {
  ++at_;
  Open& closed = open_.back();
  if (closed.dictionary == nullptr) {
    values_.gather(closed.firstElement);
  } else {
    VARIANT& value = values_.push(VT_DISPATCH);
    value.pdispVal = closed.dictionary.release();
  }
  open_.pop_back();
}

void Decoder::readKey(Open& object) {
  if (!isAt(u'"')) raiseError(u"Expecting property name");
  ++at_;
  object.unescapedKey.clear();
  object.plainKey = readString();
  if (object.plainKey.data() == unescaped_.data()) object.unescapedKey = object.plainKey;
  skipBlanks();
  if (!isAt(u':')) raiseError(u"Expecting : delimiter");
  ++at_;
}

// A value that is one of three words, or else a number.
void Decoder::readWord() {
  const std::u16string_view rest(at_, static_cast<std::size_t>(end_ - at_));
  const auto skip = [&](std::u16string_view word) {
    if (!rest.starts_with(word)) return false;
    at_ += word.size();
    return true;
  };
  if (skip(u"null"))
    values_.push(VT_NULL);
  else if (skip(u"true"))
    values_.push(VT_BOOL).boolVal = VARIANT_TRUE;
  else if (skip(u"false"))
    values_.push(VT_BOOL).boolVal = VARIANT_FALSE;
  else
    readNumber();
}

// Where no value of another kind stands, the next number of the text counts as the value, however
// far away it begins. What is passed over is not the way up to it, but as many characters from
// here on as the number has. Deliberate.
void Decoder::readNumber() {
  const char16_t* const begin = findNumber();
  const Number number = json::readNumber(begin, end_);
  at_ += number.end - begin;
  values_.push(VT_R8).dblVal = number.value;
}

// Where the next number begins. In a text of many wrong values before one number that is the same
// place again and again: remembering it keeps the searches from adding up.
const char16_t* Decoder::findNumber() {
  if (nextDigit_ < at_) nextDigit_ = at_;
  nextDigit_ = std::find_if(nextDigit_, end_, isDigit<char16_t>);
  if (nextDigit_ == end_)
    raiseError(
        u"ScanOnce(): Parameter is expected to be a valid JSON string. No JSON object could be "
        u"scanned.");
  return nextDigit_ != at_ && nextDigit_[-1] == u'-' ? nextDigit_ - 1 : nextDigit_;
}

// The characters of a string, good until the next one is read.
std::u16string_view Decoder::readString() {
  const char16_t* const begin = at_;
  at_ = std::find_if(at_, end_, isSpecial);
  if (!isAt(u'"')) return readStringWithEscapes(begin);
  return {begin, static_cast<std::size_t>(at_++ - begin)};
}

std::u16string_view Decoder::readStringWithEscapes(const char16_t* begin) {
  unescaped_.clear();
  while (true) {
    if (at_ == end_) raiseError(u"Unterminated string starting");
    unescaped_.append(begin, at_);
    const char16_t special = *at_++;
    if (special == u'"') return unescaped_;
    if (special != u'\\') raiseError(u"Invalid control character");
    unescaped_ += readEscape();
    begin = at_;
    at_ = std::find_if(at_, end_, isSpecial);
  }
}

char16_t Decoder::readEscape() {
  const char16_t escape = at_ != end_ ? *at_++ : u'\0';
  switch (escape) {
    case u'"':
    case u'\\':
    case u'/':
      return escape;
    case u'b':
      return u'\b';
    case u'f':
      return u'\f';
    case u'n':
      return u'\n';
    case u'r':
      return u'\r';
    case u't':
      return u'\t';
    case u'u':
      return readCode();
    default:
      raiseError(u"Invalid escape");
  }
}

// The four characters after "\u", or those that are left. Anything but four digits is for the
// platform to read as a hexadecimal number, or to refuse.
char16_t Decoder::readCode() {
  constexpr std::size_t kDigits = 4;
  const auto left = static_cast<std::size_t>(end_ - at_);
  const std::u16string_view digits(at_, std::min(kDigits, left));
  at_ += digits.size();
  int code = 0;
  bool isPlain = digits.size() == kDigits;
  for (const char16_t c : digits) {
    const int digit = hexValue(c);
    isPlain = isPlain && digit >= 0;
    code = code * 16 + digit;
  }
  if (!isPlain) code = int32Of(Variant(u"&H" + std::u16string(digits)));
  return static_cast<char16_t>(code);
}

}  // namespace

Variant decode(std::u16string_view text) { return Decoder(text).run(); }

}  // namespace quendal::json
