// A keyed container for each test, called by name as scripts do.
#pragma once

#include "automation/values.h"
#include "core/dictionary.h"

namespace quendal::test {

class DictionaryTest : public testing::Test {
 protected:
  ~DictionaryTest() override { EXPECT_EQ(referencesOf(dictionary_.object()), 2U); }

  // What a call gives, or "error" and the number that a page sees.
  std::string call(std::u16string_view name, const std::vector<Variant>& arguments = {},
                   WORD flags = DISPATCH_METHOD | DISPATCH_PROPERTYGET) {
    const Outcome outcome =
        rawCall(dictionary_.object(), name, {arguments.begin(), arguments.end()}, {}, flags);
    if (SUCCEEDED(outcome.code)) return shownArray(outcome.value);
    error_ = toUtf8(outcome.error);
    if (outcome.code != DISP_E_EXCEPTION) return "error " + std::to_string(outcome.code & 0xFFFF);
    return "error " + error_.substr(0, error_.find(' '));
  }
  std::string put(std::u16string_view name, const std::vector<Variant>& arguments) {
    return call(name, arguments, DISPATCH_PROPERTYPUT);
  }
  // Whether the second key finds what was added under the first.
  bool same(const Variant& key, const Variant& other) {
    SCOPED_TRACE(show(key) + " and " + show(other));
    EXPECT_EQ(call(u"Add", {key, 1}), "~");
    const bool found = call(u"Exists", {other}) == "True";
    EXPECT_EQ(call(u"Add", {other, 2}), found ? "error 457" : "~");
    EXPECT_EQ(call(u"RemoveAll"), "~");
    return found;
  }

  const Dictionary dictionary_ = Dictionary::create();
  std::string error_;  // number, source and description of the last one
};

}  // namespace quendal::test
