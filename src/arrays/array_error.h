// The error that the array functions raise.
#pragma once

namespace quendal {

/// Script-visible number of the array functions' own errors; their source is the library.
inline constexpr int kArrayError = 5002;

}  // namespace quendal
