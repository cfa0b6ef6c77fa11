#include "functions/json/decoder.h"

#include <quendal/object.h>

#include <algorithm>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "automation/dictionary_access.h"
#include "base/characters.h"
#include "functions/json/characters.h"
#include "functions/json/error.h"
#include "functions/json/nesting_limit.h"
#include "functions/json/number.h"

namespace quendal::json {
namespace {

struct ReleaseDictionary {
  void operator()(automation::IDictionary* dictionary) const noexcept { dictionary->Release(); }
};
using OwnedDictionary = std::unique_ptr<automation::IDictionary, ReleaseDictionary>;

class Decoder {
 public:
  explicit Decoder(std::u16string_view text) noexcept
      : at_(text.data()), end_(at_ + text.size()), nextDigit_(at_) {}

  Variant run();

 private:
  /// An array or object whose end has not come yet.
  struct Open {
    OwnedDictionary dictionary;  // null for an array
    Text key;                    // of the member whose value comes next
    std::size_t firstElement = 0;
  };

  [[nodiscard]] bool isAt(char16_t c) const noexcept { return at_ != end_ && *at_ == c; }
  void skipBlanks() noexcept { at_ = std::find_if_not(at_, end_, isBlank); }

  std::optional<Variant> beginValue();
  std::optional<Variant> beginObject();
  std::optional<Variant> beginArray();
  std::optional<Variant> continueWith(Variant value);
  void addMember(Open& object, Variant value);
  void readKey(Open& object);
  Variant closeInnermost();
  Variant takeElements(std::size_t first);

  Variant readWord();
  Variant readNumber();
  const char16_t* findNumber();
  std::u16string_view readString();
  std::u16string_view readStringWithEscapes(const char16_t* begin);
  char16_t readEscape();
  char16_t readCode();

  const char16_t* at_;
  const char16_t* const end_;
  const char16_t* nextDigit_;      // no digit stands from where findNumber last looked up to here
  std::vector<Open> open_;         // in place of calls within calls: they would use up the stack
  std::vector<Variant> elements_;  // of the arrays that are open, those of the innermost one last
  std::u16string unescaped_;       // a string with escapes
  NestingLimit limit_;
  automation::DictionaryMaker maker_;
};

Variant Decoder::run() {
  std::optional<Variant> value;
  do {
    value = beginValue();
    while (value && !open_.empty()) value = continueWith(std::move(*value));
  } while (!value);
  return std::move(*value);
}

// Reads a value, or only the start of an array or object, whose first value comes next then: that
// gives nothing.
std::optional<Variant> Decoder::beginValue() {
  skipBlanks();
  switch (at_ != end_ ? *at_ : u'\0') {
    case u'{':
      return beginObject();
    case u'[':
      return beginArray();
    case u'"':
      ++at_;
      return Variant(readString());
    default:
      return readWord();
  }
}

std::optional<Variant> Decoder::beginObject() {
  limit_.checkBelow(open_.size());
  ++at_;
  OwnedDictionary dictionary(maker_.make(0));
  if (dictionary == nullptr) throw AutomationError(error_number::kCannotCreate);
  open_.push_back({std::move(dictionary), {}});
  skipBlanks();
  if (isAt(u'}')) return closeInnermost();
  readKey(open_.back());
  return std::nullopt;
}

std::optional<Variant> Decoder::beginArray() {
  limit_.checkBelow(open_.size());
  ++at_;
  open_.push_back({nullptr, {}, elements_.size()});
  skipBlanks();
  if (isAt(u']')) return closeInnermost();
  return std::nullopt;
}

// Puts a value into the innermost array or object. Gives that when this was its last one.
std::optional<Variant> Decoder::continueWith(Variant value) {
  Open& innermost = open_.back();
  const bool isObject = innermost.dictionary != nullptr;
  if (isObject)
    addMember(innermost, std::move(value));
  else
    elements_.push_back(std::move(value));
  skipBlanks();
  if (isAt(isObject ? u'}' : u']')) return closeInnermost();
  if (!isAt(u',')) raiseError(u"Expecting , delimiter");
  ++at_;
  if (isObject) {
    skipBlanks();
    readKey(innermost);
  }
  return std::nullopt;
}

void Decoder::addMember(Open& object, Variant value) {
  VARIANT item = value.release();
  const HRESULT code = maker_.add(*object.dictionary, object.key.release(), item);
  if (SUCCEEDED(code)) return;
  // The error leaves with the standard text of its number instead of the dictionary's own.
  SetErrorInfo(0, nullptr);
  throw AutomationError(AutomationError::fromRuntime(code).number());
}

Variant Decoder::closeInnermost() {
  ++at_;
  Open closed = std::move(open_.back());
  open_.pop_back();
  if (closed.dictionary == nullptr) return takeElements(closed.firstElement);
  VARIANT value{};
  value.vt = VT_DISPATCH;
  value.pdispVal = closed.dictionary.release();
  return Variant::attach(value);
}

// Moves the elements from `first` on into an array of their own: no vector, as pages may push
// onto it.
Variant Decoder::takeElements(std::size_t first) {
  SAFEARRAYBOUND bound{static_cast<ULONG>(elements_.size() - first), 0};
  SAFEARRAY* array = SafeArrayCreate(VT_VARIANT, 1, &bound);
  if (array == nullptr) throw std::bad_alloc();
  auto* place = static_cast<VARIANT*>(array->pvData);
  for (std::size_t i = first; i < elements_.size(); ++i) *place++ = elements_[i].release();
  elements_.resize(first);
  return Variant::array(array);
}

void Decoder::readKey(Open& object) {
  if (!isAt(u'"')) raiseError(u"Expecting property name");
  ++at_;
  object.key = Text::attach(automation::newKey(readString()));
  if (object.key.get() == nullptr) throw std::bad_alloc();
  skipBlanks();
  if (!isAt(u':')) raiseError(u"Expecting : delimiter");
  ++at_;
}

// A value that is one of three words, or else a number.
Variant Decoder::readWord() {
  const std::u16string_view rest(at_, static_cast<std::size_t>(end_ - at_));
  const auto skip = [&](std::u16string_view word) {
    if (!rest.starts_with(word)) return false;
    at_ += word.size();
    return true;
  };
  if (skip(u"null")) return Variant::null();
  if (skip(u"true")) return Variant(Boolean::True);
  if (skip(u"false")) return Variant(Boolean::False);
  return readNumber();
}

// Where no value of another kind stands, the next number of the text counts as the value, however
// far away it begins. What is passed over is not the way up to it, but as many characters from
// here on as the number has. Deliberate.
Variant Decoder::readNumber() {
  const char16_t* const begin = findNumber();
  const Number number = json::readNumber(begin, end_);
  at_ += number.end - begin;
  return Variant(number.value);
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
