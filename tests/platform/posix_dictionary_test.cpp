// The parts of the keyed container that are this home's own.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "automation/posix/dictionary.h"
#include "platform/dictionary_fixture.h"

namespace quendal::test {
namespace {

using PosixDictionaryTest = DictionaryTest;

TEST_F(PosixDictionaryTest, MoreKeysAreTheSameByValue) {
  const std::pair<Value, Value> same[] = {
      {i4(-7), cy(-70000)},
      {boolean(true), i2(-1)},
      {decimal(0, 25, 1, false), r8(2.5)},
      {null(), null()},
      {text(u""), make(VT_BSTR, &VARIANT::bstrVal, nullptr)},
      {r8(0.0), r8(-0.0)},
      {r8(std::nan("")), r8(std::nan(""))},
  };
  const std::pair<Value, Value> different[] = {
      {empty(), i4(0)},
      {empty(), text(u"")},
      {empty(), null()},
      {i8(9007199254740993), i8(9007199254740992)},
      {text(u"a"), text(std::u16string_view(u"a\0", 2))},
  };
  for (const auto& keys : same) EXPECT_TRUE(this->same(keys));
  for (const auto& keys : different) EXPECT_FALSE(this->same(keys));
  EXPECT_EQ(add(error(DISP_E_PARAMNOTFOUND), i4(1)), DISP_E_TYPEMISMATCH);
}

TEST_F(PosixDictionaryTest, IgnoresTheCaseOfAnyLetter) {
  ASSERT_EQ(dictionary_->put_CompareMode(1), S_OK);
  EXPECT_TRUE(same({text(u"Stra\u00DFe \u00C9cole"), text(u"STRA\u00DFE \u00E9COLE")}));
  EXPECT_FALSE(same({text(u"Stra\u00DFe \u00C9cole"), text(u"STRA\u00DFE \u00E8COLE")}));
}

TEST_F(PosixDictionaryTest, RenamesInPlace) {
  for (int i = 1; i <= 3; ++i) ASSERT_EQ(add(i4(i), i4(10 * i)), S_OK);
  ASSERT_EQ(dictionary_->put_Key(i4(2).source(), text(u"two").source()), S_OK);
  EXPECT_EQ(keys(), "1 two 3");
  EXPECT_EQ(items(), "10 20 30");
  EXPECT_EQ(dictionary_->put_Key(i4(1).source(), i4(3).source()), kKeyExists);
  EXPECT_EQ(dictionary_->put_Key(i4(1).source(), r8(1).source()), S_OK);  // the same key
  ASSERT_EQ(dictionary_->put_Key(i4(4).source(), i4(5).source()), S_OK);
  EXPECT_EQ(keys(), "1 two 3 5");
}

// Against a plain model, through growth, removal from both ends and renaming.
TEST_F(PosixDictionaryTest, ManyEntriesBehaveLikeFew) {
  std::vector<std::pair<int, int>> model;
  const auto at = [&](int key) {
    return std::find_if(model.begin(), model.end(), [&](auto& e) { return e.first == key; });
  };
  const auto keyOf = [](int key) {
    return key % 2 == 0 ? i4(key) : text(u"key" + std::u16string(1, static_cast<char16_t>(key)));
  };
  unsigned random = 12345;
  for (int step = 0; step < 6000; ++step) {
    random = random * 1103515245U + 12345U;
    const int key = static_cast<int>(random >> 16) % 200 + 1;
    const auto found = at(key);
    switch ((random >> 8) % 4) {
      case 0:
        ASSERT_EQ(add(keyOf(key), i4(step)), found == model.end() ? S_OK : kKeyExists);
        if (found == model.end()) model.emplace_back(key, step);
        break;
      case 1:
        ASSERT_EQ(put(keyOf(key), i4(step)), S_OK);
        if (found == model.end())
          model.emplace_back(key, step);
        else
          found->second = step;
        break;
      case 2:
        ASSERT_EQ(dictionary_->Remove(keyOf(key).source()),
                  found == model.end() ? kNotFound : S_OK);
        if (found != model.end()) model.erase(found);
        break;
      default: {
        if (found == model.end() || at(key + 200) != model.end()) break;
        ASSERT_EQ(dictionary_->put_Key(keyOf(key).source(), keyOf(key + 200).source()), S_OK);
        found->first = key + 200;
        break;
      }
    }
    ASSERT_EQ(count(), static_cast<LONG>(model.size()));
  }
  std::string expected;
  for (const auto& [key, value] : model) {
    ASSERT_EQ(item(keyOf(key)), std::to_string(value));
    expected += (expected.empty() ? "" : " ") + std::to_string(value);
  }
  EXPECT_EQ(items(), expected);
}

TEST_F(PosixDictionaryTest, TellsScriptsWhatWentWrong) {
  ASSERT_EQ(add(i4(7), i4(1)), S_OK);
  EXCEPINFO exception{};
  EXPECT_EQ(invoke(u"Add", DISPATCH_METHOD, {i4(7).value, i4(8).value}, nullptr, &exception),
            DISP_E_EXCEPTION);
  EXPECT_EQ(exception.scode, kKeyExists);
  EXPECT_EQ(readText(exception.bstrDescription),
            "This key is already associated with an element of this collection");
  SysFreeString(exception.bstrSource);
  SysFreeString(exception.bstrDescription);
  SysFreeString(exception.bstrHelpFile);
}

TEST_F(PosixDictionaryTest, EnumeratorsStandOnTheirOwn) {
  for (int i = 1; i <= 3; ++i) ASSERT_EQ(add(i4(i), text(u"item")), S_OK);
  IEnumVARIANT* enumerator = enumerate();
  ASSERT_NE(enumerator, nullptr);
  ASSERT_EQ(dictionary_->RemoveAll(), S_OK);
  Value keys[3];
  EXPECT_EQ(enumerator->Skip(1), S_OK);
  IEnumVARIANT* clone = nullptr;
  ASSERT_EQ(enumerator->Clone(&clone), S_OK);
  EXPECT_EQ(enumerator->Release(), 0U);
  EXPECT_EQ(clone->Next(1, &keys[0].value, nullptr), S_OK);
  EXPECT_EQ(show(keys[0].value), "2");
  EXPECT_EQ(clone->Skip(2), S_FALSE);
  EXPECT_EQ(clone->Reset(), S_OK);
  EXPECT_EQ(clone->Next(1, &keys[1].value, nullptr), S_OK);
  EXPECT_EQ(show(keys[1].value), "1");
  EXPECT_EQ(clone->Release(), 0U);
}

TEST_F(PosixDictionaryTest, TakesTextWithoutCopyingIt) {
  auto& own = *static_cast<automation::Dictionary*>(dictionary_);
  for (int i = 0; i < 20; ++i) {
    BSTR key = newText(u"key" + std::u16string(1, static_cast<char16_t>(u'a' + i)));
    Value item = text(u"item");
    const BSTR content = item.value.bstrVal;
    ASSERT_EQ(own.addText(key, item.value), S_OK);
    EXPECT_EQ(item.value.vt, VT_EMPTY);
    Value all;
    ASSERT_EQ(dictionary_->Items(&all.value), S_OK);
    EXPECT_NE(static_cast<VARIANT*>(all.value.parray->pvData)[i].bstrVal, content);
  }
  Value again = text(u"again");
  EXPECT_EQ(own.addText(newText(u"keya"), again.value), kKeyExists);
  EXPECT_EQ(again.value.vt, VT_EMPTY);
  EXPECT_EQ(item(text(u"keya")), "item");
  EXPECT_EQ(count(), 20);
}

}  // namespace
}  // namespace quendal::test
