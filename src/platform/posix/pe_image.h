// The way to the version resource of an executable image (PE32 and PE32+): headers, section table
// and the three levels of the resource directory. Nothing that the file says is trusted; a file
// that lies is one without a version resource.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/posix/byte_source.h"

namespace quendal::platform {

/// The first bytes of a version block say in 16 bits how long it is; more cannot belong to it.
inline constexpr std::size_t kLongestVersionBlock = 0xFFFF;

/// The block of the version resource (type 16, name 1), at most `kLongestVersionBlock` bytes; what
/// is there of it when the file ends early. Empty when the file is no image or has no such
/// resource. Of several languages the neutral one is taken, else English (United States), else the
/// first that is listed.
[[nodiscard]] std::vector<std::byte> readVersionBlock(ByteSource& image);

}  // namespace quendal::platform
