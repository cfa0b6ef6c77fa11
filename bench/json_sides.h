// Both sides of the rows on JSON: the library through its function table, and a well-known one.
#pragma once

#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <string>

#include "bench/row.h"
#include "core/dispatch.h"
#include "functions/json/json.h"

namespace quendal::bench {

/// The function table of `JSON`. Not in the unnamed namespace, where the compiler sees that nobody
/// implements it.
struct JsonTable : IDispatch {
  virtual HRESULT STDMETHODCALLTYPE Encode(VARIANT* value, VARIANT* result) = 0;
  virtual HRESULT STDMETHODCALLTYPE Decode(VARIANT* text, VARIANT* result) = 0;
};

class OurJson {
 public:
  OurJson() : object_(Owned<Json>::make().object()) {}

  Variant encode(VARIANT& value) const { return call(&JsonTable::Encode, value); }
  Variant decode(VARIANT& text) const { return call(&JsonTable::Decode, text); }

 private:
  Variant call(HRESULT (STDMETHODCALLTYPE JsonTable::*member)(VARIANT*, VARIANT*),
               VARIANT& argument) const {
    Variant result;
    check((reinterpret_cast<JsonTable*>(object_.dispatch())->*member)(&argument, &result));
    return result;
  }

  Object object_;
};

using Utf16 = rapidjson::UTF16<char16_t>;
using RapidDocument = rapidjson::GenericDocument<Utf16>;
using RapidValue = RapidDocument::ValueType;
using RapidBuffer = rapidjson::GenericStringBuffer<Utf16>;
using RapidWriter = rapidjson::Writer<RapidBuffer, Utf16, Utf16>;

inline std::unique_ptr<RapidDocument> rapidDecode(const std::u16string& text) {
  auto document = std::make_unique<RapidDocument>();
  document->Parse(text.c_str());
  if (document->HasParseError()) std::abort();
  return document;
}

inline std::unique_ptr<RapidBuffer> rapidEncode(const RapidDocument& document) {
  auto buffer = std::make_unique<RapidBuffer>();
  RapidWriter writer(*buffer);
  document.Accept(writer);
  return buffer;
}

/// A row of million characters a second.
template <class Ours, class Peer>
void speeds(const std::string& name, std::size_t characters, Ours&& ours, Peer&& peer) {
  const Times times = timesOf(1, ours, peer, 15);
  const auto size = static_cast<double>(characters);
  row(name, size / times.ours, size / times.peer);
}

}  // namespace quendal::bench
