// What the library relies on in the keyed container, the system's own or ours.
#include <utility>

#include "automation/dictionary_fixture.h"

namespace quendal::test {
namespace {

TEST_F(DictionaryTest, KeepsTheOrderOfInsertion) {
  EXPECT_EQ(call(u"ADD", {text(u"b"), i4(1)}), "Empty");
  EXPECT_EQ(call(u"add", {i4(3), text(u"three")}), "Empty");
  EXPECT_EQ(call(u"Item", {text(u"a")}), "Empty");  // reading a missing key adds it
  EXPECT_EQ(put(u"Item", {text(u"b"), i4(10)}), "Empty");
  EXPECT_EQ(put(u"Item", {text(u"c"), i4(4)}), "Empty");
  EXPECT_EQ(call(u"Keys"), "b 3 a c");
  EXPECT_EQ(call(u"Items"), "10 three Empty 4");
  EXPECT_EQ(call(u"Remove", {i4(3)}), "Empty");
  EXPECT_EQ(call(u"Exists", {i4(3)}), "0");
  EXPECT_EQ(call(u"Items"), "10 Empty 4");
  EXPECT_EQ(call(u"Add", {i4(3), i4(5)}), "Empty");  // at the end now
  EXPECT_EQ(call(u"Keys"), "b a c 3");
  EXPECT_EQ(call(u"Count"), "4");
  EXPECT_EQ(call(u"RemoveAll"), "Empty");
  EXPECT_EQ(call(u"Count"), "0");
  EXPECT_EQ(call(u"Keys"), "");
}

TEST_F(DictionaryTest, RefusesWithNumberedErrors) {
  EXPECT_EQ(call(u"Add", {text(u"a"), i4(1)}), "Empty");
  EXPECT_EQ(call(u"Add", {text(u"a"), i4(3)}), "error 457");
  EXPECT_EQ(call(u"Item", {text(u"a")}), "1");
  EXPECT_EQ(call(u"Remove", {text(u"c")}), "error 32811");
  EXPECT_EQ(put(u"CompareMode", {i4(1)}), "error 5");
  EXPECT_EQ(call(u"Keys"), "a");
  EXPECT_EQ(call(u"Nothing"), "error 6");        // DISP_E_UNKNOWNNAME
  EXPECT_EQ(call(u"Add", {i4(7)}), "error 14");  // DISP_E_BADPARAMCOUNT
  EXPECT_EQ(put(u"Count", {i4(7)}), "error 3");  // DISP_E_MEMBERNOTFOUND
}

TEST_F(DictionaryTest, KeysAreTheSameByValue) {
  Counter one;
  Counter two;
  {
    EXPECT_TRUE(same(i2(5), r8(5)));
    EXPECT_TRUE(same(i4(-7), r4(-7)));
    EXPECT_TRUE(same(i4(38416), date(38416)));
    EXPECT_TRUE(same(reference(one), reference(one)));
    EXPECT_FALSE(same(i4(5), text(u"5")));
    EXPECT_FALSE(same(i4(5), i4(-5)));
    EXPECT_FALSE(same(r8(2.5), i4(2)));
    EXPECT_FALSE(same(text(u"a"), text(u"a ")));
    EXPECT_FALSE(same(reference(one), reference(two)));
  }
  EXPECT_EQ(one.references, 1U);
  EXPECT_EQ(two.references, 1U);
}

TEST_F(DictionaryTest, ComparesTextWithoutCaseWhenAsked) {
  EXPECT_EQ(put(u"CompareMode", {i4(1)}), "Empty");
  for (int i = 0; i < 50; ++i)
    call(u"Add", {text(u"Key" + std::u16string(static_cast<std::size_t>(i), u'X')), i4(i)});
  EXPECT_EQ(call(u"Item", {text(u"kEYxxxxx")}), "5");
  EXPECT_EQ(call(u"Add", {text(u"KEY"), i4(0)}), "error 457");
  EXPECT_EQ(call(u"RemoveAll"), "Empty");  // which leaves the mode
  EXPECT_EQ(call(u"comparemode"), "1");
  EXPECT_TRUE(same(text(u"Key"), text(u"KEY")));
  EXPECT_EQ(put(u"CompareMode", {i4(0)}), "Empty");
  EXPECT_FALSE(same(text(u"Key"), text(u"KEY")));
}

TEST_F(DictionaryTest, OwnsWhatItHolds) {
  Counter counter;
  {
    const Value object = reference(counter);
    Value key = text(u"a");
    VARIANT byReference;
    VariantInit(&byReference);
    byReference.vt = VT_BYREF | VT_BSTR;
    byReference.pbstrVal = &key.value.bstrVal;
    void* found = nullptr;
    ASSERT_EQ(dictionary_->QueryInterface(automation::kIidDictionary, &found), S_OK);
    auto* table = static_cast<automation::IDictionary*>(found);
    EXPECT_EQ(table->Add(&byReference, object.source()), S_OK);
    key.value.bstrVal[0] = u'b';  // its key is a copy
    EXPECT_EQ(table->Add(object.source(), &byReference), S_OK);
    table->Release();
    EXPECT_EQ(call(u"Exists", {text(u"a")}), "-1");
    EXPECT_EQ(counter.references, 4U);
    EXPECT_EQ(put(u"Item", {text(u"a"), i4(1)}), "Empty");
    EXPECT_EQ(call(u"Remove", {object}), "Empty");
    EXPECT_EQ(counter.references, 2U);
    EXPECT_EQ(call(u"Add", {text(u"c"), object}), "Empty");
  }
  EXPECT_EQ(counter.references, 2U);
  EXPECT_EQ(call(u"RemoveAll"), "Empty");
  EXPECT_EQ(counter.references, 1U);
}

}  // namespace
}  // namespace quendal::test
