// Page code that runs during a call and changes, clears or lets go of what the call works with.
#include <gtest/gtest.h>

#include <algorithm>

#include "core/dictionary.h"
#include "functions/concat.h"
#include "functions/functions.h"
#include "platform/code_page.h"
#include "tests/core/raw_call.h"
#include "tests/logging/logger_fixture.h"

namespace quendal::test {
namespace {

/// An object whose default value is "e", after it has run a step of the page.
Variant runs(std::function<void()> step) {
  return Variant(ScriptObject()
                     .defaultMember([step = std::move(step)](auto) {
                       step();
                       return Variant(u"e");
                     })
                     .object());
}

class Reentry : public LoggerTest {
 protected:
  Owned<Functions> functions = Owned<Functions>::make();
  Variant level{kLow};
};

using WriteParam = HRESULT STDMETHODCALLTYPE(IDispatch*, std::int16_t*, VARIANT*, VARIANT,
                                             std::int16_t*, std::int16_t*, VARIANT*);
using Append = HRESULT STDMETHODCALLTYPE(IDispatch*, SAFEARRAY**);

TEST_F(Reentry, ArgumentsByValueStayWhatTheyWereWhenTheCallBegan) {
  Variant variable;
  Variant clears = runs([&] { variable = Variant(u"changed meanwhile"); });
  const Variant dictionary(Dictionary::create().object());
  const struct {
    std::u16string_view member;
    Variant before;
    std::vector<VARIANT> arguments;
    std::string_view log;
  } rows[] = {
      {u"WriteParam", runs([] {}), {level, clears, referenceTo(variable)}, " e\n"},
      {u"Dump", Variant(u"title"), {level, clears, referenceTo(variable)}, "@ title\n"},
      {u"LogDictionary",
       Variant(u"title"),
       {dictionary, referenceTo(variable), Variant(std::int32_t{1}), clears},
       "@ title\n"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.log);
    variable = row.before;
    EXPECT_EQ(rawCall(log, row.member, row.arguments).code, S_OK);
    EXPECT_EQ(textOf(variable), u"changed meanwhile");
    EXPECT_NE(written().find(row.log), std::string::npos);
  }
  variable = Variant(u"text");
  Variant result;
  std::int16_t low = kLow, distance = 35, indent = 4;
  EXPECT_EQ((slotOf<Logging, WriteParam>(u"WriteParam")(
                log.dispatch(), &low, &clears, referenceTo(variable), &distance, &indent, &result)),
            S_OK);
  EXPECT_TRUE(textOf(result).ends_with(u" text"));
}

TEST_F(Reentry, WhatIsComparedOrEncodedIsKept) {
  Variant variable;
  const auto clear = [&] { variable = Variant(Object()); };
  const Variant clears = runs(clear);
  for (const std::u16string_view member : {u"Max", u"Min"}) {
    variable = runs([] {});
    EXPECT_EQ(rawCall(functions.object(), member, {referenceTo(variable), clears, level}).code,
              S_OK);
    EXPECT_EQ(variable.pdispVal, nullptr);
  }
  variable = Variant(ScriptObject()
                         .className(u"Recordset")
                         .value(u"State", std::int32_t{0})
                         .beforeCalls(clear)
                         .object());
  const Outcome result = rawCall(functions->json().object(), u"Encode", {referenceTo(variable)});
  EXPECT_EQ(textOf(result.value), u"{\"state\": \"closed\"}");
}

TEST_F(Reentry, AnObjectIsWholeWhenItIsCalledAgainFromItsOwnCall) {
  const Object builder = functions->concat().object();
  const auto text = [&] { return textOf(builder.get(u"Value")); };
  builder.call(u"Append", u"a", runs([&] { builder.call(u"Append", u"b"); }), u"c");
  EXPECT_EQ(text(), u"abec");
  builder.call(u"Append", u"d", runs([&] { builder.call(u"Clear", std::int32_t{1}); }), u"f");
  EXPECT_EQ(text(), u"ef");
  builder.call(u"Append", runs([&] { builder.call(u"TrimToSize"); }), u"g");
  EXPECT_EQ(text(), u"efeg");

  for (const std::u16string_view step :
       {u"Class_Terminate", u"Class_Initialize", u"OnEndPage", u"LogOSInfo", u"WriteASPStart"}) {
    log.call(u"WriteLog", kLow, runs([&] { log.call(step); }), std::int16_t{2});
    EXPECT_NE(written().find("e\n"), std::string::npos);
  }
  const Variant rollsOver = runs([&] {
    log.put(u"RolloverBytes", std::int32_t{10});
    log.call(u"WriteLog", kLow, u"in the new file");
    log.put(u"RolloverBytes", std::int32_t{0});
  });
  log.call(u"WriteLog", kLow, rollsOver);
  EXPECT_EQ(platform::listFiles(folder.path()).size(), 2u);
}

// What follows the step works on the object itself, which is gone if the call does not hold it.
TEST_F(Reentry, AnObjectOutlivesACallThatLetsGoOfItsLastReference) {
  Object last;
  Variant letsGo = runs([&] { last = {}; });
  const auto newLogger = [&] {
    last = Owned<Logging>::make().object();
    last.call(u"SetLogFile", folder / u"OTHER.TXT");
    return last.dispatch();
  };
  Variant result;
  std::vector<VARIANT> arguments = {level, letsGo, level};
  DISPPARAMS params{arguments.data(), nullptr, 3, 0};
  IDispatch* borrowed = newLogger();
  const DISPID id = idsOf(borrowed, {u"WriteParam"})[0];
  borrowed->Invoke(id, IID_NULL, 0, DISPATCH_METHOD, &params, &result, nullptr, nullptr);
  EXPECT_FALSE(last);
  EXPECT_TRUE(textOf(result).ends_with(u" 2"));

  borrowed = newLogger();
  result = {};
  std::int16_t low = kLow, distance = 35, indent = 4;
  slotOf<Logging, WriteParam>(u"WriteParam")(borrowed, &low, &letsGo, level, &distance, &indent,
                                             &result);
  EXPECT_FALSE(last);
  EXPECT_TRUE(textOf(result).ends_with(u" 2"));

  last = Owned<Concat>::make().object();
  Variant list = arrayOf({letsGo, letsGo});
  EXPECT_EQ((slotOf<Concat, Append>(u"Append")(last.dispatch(), &list.parray)), S_OK);
  EXPECT_FALSE(last);
}

TEST_F(Reentry, APageMayEndWhileItsRequestIsAsked) {
  PageContext page;
  startPage(page);
  page.whenAsked = [&] { log.call(u"OnEndPage"); };
  EXPECT_EQ(call(u"WriteLog", kLow, u"x"), "error 91");  // the page's name cannot be read any more
}

TEST_F(Reentry, APagesPropertyThatRaisesIsAskedOnce) {
  for (const std::int32_t number : {438, 450}) {
    int asked = 0;
    const Object error = ScriptObject()
                             .member(u"Number",
                                     [&](auto) -> Variant {
                                       ++asked;
                                       throw AutomationError(number);
                                     })
                             .object();
    EXPECT_THROW(static_cast<void>(error.get(u"Number")), AutomationError);
    EXPECT_THROW(static_cast<void>(error.get(u"Number", u"index")), AutomationError);
    EXPECT_EQ(asked, 2) << number;
  }
}

}  // namespace
}  // namespace quendal::test
