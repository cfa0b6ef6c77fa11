// FormatDateTime, IsTimeOnly and IsDateOnly.
#include <gtest/gtest.h>

#include <limits>
#include <tuple>

#include "base/date.h"
#include "core/apartment.h"
#include "tests/core/raw_call.h"
#include "tests/strings/strings_object.h"
#include "tests/support/script_object.h"
#include "tests/support/text_rows.h"

namespace quendal::test {
namespace {

const std::string kInvalid = "\"### FormatDateTime: Invalid Format ###\"";

Variant date(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
  return Variant::date(dateSerial(year, month, day, hour, minute, second));
}

TEST(FormatDateTime, ReplacesEveryToken) {
  const Variant afternoon = date(2005, 3, 5, 14, 7, 9), midnight = date(2005, 1, 3, 0, 30);
  const Variant noon = date(2005, 12, 31, 12);
  const std::tuple<Variant, const char16_t*, const char*> rows[] = {
      {afternoon, u"#WWWW, #DD #MMMM #YYYY #HH24:#NN:#SS", "Saturday, 05 March 2005 14:07:09"},
      {afternoon, u"#UWWWW #UMMMM #UWWW #UMMM #WWW #MMM", "SATURDAY MARCH SAT MAR Sat Mar"},
      {afternoon, u"#WW #W #S #N #M #D #YY #MM", "S 7 9 7 3 5 05 03"},
      {afternoon, u"#LNTH #UNTH #NTH", "5th 5TH 5th"},
      {afternoon, u"#HH12 #H12 #HH #H24 #H", "02 2 14 14 14"},
      {afternoon, u"#HH12 #H12 #HH #H24 #H #AMPM", "02 2 02 14 14 PM"},
      {midnight, u"#HH12 #H12 #HH #H24 #HH24 #H", "00 0 00 0 00 0"},
      {midnight, u"#HH12 #H12 #HH #H24 #HH24 #H #AMPM", "12 12 12 0 00 0 AM"},
      {midnight, u"#MMMM#MM", "January01"},
      {noon, u"#H12 #HH #AMPM", "12 12 PM"},
      {noon, u"", ""},
      {noon, u"#Dd #dd #X # ## #", "31d #dd #X # ## #"},
      {date(100, 1, 1), u"#YYYY #YY #WWWW", "100 00 Friday"},
      {date(9999, 12, 31, 23, 59, 59), u"#UNTH #MMM #YYYY #HH:#NN:#SS", "31ST Dec 9999 23:59:59"},
      {Variant::date(-1.75), u"#DD #H", "29 18"},
      // Tokens that end in what another has left behind it.
      {date(2005, 12, 5), u"#D#MMM", "05ec"},
      {afternoon, u"##UWWWW", "9ATURDAY"},
      {date(2005, 2, 1, 13, 2, 3), u"#UMMM#WWWW#N#MMMM#AMPM #H12 #YY",
       "FEBTuesday2FebruaryPM 1 05"},
      {date(2405, 1, 24, 7), u"#HH#YYYY #H#DD", "0705 724"}};
  for (const auto& [value, format, text] : rows)
    EXPECT_EQ(called(u"FormatDateTime", value, format), inQuotes(text));
  for (const std::string text : {"1st", "2nd", "3rd", "4th", "11st", "12nd", "13rd", "20th"})
    EXPECT_EQ(called(u"FormatDateTime", date(2005, 1, std::stoi(text)), u"#NTH"), inQuotes(text));
}

TEST(FormatDateTime, WhatCountsAsADate) {
  const Variant object(ScriptObject().object());
  const std::u16string_view format = u"#YYYY-#MM-#DD #WWWW #HH:#NN";
  EXPECT_EQ(called(u"FormatDateTime", u"2005-03-05 14:07", format),
            "\"2005-03-05 Saturday 14:07\"");
  for (const Variant& nothing :
       {Variant(45000), Variant(2.5), Variant(), Variant::null(), object, Variant(Boolean::True),
        Variant(Object()), arrayOf({Variant(1)}), Variant::missing()})
    EXPECT_EQ(called(u"FormatDateTime", nothing, format), "\"1899-12-30 Saturday 00:00\"");
  for (const Variant& wrong :
       {Variant(u"not a date"), Variant(u""), Variant(u"45000"), Variant::date(1e9),
        Variant::date(-657435), Variant::date(std::numeric_limits<double>::quiet_NaN())})
    EXPECT_EQ(called(u"FormatDateTime", wrong, format), kInvalid);
  for (const Variant& wrong : {Variant::null(), object, arrayOf({}), Variant::missing()})
    EXPECT_EQ(called(u"FormatDateTime", date(2005, 3, 5), wrong), kInvalid);
  EXPECT_EQ(pendingError(), 0);
}

TEST(FormatDateTime, TurnsTheFormatIntoTextInPlace) {
  const Owned<StringFunctions> strings = Owned<StringFunctions>::make();
  std::int16_t small = 7;
  Variant day = date(2005, 3, 5), number(12), null = Variant::null();
  const auto format = [&](const VARIANT& variable) {
    return shown(rawCall(strings.object(), u"FormatDateTime", {referenceTo(day), variable}).value);
  };
  EXPECT_EQ(format(referenceTo(number)), "\"12\"");
  EXPECT_EQ(shown(number), "\"12\"");
  EXPECT_EQ(format(referenceTo(null)), kInvalid);
  EXPECT_EQ(null.vt, VT_NULL);
  EXPECT_EQ(day.vt, VT_DATE);
  EXPECT_EQ(format(typedReference(VT_I2, &small)), "\"7\"");
  EXPECT_EQ(small, 7);
}

TEST(IsDateOnly, TellsDatesFromTimes) {
  const auto expect = [](const Variant& value, const std::string& kinds) {
    EXPECT_EQ(called(u"IsTimeOnly", value), kinds.find('t') != kinds.npos ? "True" : "False");
    EXPECT_EQ(called(u"IsDateOnly", value), kinds.find('d') != kinds.npos ? "True" : "False");
  };
  forEachPair(
      u"14:30=t|0:00=td|2005-03-05=d|2005-03-05 0:00=d|2005-03-05 14:30=|12/29/1899 18:00=|abc=",
      expect);
  expect(date(2005, 3, 5), "d");
  expect(date(1899, 12, 30, 6), "t");
  for (const Variant& wrong : {Variant(45000), Variant(), Variant::null(), arrayOf({})})
    expect(wrong, "");
}

}  // namespace
}  // namespace quendal::test
