// What the library relies on in the keyed container, the system's own or ours.
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "platform/dictionary_fixture.h"

namespace quendal::test {
namespace {

TEST_F(DictionaryTest, KeepsTheOrderOfInsertion) {
  ASSERT_EQ(add(text(u"b"), i4(1)), S_OK);
  ASSERT_EQ(add(i4(3), text(u"three")), S_OK);
  EXPECT_EQ(item(text(u"a")), "Empty");  // reading a missing key adds it
  ASSERT_EQ(put(text(u"b"), i4(10)), S_OK);
  EXPECT_EQ(keys(), "b 3 a");
  EXPECT_EQ(items(), "10 three Empty");
  ASSERT_EQ(dictionary_->RemoveAll(), S_OK);
  EXPECT_EQ(count(), 0);
}

TEST_F(DictionaryTest, RefusesWithNumberedErrors) {
  ASSERT_EQ(add(text(u"a"), i4(1)), S_OK);
  EXPECT_EQ(add(text(u"a"), i4(3)), kKeyExists);
  EXPECT_EQ(item(text(u"a")), "1");
  EXPECT_EQ(dictionary_->Remove(text(u"c").source()), kNotFound);
  EXPECT_EQ(dictionary_->put_CompareMode(1), kInvalidCall);
  EXPECT_TRUE(FAILED(add(array(SafeArrayCreateVector(VT_VARIANT, 0, 1)), i4(1))));
  EXPECT_EQ(keys(), "a");
}

TEST_F(DictionaryTest, KeysAreTheSameByValue) {
  Counter one;
  Counter two;
  {
    const std::vector<std::pair<Value, Value>> same = {
        {i2(5), r8(5)},
        {i4(-7), r4(-7)},
        {reference(one), reference(one)},
    };
    const std::vector<std::pair<Value, Value>> different = {
        {i4(5), text(u"5")},
        {r8(2.5), i4(2)},
        {text(u"Key"), text(u"key")},
        {text(u"a"), text(u"a ")},
        {reference(one), reference(two)},
    };
    for (const auto& keys : same) EXPECT_TRUE(this->same(keys));
    for (const auto& keys : different) EXPECT_FALSE(this->same(keys));
  }
  EXPECT_EQ(one.references, 1U);
  EXPECT_EQ(two.references, 1U);
}

TEST_F(DictionaryTest, ComparesTextWithoutCaseWhenAsked) {
  ASSERT_EQ(dictionary_->put_CompareMode(1), S_OK);
  for (int i = 0; i < 50; ++i)
    ASSERT_EQ(add(text(u"Key" + std::u16string(static_cast<std::size_t>(i), u'X')), i4(i)), S_OK);
  EXPECT_EQ(item(text(u"kEYxxxxx")), "5");
  EXPECT_EQ(add(text(u"KEY"), i4(0)), kKeyExists);
}

TEST_F(DictionaryTest, AnswersScripts) {
  Value key = text(u"Key");
  Value number = i4(5);
  VARIANT byReference;
  VariantInit(&byReference);
  byReference.vt = VT_BYREF | VT_VARIANT;
  byReference.pvarVal = &key.value;
  EXPECT_EQ(invoke(u"ADD", DISPATCH_METHOD, {byReference, number.value}, nullptr), S_OK);
  Value result;
  EXPECT_EQ(invoke(u"item", DISPATCH_METHOD | DISPATCH_PROPERTYGET, {byReference}, &result.value),
            S_OK);
  EXPECT_EQ(show(result.value), "5");
  EXPECT_EQ(invoke(u"Item", DISPATCH_PROPERTYPUT, {byReference, i4(6).value}, nullptr), S_OK);
  EXPECT_EQ(item(key), "6");
  EXPECT_EQ(invoke(u"Key", DISPATCH_PROPERTYPUT, {byReference, i4(7).value}, nullptr), S_OK);
  EXPECT_EQ(keys(), "7");
  EXPECT_EQ(invoke(u"Nothing", DISPATCH_METHOD, {}, nullptr), DISP_E_UNKNOWNNAME);
  EXPECT_EQ(invoke(u"Add", DISPATCH_METHOD, {i4(7).value}, nullptr), DISP_E_BADPARAMCOUNT);
}

TEST_F(DictionaryTest, OwnsWhatItHolds) {
  Counter counter;
  {
    const Value object = reference(counter);
    ASSERT_EQ(add(text(u"a"), object), S_OK);
    ASSERT_EQ(add(object, text(u"b")), S_OK);
    EXPECT_EQ(counter.references, 4U);
    ASSERT_EQ(put(text(u"a"), i4(1)), S_OK);
    ASSERT_EQ(dictionary_->Remove(object.source()), S_OK);
    EXPECT_EQ(counter.references, 2U);
    ASSERT_EQ(add(text(u"c"), object), S_OK);
    ASSERT_EQ(dictionary_->RemoveAll(), S_OK);
  }
  EXPECT_EQ(counter.references, 1U);
}

}  // namespace
}  // namespace quendal::test
