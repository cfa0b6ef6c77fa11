#include "functions/json/json.h"

#include "functions/json/decoder.h"
#include "functions/json/encoder.h"

namespace quendal {

Variant Json::encode(VariantRef& value) { return json::encode(value.value()); }

Variant Json::decode(VariantRef& text) {
  const VARIANT value = text.value();
  if (value.vt == VT_BSTR) return json::decode(viewOf(value.bstrVal));
  return json::decode(textOf(value));
}

}  // namespace quendal
