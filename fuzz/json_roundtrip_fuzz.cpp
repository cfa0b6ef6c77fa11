// Decodes, encodes, decodes and encodes again: both JSON texts must be the same.
#include <quendal/object.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <vector>

#include "automation/dictionary_access.h"
#include "functions/json/characters.h"
#include "functions/json/decoder.h"
#include "functions/json/encoder.h"
#include "json_input.h"

namespace quendal {
namespace {

/// Whether keys have characters that would need escapes, which they deliberately do not get.
bool hasSpecialKey(const VARIANT& value) {
  std::vector<VARIANT> rest{value};  // borrowed
  while (!rest.empty()) {
    const VARIANT next = rest.back();
    rest.pop_back();
    if (next.vt == kVariantArray) {
      const auto* elements = static_cast<const VARIANT*>(next.parray->pvData);
      rest.insert(rest.end(), elements, elements + next.parray->rgsabound[0].cElements);
    } else if (next.vt == VT_DISPATCH) {
      automation::DictionaryReader reader(*next.pdispVal);
      while (reader.next() == S_OK) {
        if (std::ranges::any_of(viewOf(reader.key().bstrVal), json::isSpecial)) return true;
        rest.push_back(reader.item());
      }
    }
  }
  return false;
}

/// Nothing when the call raises an error.
template <class Call>
std::optional<Variant> attempt(Call&& call, std::int32_t& error) {
  try {
    return call();
  } catch (const AutomationError& raised) {
    error = raised.number();
    return std::nullopt;
  }
}

}  // namespace
}  // namespace quendal

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quendal;
  std::int32_t error = 0;
  const auto text = fuzz::jsonText(data, size);
  const auto value = attempt([&] { return json::decode(text); }, error);
  if (!value) return 0;
  const auto first = attempt([&] { return json::encode(*value); }, error);
  if (!first) return error == error_number::kOutOfStack ? 0 : (std::abort(), 0);
  if (hasSpecialKey(*value)) return 0;
  const auto again = attempt([&] { return json::decode(viewOf(first->bstrVal)); }, error);
  // The largest doubles are out of range when they are rounded to fifteen digits.
  if (!again) return error == error_number::kOverflow ? 0 : (std::abort(), 0);
  const Variant second = json::encode(*again);
  if (viewOf(first->bstrVal) != viewOf(second.bstrVal)) std::abort();
  return 0;
}
