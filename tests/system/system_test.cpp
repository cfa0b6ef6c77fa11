// System queries and the platform block.
#include <gtest/gtest.h>

#include "core/apartment.h"
#include "core/dispatch.h"
#include "system/os_info.h"
#include "system/platform_block.h"
#include "system/queries.h"

namespace quendal {
namespace {

TEST(SystemQueries, UpTimeIsRoundedNotCut) {
  const struct {
    std::int32_t ticks;
    const char16_t* text;
  } rows[] = {{0, u"0 Seconds"},
              {1'500, u"2 Seconds"},
              {59'500, u"1 Minutes 0 Seconds"},
              {90'000, u"2 Minutes 30 Seconds"},
              {150'000, u"2 Minutes 30 Seconds"},
              {129'600'000, u"2 Days 12 Hours 0 Minutes 0 Seconds"},
              {-1'500, u"-2 Seconds"},
              {-2'147'483'647 - 1, u"-2147484 Seconds"}};
  for (const auto& row : rows) EXPECT_EQ(system::upTimeText(row.ticks), row.text) << row.ticks;
}

TEST(SystemQueries, TheSystemsNameIsNeverToldButItsRecordIsFilled) {
  apartment().osVersion = {};
  system::recordOSVersion();
  EXPECT_GT(apartment().osVersion.major, 0);
  EXPECT_FALSE(apartment().osVersion.productName.empty());
  EXPECT_EQ(system::queryBitText(), u"32 Bit");
  EXPECT_EQ(system::querySpecialFolder(9999), u"");
}

TEST(OsInfo, ClearsTheErrorStateAsItComesAndGoes) {
  apartment().errorNumber = 5;
  Owned<OsInfo> info = Owned<OsInfo>::make();
  EXPECT_EQ(pendingError(), 0);
  apartment().errorNumber = 5;
  info.reset();
  EXPECT_EQ(pendingError(), 0);
}

TEST(PlatformBlock, ServicePacksAreTrimmedAndPadded) {
  system::recordOSVersion();
  apartment().osVersion.servicePack = u"  Service Pack 3" + std::u16string(1, u'\0') + u"junk ";
  const std::u16string block = system::platformInfoBlock();
  const std::u16string label = u"\r\nService Pack Identifier ";
  // The value begins in column 43.
  EXPECT_EQ(block.find(u" Service Pack 3\r\n"), block.find(label) + 2 + 41);
}

}  // namespace
}  // namespace quendal
