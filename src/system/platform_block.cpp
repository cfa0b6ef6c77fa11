#include "system/platform_block.h"

#include "base/text.h"
#include "core/apartment.h"
#include "core/product.h"
#include "system/host_address.h"
#include "system/queries.h"

namespace quendal::system {
namespace {

constexpr std::u16string_view kLineEnd = u"\r\n";

const std::u16string& ruleLine() {
  static const std::u16string line(80, u'*');
  return line;
}

/// Trims the stored field in place (it is 128 characters, padded with blanks) and returns the
/// text before its first NUL.
std::u16string servicePackText() {
  constexpr std::size_t kFieldLength = 128;
  std::u16string& field = apartment().osVersion.servicePack;
  field = std::u16string(trimBlanks(field));
  std::u16string text = field.substr(0, field.find(u'\0'));
  field.resize(kFieldLength, u' ');
  return text;
}

std::u16string libraryVersion() {
  return decimalText(product::kMajor) + u"." + decimalText(product::kMinor) + u"." +
         decimalText(product::kRevision);
}

}  // namespace

std::vector<PlatformFact> platformFacts() {
  const std::u16string servicePack = servicePackText();
  const std::u16string webServer = queryIISVersion();
  const OSVersionState& os = apartment().osVersion;
  return {
      {u"Machine Name", queryComputerName()},
      {u"Operating System", os.productName},
      {u"Operating System Bit", queryBitText()},
      {u"Operating System Major Version", decimalText(os.major)},
      {u"Operating System Minor Version", decimalText(os.minor)},
      {u"Operating System Build Level", decimalText(os.build)},
      {u"Operating System Platform", decimalText(os.platformId)},
      {u"Service Pack Identifier", servicePack},
      {u"Microsoft IIS Version", webServer},
      {std::u16string(product::kName) + u" Version", libraryVersion()},
      {u"Network IP Address", queryIPAddress()},
      {u".NET Framework Version", queryDotNetVersion()},
  };
}

std::u16string formatInfoRow(std::u16string_view label, std::u16string_view value,
                             std::size_t indent, std::size_t width) {
  if (label.size() > width) throw AutomationError(error_number::kInvalidCall);
  std::u16string row(indent, u' ');
  row.append(label).append(1, u' ').append(width - label.size(), u'.').append(1, u' ');
  return row.append(value);
}

std::u16string platformInfoBlock() {
  constexpr std::size_t kWidth = 40;
  std::u16string block = ruleLine();
  const auto addLine = [&block](std::u16string_view line) { block.append(kLineEnd).append(line); };
  addLine(u"");
  addLine(u"*** Platform Information ***");
  addLine(u"");
  for (const PlatformFact& fact : platformFacts())
    addLine(formatInfoRow(fact.label, fact.value, 0, kWidth));
  addLine(u"");
  addLine(ruleLine());
  addLine(u"");
  return block;
}

std::u16string platformBanner() {
  std::u16string banner = ruleLine();
  banner.append(kLineEnd).append(kLineEnd).append(product::kFileDescription);
  banner.append(kLineEnd).append(kLineEnd);
  banner += replaceAll(product::kLegalNotice, u"  ", kLineEnd);
  banner.append(kLineEnd).append(kLineEnd);
  return banner.append(platformInfoBlock()).append(kLineEnd);
}

}  // namespace quendal::system
