// Decoding and encoding against the same values made and read by hand with the system's own calls,
// and neither parsed nor put together: nothing that makes dictionaries and arrays is much faster.
// Reading by hand lets the system make the text of each number.
#include <quendal/automation.h>

#include <memory>
#include <string>

#include "automation/dictionary_abi.h"
#include "bench/json_documents.h"
#include "bench/json_sides.h"

namespace quendal::bench {
namespace {

using automation::IDictionary;

void must(bool done) {
  if (!done) std::abort();
}

BSTR textOf(const RapidValue& text) {
  return SysAllocStringLen(oleText(text.GetString()), static_cast<UINT>(text.GetStringLength()));
}

/// Makes the values of a document that is parsed already.
class Maker {
 public:
  Maker() {
    void* found = nullptr;
    check(CoGetClassObject(automation::kClsidDictionary, CLSCTX_INPROC_SERVER, nullptr,
                           IID_IClassFactory, &found));
    factory_ = static_cast<IClassFactory*>(found);
  }
  ~Maker() { factory_->Release(); }
  Maker(const Maker&) = delete;
  Maker& operator=(const Maker&) = delete;

  VARIANT make(const RapidValue& from) const {
    VARIANT value;
    VariantInit(&value);
    if (from.IsObject()) {
      value.vt = VT_DISPATCH;
      value.pdispVal = makeDictionary(from);
    } else if (from.IsArray()) {
      value.vt = VT_ARRAY | VT_VARIANT;
      value.parray = makeArray(from);
    } else if (from.IsString()) {
      value.vt = VT_BSTR;
      value.bstrVal = textOf(from);
    } else if (from.IsBool()) {
      value.vt = VT_BOOL;
      value.boolVal = from.GetBool() ? VARIANT_TRUE : VARIANT_FALSE;
    } else if (from.IsInt()) {
      value.vt = VT_I4;
      value.lVal = from.GetInt();
    } else if (from.IsNumber()) {
      value.vt = VT_R8;
      value.dblVal = from.GetDouble();
    } else {
      value.vt = VT_NULL;
    }
    return value;
  }

 private:
  IDictionary* makeDictionary(const RapidValue& from) const {
    void* found = nullptr;
    check(factory_->CreateInstance(nullptr, automation::kIidDictionary, &found));
    auto* dictionary = static_cast<IDictionary*>(found);
    for (const auto& member : from.GetObject()) {
      VARIANT key = make(member.name);
      VARIANT item = make(member.value);
      check(dictionary->Add(&key, &item));
      VariantClear(&key);
      VariantClear(&item);
    }
    return dictionary;
  }

  SAFEARRAY* makeArray(const RapidValue& from) const {
    SAFEARRAY* array = SafeArrayCreateVector(VT_VARIANT, 0, from.Size());
    must(array != nullptr);
    auto* element = static_cast<VARIANT*>(array->pvData);
    for (const RapidValue& value : from.GetArray()) *element++ = make(value);
    return array;
  }

  IClassFactory* factory_;
};

/// Reads every value, numbers with fractions as text, and counts the characters.
std::size_t readByHand(const VARIANT& value) {
  if (value.vt == VT_BSTR) return SysStringLen(value.bstrVal);
  std::size_t characters = 0;
  if (value.vt == VT_R8) {
    BSTR text = nullptr;
    check(VarBstrFromR8(value.dblVal, LOCALE_INVARIANT, 0, &text));
    characters = SysStringLen(text);
    SysFreeString(text);
  } else if (value.vt == VT_DISPATCH) {
    auto* dictionary = static_cast<IDictionary*>(value.pdispVal);
    VARIANT keys{}, items{};
    check(dictionary->Keys(&keys));
    check(dictionary->Items(&items));
    characters = readByHand(keys) + readByHand(items);
    VariantClear(&keys);
    VariantClear(&items);
  } else if ((value.vt & VT_ARRAY) != 0) {
    const auto* elements = static_cast<const VARIANT*>(value.parray->pvData);
    for (ULONG i = 0; i < value.parray->rgsabound[0].cElements; ++i)
      characters += readByHand(elements[i]);
  }
  return characters;
}

void measure(const JsonDocument& document) {
  const OurJson json;
  const Maker maker;
  Variant text(document.utf16);
  const std::size_t size = document.utf16.size();
  RapidDocument parsed;
  parsed.Parse<rapidjson::kParseFullPrecisionFlag>(document.utf16.c_str());
  const auto ours = [&] { return json.decode(text); };
  const auto byHand = [&] { return Variant::attach(maker.make(parsed)); };

  Variant value = ours(), sameValue = byHand();
  const Variant encoded = json.encode(value), sameEncoded = json.encode(sameValue);
  must(viewOf(encoded.bstrVal) == viewOf(sameEncoded.bstrVal));

  speeds("decode " + document.name + ", Mchar/s (by hand)", size, ours, byHand);
  speeds(
      "encode " + document.name + ", Mchar/s (reading)", size, [&] { return json.encode(value); },
      [&] { return readByHand(value); });
}

}  // namespace

void run() {
  for (const JsonDocument& document : jsonDocuments()) measure(document);
}

}  // namespace quendal::bench
