#include "strings/file_size.h"

#include <cmath>
#include <string_view>

#include "platform/locale.h"

namespace quendal::strings {
namespace {

constexpr double kKilo = 1024;

struct Range {
  double below;  // whole KB
  double unit;   // bytes
  int decimals;
  std::u16string_view name;
};

constexpr Range kRanges[] = {
    {10, kKilo, 2, u"KB"},
    {100, kKilo, 1, u"KB"},
    {1000, kKilo, 0, u"KB"},
    {10000, kKilo* kKilo, 2, u"MB"},
    {100000, kKilo* kKilo, 1, u"MB"},
    {1000000, kKilo* kKilo, 0, u"MB"},
    {10000000, kKilo* kKilo* kKilo, 2, u"GB"},
};

}  // namespace

std::u16string bytesText(double size) { return platform::formatNumber(size, 0) + u" bytes"; }

std::u16string fileSizeText(double size) {
  if (!std::isfinite(size)) return {};
  if (size < kKilo) return bytesText(size);
  // The host's whole-number division rounds its operands first.
  const double whole = std::floor(std::nearbyint(size) / kKilo);
  for (const Range& range : kRanges) {
    if (whole < range.below) {
      return platform::formatNumber(size / range.unit, range.decimals).append(range.name);
    }
  }
  return {};
}

}  // namespace quendal::strings
