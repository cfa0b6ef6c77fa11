#include "system/platform_block.h"

#include "base/text.h"
#include "core/apartment.h"
#include "core/product.h"
#include "platform/identities.h"
#include "system/host_address.h"
#include "system/queries.h"

namespace quendal::system {
namespace {

constexpr std::size_t kLabelWidth = 40;
static_assert(product::kName.size() + std::u16string_view(u" Version").size() <= kLabelWidth);

std::u16string ruleLine() { return std::u16string(80, u'*'); }

/// The field is 128 characters: the text, a NUL, and whatever the system left behind it.
std::u16string servicePackText() {
  const std::u16string_view field = trimBlanks(apartment().osVersion.servicePack);
  return std::u16string(field.substr(0, field.find(u'\0')));
}

std::u16string libraryVersion() {
  return decimalText(product::kMajor) + u"." + decimalText(product::kMinor) + u"." +
         decimalText(product::kRevision);
}

}  // namespace

std::vector<PlatformFact> platformFacts() {
  const OSVersionState& os = apartment().osVersion;
  return {
      {u"Machine Name", platform::computerName()},
      {u"Operating System", os.productName},
      {u"Operating System Bit", queryBitText()},
      {u"Operating System Major Version", decimalText(os.major)},
      {u"Operating System Minor Version", decimalText(os.minor)},
      {u"Operating System Build Level", decimalText(os.build)},
      {u"Operating System Platform", decimalText(os.platformId)},
      {u"Service Pack Identifier", servicePackText()},
      {u"Microsoft IIS Version", queryIISVersion()},
      {std::u16string(product::kName) + u" Version", libraryVersion()},
      {u"Network IP Address", queryIPAddress()},
      {u".NET Framework Version", queryDotNetVersion()},
  };
}

std::u16string platformInfoBlock() {
  std::u16string block = ruleLine();
  const auto addLine = [&block](std::u16string_view line) { block.append(kLineEnd).append(line); };
  addLine(u"");
  addLine(u"*** Platform Information ***");
  addLine(u"");
  for (const auto& [label, value] : platformFacts())
    addLine(label + u' ' + std::u16string(kLabelWidth - label.size(), u'.') + u' ' + value);
  addLine(u"");
  addLine(ruleLine());
  addLine(u"");
  return block;
}

std::u16string platformBanner() {
  const std::u16string gap = std::u16string(kLineEnd).append(kLineEnd);
  std::u16string banner = ruleLine() + gap;
  banner.append(product::kFileDescription).append(gap);
  banner.append(replaceAll(product::kLegalNotice, u"  ", kLineEnd)).append(gap);
  return banner.append(platformInfoBlock()).append(kLineEnd);
}

}  // namespace quendal::system
