// A keyed container for each test, called by name as scripts do.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "automation/dictionary_abi.h"
#include "automation/dispatch.h"
#include "automation/values.h"

namespace quendal::test {

class DictionaryTest : public testing::Test {
 protected:
  ~DictionaryTest() override { EXPECT_EQ(dictionary_->Release(), 0U); }

  // The answer as text, or "error" and the number that a page sees.
  std::string call(std::u16string_view name, const std::vector<Value>& arguments = {},
                   WORD flags = DISPATCH_METHOD | DISPATCH_PROPERTYGET) {
    DISPID id = DISPID_UNKNOWN;
    HRESULT code = automation::memberId(dictionary_, name, &id);
    std::vector<VARIANT> passed;  // the last one first
    for (const Value& argument : arguments) passed.insert(passed.begin(), argument.value);
    DISPID put = DISPID_PROPERTYPUT;
    DISPPARAMS params{passed.data(), nullptr, static_cast<UINT>(passed.size()), 0};
    if (flags == DISPATCH_PROPERTYPUT) {
      params.rgdispidNamedArgs = &put;
      params.cNamedArgs = 1;
    }
    Value result;
    EXCEPINFO exception{};
    if (SUCCEEDED(code))
      code = dictionary_->Invoke(id, IID_NULL, 0x0409, flags, &params, &result.value, &exception,
                                 nullptr);
    description_ = readText(exception.bstrSource) + ": " + readText(exception.bstrDescription);
    for (BSTR text : {exception.bstrSource, exception.bstrDescription, exception.bstrHelpFile})
      SysFreeString(text);
    if (SUCCEEDED(code)) return list(result.value);
    if (code == DISP_E_EXCEPTION) code = exception.scode;
    return "error " + std::to_string(code & 0xFFFF);
  }
  std::string put(std::u16string_view name, const std::vector<Value>& arguments) {
    return call(name, arguments, DISPATCH_PROPERTYPUT);
  }
  // Whether the second key finds what was added under the first.
  bool same(const Value& key, const Value& other) {
    SCOPED_TRACE(show(key.value) + " and " + show(other.value));
    EXPECT_EQ(call(u"Add", {key, i4(1)}), "Empty");
    const bool found = call(u"Exists", {other}) == "-1";
    EXPECT_EQ(call(u"Add", {other, i4(2)}), found ? "error 457" : "Empty");
    EXPECT_EQ(call(u"RemoveAll"), "Empty");
    return found;
  }

  IDispatch* const dictionary_ = automation::newDictionary();
  std::string description_;  // of the last call's error
};

}  // namespace quendal::test
