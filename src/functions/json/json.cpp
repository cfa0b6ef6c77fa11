#include "functions/json/json.h"

#include "functions/json/decoder.h"
#include "functions/json/encoder.h"

namespace quendal {

Variant Json::encode(VariantRef& value) { return encodeJson(value.value()); }

Variant Json::decode(VariantRef& text) {
  const VARIANT value = text.value();
  if (value.vt == VT_BSTR) return decodeJson(viewOf(value.bstrVal));
  return decodeJson(textOf(value));
}

}  // namespace quendal
