#include "functions/json/keys.h"

#include <new>

#include "automation/dictionary_access.h"
#include "functions/json/characters.h"

namespace quendal {
namespace {

// A few bits of a key: the length, its beginning and its end. Only speed depends on them.
std::uint8_t placeOf(std::u16string_view key) noexcept {
  constexpr std::uint64_t kOdd = 0x9E3779B97F4A7C15;
  std::uint64_t bits = key.size();
  if (key.size() >= kJsonWord) {
    bits ^= loadJsonWord(key.data());
    bits = bits * kOdd ^ loadJsonWord(key.data() + key.size() - kJsonWord);
  } else {
    for (const char16_t c : key) bits = bits * kOdd ^ c;
  }
  return static_cast<std::uint8_t>((bits * kOdd) >> 56);
}

}  // namespace

bool JsonKeys::isAt(Place place, const char16_t* at, const char16_t* end) const noexcept {
  const Kept& kept = kept_[place];
  return kept.isPlain && static_cast<std::size_t>(end - at) > kept.length &&
         at[kept.length] == u'"' && isSameJson(plainText(kept.text.get()), at, kept.length);
}

bool JsonKeys::holds(Place place, std::u16string_view key) const noexcept {
  const Kept& kept = kept_[place];
  return kept.text.get() != nullptr && kept.length == key.size() &&
         isSameJson(plainText(kept.text.get()), key.data(), key.size());
}

JsonKeys::Place JsonKeys::find(std::u16string_view key, bool isPlain) {
  // One of two places: two keys of one object must not drive each other out.
  const Place place = placeOf(key);
  const auto other = static_cast<Place>(place ^ 1);
  if (holds(place, key)) return place;
  if (holds(other, key)) return other;
  const bool isTaken = kept_[place].text.get() != nullptr && kept_[other].text.get() == nullptr;
  Kept& kept = kept_[isTaken ? other : place];
  kept.text = Text::attach(automation::newKey(key));
  if (kept.text.get() == nullptr) throw std::bad_alloc();
  kept.length = key.size();
  kept.isPlain = isPlain;
  return isTaken ? other : place;
}

Text JsonKeys::shareAt(Place place) const {
  Text shared = Text::attach(automation::shareKey(kept_[place].text.get()));
  if (shared.get() == nullptr) throw std::bad_alloc();
  return shared;
}

}  // namespace quendal
