// FormatDateTime, IsTimeOnly and IsDateOnly.
#include <gtest/gtest.h>

#include <limits>

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
  const Variant afternoon = date(2005, 3, 5, 14, 7, 9);
  const Variant halfPastMidnight = date(2005, 1, 3, 0, 30);
  const Variant noon = date(2005, 12, 31, 12);
  const struct {
    const Variant& date;
    const char16_t* format;
    const char* text;
  } cases[] = {
      {afternoon, u"#WWWW, #DD #MMMM #YYYY #HH24:#NN:#SS", "Saturday, 05 March 2005 14:07:09"},
      {afternoon, u"#H12:#NN #AMPM", "2:07 PM"},
      {afternoon, u"#HH:#NN", "14:07"},
      {afternoon, u"#HH12|#H24|#H|#AMPM", "02|14|14|PM"},
      {afternoon, u"#UWWWW #UMMMM #UWWW #UMMM #WWW #MMM", "SATURDAY MARCH SAT MAR Sat Mar"},
      {afternoon, u"#WW #W #S #N #M #D #YY #MM", "S 7 9 7 3 5 05 03"},
      {afternoon, u"#LNTH #UNTH #NTH", "5th 5TH 5th"},
      {halfPastMidnight, u"#H12:#NN #AMPM", "12:30 AM"},
      {halfPastMidnight, u"#H12:#NN", "0:30"},
      {halfPastMidnight, u"#HH12 #HH #H24 #HH24 #H", "00 00 0 00 0"},
      {halfPastMidnight, u"#HH12 #HH #H24 #HH24 #H #AMPM", "12 12 0 00 0 AM"},
      {halfPastMidnight, u"#MMMM#MM", "January01"},
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
      {date(2405, 1, 24, 7), u"#HH#YYYY #H#DD", "0705 724"},
  };
  for (const auto& row : cases) {
    EXPECT_EQ(called(u"FormatDateTime", row.date, row.format), inQuotes(row.text));
  }
  for (const std::string text : {"1st", "2nd", "3rd", "4th", "11st", "12nd", "13rd", "20th"}) {
    EXPECT_EQ(called(u"FormatDateTime", date(2005, 1, std::stoi(text)), u"#NTH"), inQuotes(text));
  }
}

TEST(FormatDateTime, WhatCountsAsADate) {
  const Variant object(ScriptObject().value(u"x", Variant(u"2005-03-05")).object());
  const std::u16string_view format = u"#YYYY-#MM-#DD #WWWW #HH:#NN";
  EXPECT_EQ(called(u"FormatDateTime", u"2005-03-05 14:07", format),
            "\"2005-03-05 Saturday 14:07\"");
  EXPECT_EQ(called(u"FormatDateTime", u"14:07", u"#HH.#NN"), "\"14.07\"");
  for (const Variant& nothing :
       {Variant(45000), Variant(2.5), Variant(), Variant::null(), object, Variant(Boolean::True),
        Variant(Object()), arrayOf({Variant(1)}), Variant::missing()}) {
    EXPECT_EQ(called(u"FormatDateTime", nothing, format), "\"1899-12-30 Saturday 00:00\"");
  }
  const double kNan = std::numeric_limits<double>::quiet_NaN();
  for (const Variant& wrong :
       {Variant(u"not a date"), Variant(u""), Variant(u"45000"), Variant(u"2005-02-30"),
        Variant::date(1e9), Variant::date(-657435), Variant::date(kNan)}) {
    EXPECT_EQ(called(u"FormatDateTime", wrong, format), kInvalid);
  }
  for (const Variant& wrong : {Variant::null(), object, arrayOf({}), Variant::missing()}) {
    EXPECT_EQ(called(u"FormatDateTime", date(2005, 3, 5), wrong), kInvalid);
  }
  EXPECT_EQ(pendingError(), 0);
}

TEST(FormatDateTime, TurnsTheFormatIntoTextInPlace) {
  const Owned<StringFunctions> strings = Owned<StringFunctions>::make();
  Variant day = date(2005, 3, 5), number(std::int32_t{12}), null = Variant::null();
  const auto format = [&](VARIANT& variable) {
    return shown(
        rawCall(strings.object(), u"FormatDateTime", {referenceTo(day), referenceTo(variable)})
            .value);
  };
  EXPECT_EQ(format(number), "\"12\"");
  EXPECT_EQ(shown(number), "\"12\"");
  EXPECT_EQ(format(null), kInvalid);
  EXPECT_EQ(null.vt, VT_NULL);
  EXPECT_EQ(day.vt, VT_DATE);

  std::int16_t small = 7;
  VARIANT typed = typedReference(VT_I2, &small);
  EXPECT_EQ(format(typed), "\"7\"");
  EXPECT_EQ(small, 7);
}

TEST(IsDateOnly, TellsDatesFromTimes) {
  const auto expect = [](const Variant& value, const std::string& kinds) {
    EXPECT_EQ(called(u"IsTimeOnly", value), kinds.find('t') != kinds.npos ? "True" : "False");
    EXPECT_EQ(called(u"IsDateOnly", value), kinds.find('d') != kinds.npos ? "True" : "False");
  };
  forEachPair(
      u"14:30=t|2:30 PM=t|0:00=td|2005-03-05=d|2005-03-05 0:00=d|2005-03-05 14:30="
      u"|12/29/1899 18:00=|abc=|=",
      [&expect](std::u16string_view text, const std::string& kinds) {
        expect(Variant(text), kinds);
      });
  expect(date(2005, 3, 5), "d");
  expect(date(1899, 12, 30, 6), "t");
  for (const Variant& wrong :
       {Variant(45000), Variant(), Variant::null(), Variant(Object()), arrayOf({})}) {
    expect(wrong, "");
  }
}

}  // namespace
}  // namespace quendal::test
