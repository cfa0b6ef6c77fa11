// A keyed container for each test, with short ways to use it.
#pragma once

#include <gtest/gtest.h>
#include <quendal/automation.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "automation/dictionary_abi.h"
#include "automation/dispatch.h"
#include "platform/automation_values.h"

namespace quendal::test {

using automation::IDictionary;

inline constexpr HRESULT kInvalidCall = static_cast<HRESULT>(0x800A0005);
inline constexpr HRESULT kKeyExists = static_cast<HRESULT>(0x800A01C9);
inline constexpr HRESULT kNotFound = static_cast<HRESULT>(0x800A802B);

class DictionaryTest : public testing::Test {
 protected:
  void SetUp() override {
    IDispatch* made = automation::newDictionary();
    ASSERT_NE(made, nullptr);
    void* found = nullptr;
    ASSERT_EQ(made->QueryInterface(automation::kIidDictionary, &found), S_OK);
    made->Release();
    dictionary_ = static_cast<IDictionary*>(found);
  }

  void TearDown() override {
    if (dictionary_ != nullptr) {
      EXPECT_EQ(dictionary_->Release(), 0U);
    }
  }

  HRESULT add(const Value& key, const Value& item) {
    return dictionary_->Add(key.source(), item.source());
  }
  HRESULT put(const Value& key, const Value& item) {
    return dictionary_->put_Item(key.source(), item.source());
  }
  bool exists(const Value& key) {
    VARIANT_BOOL found = VARIANT_FALSE;
    EXPECT_EQ(dictionary_->Exists(key.source(), &found), S_OK);
    return found == VARIANT_TRUE;
  }
  // Whether the second key finds what was added under the first.
  bool same(const std::pair<Value, Value>& keys) {
    SCOPED_TRACE(show(keys.first.value) + " and " + show(keys.second.value));
    EXPECT_EQ(add(keys.first, i4(1)), S_OK);
    const bool found = exists(keys.second);
    EXPECT_EQ(add(keys.second, i4(2)), found ? kKeyExists : S_OK);
    EXPECT_EQ(dictionary_->RemoveAll(), S_OK);
    return found;
  }
  std::string item(const Value& key) {
    Value found;
    EXPECT_EQ(dictionary_->get_Item(key.source(), &found.value), S_OK);
    return show(found.value);
  }
  LONG count() {
    LONG entries = -1;
    EXPECT_EQ(dictionary_->get_Count(&entries), S_OK);
    return entries;
  }

  static std::string list(const Value& array) {
    std::string shown;
    EXPECT_EQ(array.value.vt, VT_ARRAY | VT_VARIANT);
    for (ULONG i = 0; i < array.value.parray->rgsabound[0].cElements; ++i)
      shown += (i == 0 ? "" : " ") + show(static_cast<VARIANT*>(array.value.parray->pvData)[i]);
    return shown;
  }
  std::string keys() {
    Value all;
    EXPECT_EQ(dictionary_->Keys(&all.value), S_OK);
    return list(all);
  }
  std::string items() {
    Value all;
    EXPECT_EQ(dictionary_->Items(&all.value), S_OK);
    return list(all);
  }

  IEnumVARIANT* enumerate() {
    IUnknown* made = nullptr;
    if (FAILED(dictionary_->_NewEnum(&made))) return nullptr;
    void* found = nullptr;
    EXPECT_EQ(made->QueryInterface(IID_IEnumVARIANT, &found), S_OK);
    made->Release();
    return static_cast<IEnumVARIANT*>(found);
  }

  // Calls a member as a script does; the last argument is the value of a put.
  HRESULT invoke(std::u16string_view name, WORD flags, std::vector<VARIANT> arguments,
                 VARIANT* result, EXCEPINFO* exception = nullptr) {
    DISPID id = DISPID_UNKNOWN;
    const HRESULT found = automation::memberId(dictionary_, name, &id);
    if (FAILED(found)) return found;
    std::reverse(arguments.begin(), arguments.end());
    DISPID put = DISPID_PROPERTYPUT;
    DISPPARAMS params{arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
    if ((flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0) {
      params.rgdispidNamedArgs = &put;
      params.cNamedArgs = 1;
    }
    return dictionary_->Invoke(id, IID_NULL, 0x0409, flags, &params, result, exception, nullptr);
  }

  IDictionary* dictionary_ = nullptr;
};

}  // namespace quendal::test
