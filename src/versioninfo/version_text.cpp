#include "versioninfo/version_text.h"

#include <span>

#include "base/text.h"

namespace quendal::versioninfo {
namespace {

constexpr std::uint32_t kDriver = 3;
constexpr std::uint32_t kFont = 4;

struct NumberName {
  std::uint32_t number;
  std::u16string_view name;
};

constexpr NumberName kFlags[] = {{1, u"Debug "},   {2, u"PreRel "}, {4, u"Patched "},
                                 {8, u"Private "}, {16, u"Info "},  {32, u"Special "}};

constexpr NumberName kSystems[] = {{0x00010001, u"DOS-Win16"},
                                   {0x00010004, u"DOS-Win32"},
                                   {0x00020002, u"OS/2-16 PM-16"},
                                   {0x00030003, u"OS/2-16 PM-32"},
                                   {0x00040004, u"NT-Win32"}};

constexpr NumberName kTypes[] = {{1, u"Application"}, {2, u"DLL"}, {kDriver, u"Driver"},
                                 {kFont, u"Font"},    {5, u"VxD"}, {7, u"Lib"}};

constexpr NumberName kDrivers[] = {{1, u"Printer drv"}, {2, u"Keyboard drv"}, {3, u"Language drv"},
                                   {4, u"Display drv"}, {5, u"Mouse drv"},    {6, u"Network drv"},
                                   {7, u"System drv"},  {8, u"Installable"},  {9, u"Sound drv"},
                                   {10, u"Comm drv"}};

constexpr NumberName kFonts[] = {{1, u"Raster Font"}, {2, u"Vector Font"}, {3, u"TrueType Font"}};

std::u16string_view find(std::span<const NumberName> names, std::uint32_t number,
                         std::u16string_view otherwise) {
  for (const NumberName& entry : names) {
    if (entry.number == number) return entry.name;
  }
  return otherwise;
}

int highWord(std::uint32_t number) { return static_cast<std::int16_t>(number >> 16); }
int lowWord(std::uint32_t number) { return static_cast<std::int16_t>(number & 0xFFFF); }

}  // namespace

std::u16string structureVersionText(std::uint32_t version) {
  return decimalText(highWord(version)) + u'.' + decimalText(lowWord(version));
}

std::u16string versionText(std::uint32_t high, std::uint32_t low) {
  const int build = highWord(low);
  const int revision = lowWord(low);
  // Build and revision run into each other without a separator; this is deliberate.
  return decimalText(highWord(high)) + u'.' + decimalText(lowWord(high), 2) + u'.' +
         (build > 0 ? decimalText(build, 2) + decimalText(revision, 2) : decimalText(revision, 4));
}

std::u16string fileFlagsText(std::uint32_t flags) {
  std::u16string text;
  for (const NumberName& flag : kFlags) {
    if (flags & flag.number) text += flag.name;
  }
  return text;
}

std::u16string_view fileOsText(std::uint32_t operatingSystem) {
  return find(kSystems, operatingSystem, u"Unknown");
}

std::u16string_view fileTypeText(std::uint32_t type) { return find(kTypes, type, u""); }

std::u16string_view fileSubtypeText(std::uint32_t type, std::uint32_t subtype) {
  if (type == kDriver) return find(kDrivers, subtype, u"Unknown");
  if (type == kFont) return find(kFonts, subtype, u"");
  return u"";
}

}  // namespace quendal::versioninfo
