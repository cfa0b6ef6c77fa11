// Page code that runs during a call and changes, clears or lets go of what the call works with.
#include <gtest/gtest.h>

#include <algorithm>

#include "core/apartment.h"
#include "core/dictionary.h"
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
  /// What the call raised, or nothing.
  std::u16string outcome(const Object& object, std::u16string_view member,
                         std::vector<VARIANT> arguments) {
    const Outcome result = rawCall(object, member, std::move(arguments));
    if (result.code == DISP_E_EXCEPTION) return result.error;
    return result.code == S_OK ? u"" : u"refused";
  }

  Owned<Functions> functions = Owned<Functions>::make();
};

TEST_F(Reentry, ArgumentsByValueStayWhatTheyWereWhenTheCallBegan) {
  Variant level(kLow), variable;
  const Variant clears = runs([&] { variable = Variant(u"changed meanwhile"); });
  const auto named = [&] {
    return Variant(ScriptObject().defaultMember([](auto) { return Variant(u"own"); }).object());
  };
  const Variant dictionary(Dictionary::create().object());
  const struct {
    const char* what;
    std::u16string_view member;
    Variant before;
    std::vector<VARIANT> arguments;
    std::string_view log;
  } rows[] = {
      {"an object", u"WriteParam", named(), {level, clears, referenceTo(variable)}, "own"},
      {"text", u"WriteParam", Variant(u"text"), {level, clears, referenceTo(variable)}, "text"},
      {"a title by reference",
       u"Dump",
       Variant(u"title"),
       {level, clears, referenceTo(variable)},
       "title"},
      {"a title",
       u"LogDictionary",
       Variant(u"title"),
       {dictionary, referenceTo(variable), Variant(std::int32_t{1}), clears},
       "title"},
      {"a folder",
       u"LogFileVersionInfo",
       Variant(u"no\\such\\folder"),
       {referenceTo(variable), clears},
       "no\\such\\folder"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    variable = row.before;
    EXPECT_EQ(outcome(log, row.member, row.arguments), u"");
    EXPECT_EQ(textOf(variable), u"changed meanwhile");
    EXPECT_NE(written().find(row.log), std::string::npos);
  }
}

TEST_F(Reentry, AReferenceByValueIsReadWhenACallThroughTheTableBegins) {
  using WriteParam = HRESULT STDMETHODCALLTYPE(IDispatch*, std::int16_t*, VARIANT*, VARIANT,
                                               std::int16_t*, std::int16_t*, VARIANT*);
  Variant variable(u"text"), result;
  Variant name = runs([&] { variable = Variant(u"changed meanwhile"); });
  std::int16_t level = kLow, distance = 35, indent = 4;
  const auto members = describe<Logging>().members();
  const auto row = std::ranges::find(members, u"WriteParam", &MemberRow::name);
  auto* const writeParam = reinterpret_cast<WriteParam*>(row->slot);
  EXPECT_EQ(
      writeParam(log.dispatch(), &level, &name, referenceTo(variable), &distance, &indent, &result),
      S_OK);
  EXPECT_TRUE(textOf(result).ends_with(u" text"));
}

TEST_F(Reentry, ComparedArgumentsAreKept) {
  Variant x = runs([] {});
  const Variant clears = runs([&] { x = Variant(Object()); });
  const Variant three(std::int32_t{3});
  for (const std::u16string_view member : {u"Max", u"Min"}) {
    x = runs([] {});
    const Outcome result = rawCall(functions.object(), member, {referenceTo(x), clears, three});
    EXPECT_EQ(result.code, S_OK);
    EXPECT_EQ(x.pdispVal, nullptr);
  }
}

TEST_F(Reentry, WhatIsEncodedOutlivesTheQuestionForItsType) {
  Variant variable;
  variable = Variant(ScriptObject()
                         .className(u"Recordset")
                         .value(u"State", std::int32_t{0})
                         .beforeCalls([&] { variable = Variant(Object()); })
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

TEST_F(Reentry, AnObjectOutlivesACallThatLetsGoOfItsLastReference) {
  Object last = Owned<Logging>::make().object();
  last.call(u"SetLogPath", folder.path() + u"\\");
  last.call(u"SetLogFile", u"OTHER.TXT");
  IDispatch* const borrowed = last.dispatch();
  Variant level(kLow);
  const Variant letsGo = runs([&] { last = {}; });
  std::vector<VARIANT> arguments = {letsGo, level};
  DISPPARAMS params{arguments.data(), nullptr, 2, 0};
  const DISPID id = idsOf(borrowed, {u"WriteLog"})[0];
  EXPECT_EQ(borrowed->Invoke(id, IID_NULL, 0, DISPATCH_METHOD, &params, nullptr, nullptr, nullptr),
            S_OK);
  EXPECT_FALSE(last);
  EXPECT_TRUE(platform::fileExists(folder.path() + u"\\OTHER.TXT"));
}

TEST_F(Reentry, APagesPropertyThatRaisesIsAskedOnce) {
  for (const std::int32_t number : {5, 438, 450, 5002}) {
    int asked = 0;
    const Variant error(ScriptObject()
                            .member(u"Number",
                                    [&](auto) -> Variant {
                                      ++asked;
                                      throw AutomationError(number);
                                    })
                            .object());
    EXPECT_THROW(static_cast<void>(Object::from(error).get(u"Number")), AutomationError);
    EXPECT_EQ(asked, 1) << number;
    EXPECT_THROW(static_cast<void>(Object::from(error).get(u"Number", u"index")), AutomationError);
    EXPECT_EQ(asked, 2) << number;
  }
}

TEST_F(Reentry, APageStartThatFailsLeavesNothingToTheNext) {
  ASSERT_EQ(platform::createFile(folder / u"LOGS", {}), platform::FileError::None);
  PageContext page;
  page.serverVariables = {{u"REMOTE_ADDR", u"10.1.2.3"}};
  EXPECT_EQ(call(u"OnStartPage", page.object(folder.path())), "error 58");
  EXPECT_FALSE(apartment().page.session);
  EXPECT_FALSE(apartment().page.request);
  EXPECT_FALSE(apartment().page.server);
}

}  // namespace
}  // namespace quendal::test
