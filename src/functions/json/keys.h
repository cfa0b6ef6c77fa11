// The keys that a JSON text has had of late, and which comes after which.
#pragma once

#include <quendal/text.h>

#include <array>
#include <cstdint>
#include <string_view>

namespace quendal {

/// The objects of a text mostly have the same keys in the same order. So a key is looked for first
/// where the key before it was followed the last time, and its text is one that is there already.
/// Keys stand in a fixed number of places, each new one in place of an older one.
class JsonKeys {
 public:
  using Place = std::uint8_t;

  /// The place of the key that is expected after another one, or as the first one of an object that
  /// stands under a key. To be set to the place of the key that came.
  [[nodiscard]] Place& after(Place key) noexcept { return next_[key]; }
  [[nodiscard]] Place& firstUnder(Place key) noexcept { return first_[key]; }

  /// How many members the last object had whose first key stands at a place.
  [[nodiscard]] std::uint8_t& membersFrom(Place key) noexcept { return members_[key]; }

  /// Whether the key of a place stands at `at`, with a double quotation mark behind it.
  [[nodiscard]] bool isAt(Place place, const char16_t* at, const char16_t* end) const noexcept;

  /// Puts a key into its place. `isPlain` when its characters stand so in the text, without
  /// escapes.
  Place find(std::u16string_view key, bool isPlain);

  [[nodiscard]] std::size_t lengthAt(Place place) const noexcept { return kept_[place].length; }
  /// The key of a place that holds one, for one more owner; to be freed like any text, but not to
  /// be changed.
  [[nodiscard]] Text shareAt(Place place) const;

 private:
  [[nodiscard]] bool holds(Place place, std::u16string_view key) const noexcept;

  static constexpr std::size_t kPlaces = 256;

  struct Kept {
    Text text;
    std::size_t length = 0;
    bool isPlain = false;
  };

  std::array<Kept, kPlaces> kept_;
  std::array<Place, kPlaces> next_{};
  std::array<Place, kPlaces> first_{};
  std::array<std::uint8_t, kPlaces> members_{};
};

}  // namespace quendal
