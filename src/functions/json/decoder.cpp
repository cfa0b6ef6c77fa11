#include "functions/json/decoder.h"

#include <quendal/object.h>

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "automation/dictionary_access.h"
#include "functions/json/characters.h"
#include "functions/json/error.h"
#include "functions/json/keys.h"
#include "functions/json/number.h"
#include "functions/json/nesting_limit.h"

namespace quendal {
namespace {

struct ReleaseDictionary {
  void operator()(automation::IDictionary* dictionary) const noexcept { dictionary->Release(); }
};
using OwnedDictionary = std::unique_ptr<automation::IDictionary, ReleaseDictionary>;

/// The elements of the arrays that are open, those of the innermost one last.
class Elements {
 public:
  Elements() = default;
  Elements(const Elements&) = delete;
  Elements& operator=(const Elements&) = delete;
  ~Elements() {
    for (VARIANT& value : values_) VariantClear(&value);
  }

  [[nodiscard]] std::size_t count() const noexcept { return values_.size(); }

  void push(const VARIANT& taken) {
    if (values_.size() == values_.capacity()) grow(taken);
    VARIANT& value = values_.emplace_back();
    value.vt = taken.vt;
    value.llVal = taken.llVal;
  }

  /// Moves the elements from `first` on into an array of their own.
  [[nodiscard]] SAFEARRAY* takeFrom(std::size_t first) {
    const std::size_t taken = values_.size() - first;
    SAFEARRAYBOUND bound{static_cast<ULONG>(taken), 0};  // not a vector: pages may push onto it
    SAFEARRAY* array = SafeArrayCreate(VT_VARIANT, 1, &bound);
    if (array == nullptr) throw std::bad_alloc();
    std::copy_n(values_.data() + first, taken, static_cast<VARIANT*>(array->pvData));
    values_.resize(first);
    return array;
  }

 private:
  void grow(const VARIANT& taken) {
    constexpr std::size_t kFirst = 64;
    Variant kept = Variant::attach(taken);  // freed when there is no memory
    values_.reserve(std::max(kFirst, values_.capacity() * 2));
    static_cast<void>(kept.release());
  }

  std::vector<VARIANT> values_;
};

constexpr std::size_t kMostExpected = 128;  // members to make room for before they come

/// Values are plain VARIANTs here, each owned by whoever it is passed to. None uses more than the
/// tag and 64 bits, which are copied one by one: a processor waits when it is to read at once what
/// was just written in parts.
class Decoder {
 public:
  explicit Decoder(std::u16string_view text) noexcept
      : at_(text.data()), end_(text.data() + text.size()), nextDigit_(text.data()) {}

  Variant run();

 private:
  /// An array or object whose end has not come yet.
  struct Open {
    OwnedDictionary dictionary;  // null for an array
    Text key;                    // of the member whose value comes next
    std::size_t firstElement = 0;
    std::size_t members = 0;
    JsonKeys::Place place = 0;       // of the key, or of the key over an array
    JsonKeys::Place firstPlace = 0;  // of the first member's key
  };

  [[nodiscard]] JsonKeys::Place place() const noexcept {
    return open_.empty() ? JsonKeys::Place{0} : open_.back().place;
  }
  [[nodiscard]] bool isAt(char16_t c) const noexcept { return at_ != end_ && *at_ == c; }
  void skipBlanks() noexcept;

  bool beginValue(VARIANT& value);
  bool beginObject(VARIANT& value);
  bool beginArray(VARIANT& value);
  bool continueWith(VARIANT& value);
  void addMember(Open& object, VARIANT& value);
  void readKey(Open& object, JsonKeys::Place& expected);
  void readFirstKey(Open& object);
  void closeInnermost(VARIANT& value);

  void readWord(VARIANT& value);
  void readNumber(VARIANT& value);
  const char16_t* findNumber();
  std::u16string_view readString();
  std::u16string_view readStringWithEscapes(const char16_t* begin);
  char16_t readEscape();
  char16_t readCode();

