// Date and time formats of the C library as the pictures that pages read ("dd.MM.yyyy").
#pragma once

#include <string>
#include <string_view>

namespace quendal::platform {

/// The formats that other formats refer to.
struct StrftimeFormats {
  std::u16string date;      // %x
  std::u16string time;      // %X
  std::u16string halfDays;  // %r
};

enum class PictureKind { ShortDate, LongDate, Time };

/// The date or the time of a `strftime` format as a picture; a long date spells day and month
/// names out. What belongs to the other half falls away with the text beside it. Empty when the
/// format has nothing of that kind.
[[nodiscard]] std::u16string pictureOf(std::u16string_view format, PictureKind kind,
                                       const StrftimeFormats& formats);

/// The text between the first two elements of a picture: "/" of "M/d/yyyy". Empty when there is
/// none or when it is quoted.
[[nodiscard]] std::u16string pictureSeparator(std::u16string_view picture);

}  // namespace quendal::platform
