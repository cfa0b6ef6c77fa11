#include "functions/json/encoder.h"

#include <quendal/object.h>

#include <deque>
#include <utility>
#include <variant>

#include "automation/dictionary_access.h"
#include "base/text.h"
#include "core/array_view.h"
#include "functions/json/error.h"
#include "functions/json/nesting_limit.h"
#include "functions/json/recordset.h"
#include "functions/json/writer.h"

namespace quendal::json {
namespace {

// The containers whose end is not written yet. `held` keeps a container that nobody else does.
struct OpenArray {
  OpenArray(const VARIANT& array, Variant* owner)
      : view(array),
        next(reinterpret_cast<const VARIANT*>(view.bytes().data())),
        end(next + view.size()) {
    if (owner != nullptr) held = std::move(*owner);
  }

  Variant held;
  ArrayView view;  // let go before what is held
  const VARIANT* next;
  const VARIANT* const end;
  bool isFirst = true;
};

struct OpenDictionary {
  explicit OpenDictionary(IUnknown& object) noexcept : reader(object) {}

  automation::DictionaryReader reader;
  bool isFirst = true;
};

// An object that is called a dictionary but is only reached by name.
struct OpenNamedDictionary {
  explicit OpenNamedDictionary(const Object& dictionary)
      : dictionary(dictionary), keyList(dictionary.call(u"Keys")), keys(arrayIn(keyList)) {}

  static const VARIANT& arrayIn(const VARIANT& keyList) {
    if (keyList.vt != kVariantArray || keyList.parray == nullptr)
      throw AutomationError(error_number::kTypeMismatch);
    return keyList;
  }

  Object dictionary;
  Variant keyList;
  ArrayView keys;
  std::size_t next = 0;
};

using Open = std::variant<OpenArray, OpenDictionary, OpenNamedDictionary>;

class Encoder {
 public:
  void encode(const VARIANT& value);

  [[nodiscard]] Text take() { return out_.take(); }

 private:
  bool begin(const VARIANT& value, Variant* owner = nullptr);
  bool beginArray(const VARIANT& value, Variant* owner);
  bool beginObject(const VARIANT& value);
  void writeRecordset(const Object& recordset);
  void writePlain(const VARIANT& value);

  void goOn(OpenArray& array);
  void goOn(OpenDictionary& dictionary);
  void goOn(OpenNamedDictionary& dictionary);
  bool beginMember(const VARIANT& key, Variant&& item, bool isFirst);
  void close(char16_t bracket);