  const char16_t* at_;
  const char16_t* const end_;
  const char16_t* nextDigit_;  // no digit stands from where findNumber last looked up to here
  std::vector<Open> open_;     // in place of calls within calls: they would use up the stack
  Elements elements_;
  std::u16string unescaped_;  // a string with escapes
  JsonKeys keys_;
  NestingLimit limit_;
  automation::DictionaryMaker maker_;
};

template <class Content>
void set(VARIANT& value, VARTYPE type, Content VARIANT::*field, Content content) noexcept {
  value = VARIANT{};
  value.*field = content;
  value.vt = type;
}

Variant Decoder::run() {
  VARIANT value{};
  while (true) {
    skipBlanks();
    if (!beginValue(value)) continue;
    while (!open_.empty() && continueWith(value)) {
    }
    if (open_.empty()) return Variant::attach(value);
  }
}

inline void Decoder::skipBlanks() noexcept {
  if (at_ != end_ && *at_ <= u' ') at_ = findNonBlankInJson(at_, end_);
}

// Reads a value, or only the start of an array or object, whose first value comes next then.
// Returns whether the value is complete.
bool Decoder::beginValue(VARIANT& value) {
  switch (at_ != end_ ? *at_ : u'\0') {
    case u'{':
      return beginObject(value);
    case u'[':
      return beginArray(value);
    case u'"':
      ++at_;
      set(value, VT_BSTR, &VARIANT::bstrVal, newBstr(readString()));
      return true;
    case u'n':
    case u't':
    case u'f':
      readWord(value);
      return true;
    default:
      readNumber(value);
      return true;
  }
}

bool Decoder::beginObject(VARIANT& value) {
  limit_.checkBelow(open_.size());
  ++at_;
  const JsonKeys::Place firstKey = keys_.firstUnder(place());  // if this is like the last object
  OwnedDictionary dictionary(maker_.make(keys_.membersFrom(firstKey)));
  if (dictionary == nullptr) throw AutomationError(error_number::kCannotCreate);
  open_.push_back({std::move(dictionary), {}, 0, 0, place(), 0});
  skipBlanks();
  if (isAt(u'}')) {
    closeInnermost(value);
    return true;
  }
  readFirstKey(open_.back());
  return false;
}

bool Decoder::beginArray(VARIANT& value) {
  limit_.checkBelow(open_.size());
  ++at_;
  open_.push_back({nullptr, {}, elements_.count(), 0, place(), 0});
  skipBlanks();
  if (!isAt(u']')) return false;
  closeInnermost(value);
  return true;
}

// Puts a value into the innermost array or object. Returns whether that was its last one; `value`
// is the array or object then.
bool Decoder::continueWith(VARIANT& value) {
  Open& innermost = open_.back();
  const bool isObject = innermost.dictionary != nullptr;
  if (isObject)
    addMember(innermost, value);
  else
    elements_.push(value);
  skipBlanks();
  if (isAt(isObject ? u'}' : u']')) {
    closeInnermost(value);
    return true;
  }
  if (!isAt(u',')) raiseJsonError(u"Expecting , delimiter");
  ++at_;
  if (isObject) {
    skipBlanks();
    readKey(innermost, keys_.after(innermost.place));
  }
  return false;
}

void Decoder::addMember(Open& object, VARIANT& value) {
  const HRESULT code = maker_.add(*object.dictionary, object.key.release(), value);
  if (SUCCEEDED(code)) return;
  // The error leaves with the standard text of its number instead of the dictionary's own.
  SetErrorInfo(0, nullptr);
  throw AutomationError(AutomationError::fromRuntime(code).number());
}

void Decoder::closeInnermost(VARIANT& value) {
  ++at_;
  Open& innermost = open_.back();
  if (innermost.dictionary == nullptr) {
    set(value, kVariantArray, &VARIANT::parray, elements_.takeFrom(innermost.firstElement));
  } else {
    maker_.finish(*innermost.dictionary);
    keys_.membersFrom(innermost.firstPlace) =
        static_cast<std::uint8_t>(std::min<std::size_t>(innermost.members, kMostExpected));
    set<IDispatch*>(value, VT_DISPATCH, &VARIANT::pdispVal, innermost.dictionary.release());
  }
  open_.pop_back();
}

void Decoder::readFirstKey(Open& object) {
  readKey(object, keys_.firstUnder(object.place));
  object.firstPlace = object.place;
}

void Decoder::readKey(Open& object, JsonKeys::Place& expected) {
  if (!isAt(u'"')) raiseJsonError(u"Expecting property name");
  const char16_t* const begin = ++at_;
  if (keys_.isAt(expected, at_, end_)) {
    at_ += keys_.lengthAt(expected) + 1;
  } else {
    const std::u16string_view key = readString();
    expected = keys_.find(key, at_ == begin + key.size() + 1);
  }
  object.place = expected;
  object.key = keys_.shareAt(expected);
  ++object.members;
  skipBlanks();
  if (!isAt(u':')) raiseJsonError(u"Expecting : delimiter");
  ++at_;
}

void Decoder::readWord(VARIANT& value) {
  const std::u16string_view rest(at_, static_cast<std::size_t>(end_ - at_));
  const auto skip = [&](std::u16string_view word) {
    if (!rest.starts_with(word)) return false;
    at_ += word.size();
    return true;
  };
  if (skip(u"null")) return set(value, VT_NULL, &VARIANT::lVal, LONG{0});
  if (skip(u"true")) return set(value, VT_BOOL, &VARIANT::boolVal, VARIANT_TRUE);
  if (skip(u"false")) return set(value, VT_BOOL, &VARIANT::boolVal, VARIANT_FALSE);
  readNumber(value);
}

// What is no value of another kind stands for the next number in the text, wherever that begins;
// yet no more characters are passed over than the number has. Deliberate.
void Decoder::readNumber(VARIANT& value) {
  const char16_t* begin = at_;
  if (begin == end_ || !isJsonDigit(*begin)) begin = findNumber();
  const JsonNumber number = readJsonNumber(begin, end_);
  at_ += number.end - begin;
  set(value, VT_R8, &VARIANT::dblVal, number.value);
}

// Where the next number begins. A text of many wrong values before one number asks for the same
// number again and again; remembering the digit that was found keeps that from adding up.
const char16_t* Decoder::findNumber() {
  nextDigit_ = std::find_if(std::max(nextDigit_, at_), end_, isJsonDigit);
  if (nextDigit_ == end_)
    raiseJsonError(
        u"ScanOnce(): Parameter is expected to be a valid JSON string. No JSON object could be "
        u"scanned.");
  return nextDigit_ != at_ && nextDigit_[-1] == u'-' ? nextDigit_ - 1 : nextDigit_;
}

// The characters of a string, good until the next one is read.
std::u16string_view Decoder::readString() {
  const char16_t* const begin = at_;
  at_ = findSpecialInJson(at_, end_);
  if (!isAt(u'"')) return readStringWithEscapes(begin);
  return {begin, static_cast<std::size_t>(at_++ - begin)};
}

std::u16string_view Decoder::readStringWithEscapes(const char16_t* begin) {
  unescaped_.clear();
  while (true) {
    if (at_ == end_) raiseJsonError(u"Unterminated string starting");
    unescaped_.append(begin, at_);
    const char16_t special = *at_++;
    if (special == u'"') return unescaped_;
    if (special != u'\\') raiseJsonError(u"Invalid control character");
    unescaped_ += readEscape();
    begin = at_;
    at_ = findSpecialInJson(at_, end_);
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
      raiseJsonError(u"Invalid escape");
  }
}

constexpr int hexadecimalDigit(char16_t c) noexcept {
  if (c >= u'0' && c <= u'9') return c - u'0';
  if (c >= u'a' && c <= u'f') return c - u'a' + 10;
  if (c >= u'A' && c <= u'F') return c - u'A' + 10;
  return -1;
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
    const int digit = hexadecimalDigit(c);
    isPlain = isPlain && digit >= 0;
    code = code * 16 + digit;
  }
  if (!isPlain) code = int32Of(Variant(u"&H" + std::u16string(digits)));
  return static_cast<char16_t>(code);
}

}  // namespace

Variant decodeJson(std::u16string_view text) { return Decoder(text).run(); }

}  // namespace quendal
