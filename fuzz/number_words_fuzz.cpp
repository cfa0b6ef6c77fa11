// Spells numbers and arbitrary text; never fails, and whole numbers give words and blanks only.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "strings/number_words.h"
#include "strings/string_functions.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quendal;
  StringFunctions functions;
  const std::u16string text(data, data + size);
  (void)strings::spell(text);
  if (functions.numberToWords(Variant(text)).vt != VT_BSTR) std::abort();
  if (double number = 0; size >= sizeof(number)) {
    std::memcpy(&number, data, sizeof(number));
    if (functions.numberToWords(Variant(number)).vt != VT_BSTR) std::abort();
    std::int32_t whole = 0;
    std::memcpy(&whole, data, sizeof(whole));
    const Variant words = functions.numberToWords(Variant(whole));
    const bool onlyWords = std::ranges::all_of(
        viewOf(words.bstrVal), [](char16_t c) { return c == u' ' || (c >= u'a' && c <= u'z'); });
    if (words.vt != VT_BSTR || !onlyWords) std::abort();
  }
  return 0;
}