  Writer out_;
  std::deque<Open> open_;  // in place of calls within calls: they would use up the stack
  NestingLimit limit_;
};

void Encoder::encode(const VARIANT& value) {
  const std::size_t outside = open_.size();
  try {
    begin(value);
    while (open_.size() > outside)
      std::visit([this](auto& innermost) { goOn(innermost); }, open_.back());
  } catch (...) {
    // The innermost first: it may be locked inside what the one around it holds.
    while (open_.size() > outside) open_.pop_back();
    throw;
  }
}

// An error value by its number, as a script shows it.
std::u16string errorText(SCODE code) {
  return u"Error " + decimalText(AutomationError::fromRuntime(code).number());
}

// Writes a value, or only the start of an array or dictionary, which is the innermost one then.
// Returns whether that is so. `owner`, if there is one, holds what nobody else does, and gives it
// away where that has to last.
bool Encoder::begin(const VARIANT& value, Variant* owner) {
  switch (value.vt) {
    case kVariantArray:
      return beginArray(value, owner);
    case VT_DISPATCH:
    case VT_UNKNOWN:
      return beginObject(value);
    default:
      break;
  }
  if ((value.vt & VT_BYREF) != 0) {
    const VARIANT target = follow(value);
    return begin(target, owner);
  }
  writePlain(value);
  return false;
}

void Encoder::writePlain(const VARIANT& value) {
  switch (value.vt) {
    case VT_BSTR:
      return out_.putText(viewOf(value.bstrVal));
    case VT_R8:
      return out_.putNumber(value.dblVal);
    case VT_I2:
      return out_.putInteger(value.iVal);
    case VT_I4:
      return out_.putInteger(value.lVal);
    case VT_R4:
      return out_.putNumber(textOf(value));
    case VT_NULL:
      return out_.put(u"null");
    case VT_BOOL:
      return out_.put(value.boolVal != VARIANT_FALSE ? u"true" : u"false");
    case VT_ERROR:
      return out_.putQuoted(errorText(value.scode));
    default:  // deliberately without escapes; arrays of other elements have no text: 13
      return out_.putQuoted(textOf(value));
  }
}

bool Encoder::beginArray(const VARIANT& value, Variant* owner) {
  limit_.checkBelow(open_.size());
  if (value.parray == nullptr) {
    out_.put(u"[]");  // no elements yet
    return false;
  }
  out_.put(u'[');
  open_.emplace_back(std::in_place_type<OpenArray>, value, owner);
  return true;
}

bool Encoder::beginObject(const VARIANT& value) {
  limit_.checkBelow(open_.size());
  // An object is asked only while it is held: what it does may replace where it stands.
  const Variant held = Variant::copyOf(value);
  if (held.punkVal != nullptr) {
    Open& open = open_.emplace_back(std::in_place_type<OpenDictionary>, *held.punkVal);
    if (std::get<OpenDictionary>(open).reader.isDictionary()) {
      out_.put(u'{');
      return true;
    }
    open_.pop_back();
  }
  const std::u16string name = typeNameOf(held);
  const bool isRecordset = name == u"Recordset";
  if (!isRecordset && name != u"Dictionary")
    raiseError(u"(DLL) JSON does not support " + name + u" object types yet.");
  const Object object = Object::from(held);
  if (isRecordset) {
    writeRecordset(object);
    return false;
  }
  out_.put(u'{');
  open_.emplace_back(std::in_place_type<OpenNamedDictionary>, object);
  return true;
}

// A cursor's members run code of its own, so it is written by calls: a field's value may be a
// cursor again.
void Encoder::writeRecordset(const Object& recordset) {
  constexpr std::size_t kStackOfCursor = 65'536;
  if (platform::remainingStack() < kStackOfCursor) throw AutomationError(error_number::kOutOfStack);
  json::writeRecordset(recordset, out_, [this](const VARIANT& value) { encode(value); });
}

// Each goes on up to the next array or dictionary inside, or to the end.

void Encoder::goOn(OpenArray& array) {
  while (array.next != array.end) {
    if (!std::exchange(array.isFirst, false)) out_.put(u',');
    if (begin(*array.next++)) return;
  }
  close(u']');
}

void Encoder::goOn(OpenDictionary& dictionary) {
  automation::DictionaryReader& reader = dictionary.reader;
  HRESULT step = reader.next();
  for (; step == S_OK; step = reader.next()) {
    const bool isFirst = std::exchange(dictionary.isFirst, false);
    if (reader.key().vt == VT_BSTR) {
      out_.putKey(viewOf(reader.key().bstrVal), isFirst);
      if (begin(reader.item())) return;
    } else {
      // A key that is an object gives its text itself, and may change the dictionary then.
      const Variant key = Variant::copyOf(reader.key());
      if (beginMember(key, Variant::copyOf(reader.item()), isFirst)) return;
    }
  }
  check(step);
  close(u'}');
}

void Encoder::goOn(OpenNamedDictionary& dictionary) {
  while (dictionary.next != dictionary.keys.size()) {
    const bool isFirst = dictionary.next == 0;
    const VARIANT key = dictionary.keys.at(dictionary.next++);
    if (beginMember(key, dictionary.dictionary.get(u"Item", Variant::copyOf(key)), isFirst)) return;
  }
  close(u'}');
}

// Deliberately no escapes in keys.
bool Encoder::beginMember(const VARIANT& key, Variant&& item, bool isFirst) {
  out_.putKey(textOf(key), isFirst);
  const VARIANT value = item;
  return begin(value, &item);
}

void Encoder::close(char16_t bracket) {
  out_.put(bracket);
  open_.pop_back();
}

}  // namespace

Variant encode(const VARIANT& value) {
  Encoder encoder;
  encoder.encode(value);
  return Variant(encoder.take());
}

}  // namespace quendal::json
