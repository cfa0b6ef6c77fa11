// What the library relies on in the keyed container, the system's own or ours.
#include "automation/dictionary_fixture.h"
#include "automation/dispatch.h"

namespace quendal::test {
namespace {

TEST_F(DictionaryTest, KeepsTheOrderOfInsertionAndRefusesWithNumberedErrors) {
  EXPECT_EQ(call(u"ADD", {u"b", 1}), "~");
  EXPECT_EQ(call(u"add", {3, u"three"}), "~");
  EXPECT_EQ(call(u"Add", {u"b", 3}), "error 457");
  EXPECT_EQ(call(u"Item", {u"a"}), "~");  // reading a missing key adds it
  EXPECT_EQ(put(u"Item", {u"b", 10}), "~");
  EXPECT_EQ(put(u"Item", {u"c", 4}), "~");
  EXPECT_EQ(call(u"Items"), "[10 three ~ 4]");
  EXPECT_EQ(call(u"Remove", {3}), "~");
  EXPECT_EQ(call(u"Remove", {3}), "error 32811");
  EXPECT_EQ(call(u"Items"), "[10 ~ 4]");
  EXPECT_EQ(call(u"Add", {3, 5}), "~");  // at the end now
  EXPECT_EQ(call(u"Keys"), "[b a c 3]");
  EXPECT_EQ(call(u"Count"), "4");
  EXPECT_EQ(put(u"CompareMode", {1}), "error 5");
  EXPECT_EQ(call(u"Add", {7}), "error 14");  // DISP_E_BADPARAMCOUNT
  EXPECT_EQ(call(u"Exists", {3, 7}), "error 14");
  EXPECT_NE(put(u"Count", {7}), "~");  // systems differ in the error
  EXPECT_EQ(call(u"RemoveAll"), "~");
  EXPECT_EQ(call(u"Keys"), "[]");
}

TEST_F(DictionaryTest, KeysAreTheSameByValue) {
  const Variant one(ScriptObject().object()), two(ScriptObject().object());
  EXPECT_TRUE(same(std::int16_t{5}, 5.0));
  EXPECT_TRUE(same(-7, r4(-7)));
  EXPECT_TRUE(same(38416, Variant::date(38416)));
  EXPECT_TRUE(same(one, one));
  EXPECT_FALSE(same(5, u"5"));
  EXPECT_FALSE(same(2.5, 2));
  EXPECT_FALSE(same(u"a", u"a "));
  EXPECT_FALSE(same(one, two));
}

TEST_F(DictionaryTest, ComparesTextWithoutCaseWhenAsked) {
  EXPECT_EQ(call(u"Add", {1, 1}), "~");
  EXPECT_EQ(put(u"CompareMode", {1}), "error 5");  // of an empty one alone
  EXPECT_EQ(call(u"RemoveAll"), "~");
  EXPECT_EQ(put(u"CompareMode", {1}), "~");
  for (std::size_t i = 0; i < 50; ++i) call(u"Add", {u"Key" + std::u16string(i, u'X'), int(i)});
  EXPECT_EQ(call(u"Item", {u"kEYxxxxx"}), "5");
  EXPECT_EQ(call(u"RemoveAll"), "~");  // which leaves the mode
  EXPECT_EQ(call(u"comparemode"), "1");
  EXPECT_TRUE(same(u"Key", u"KEY"));
  EXPECT_EQ(put(u"CompareMode", {0}), "~");
  EXPECT_FALSE(same(u"Key", u"KEY"));
}

TEST_F(DictionaryTest, OwnsWhatItHolds) {
  const Object object = ScriptObject().object();
  {
    Variant text(u"a");
    const Variant value(object), array = arrayOf({value});
    SAFEARRAY* place = array.parray;
    VARIANT key = typedReference(VT_BSTR, &text.bstrVal);
    VARIANT item = typedReference(kVariantArray, &place);
    EXPECT_EQ(dictionary_.table()->Add(&key, &item), S_OK);
    text.bstrVal[0] = u'b';  // its key is a copy
    EXPECT_EQ(dictionary_.table()->Add(source(value), &key), S_OK);
    EXPECT_EQ(call(u"Items"), "[[?] b]");
    EXPECT_EQ(referencesOf(object), 5U);
    EXPECT_EQ(put(u"Item", {u"a", 1}), "~");
    EXPECT_EQ(call(u"Remove", {value}), "~");
    EXPECT_EQ(referencesOf(object), 3U);
    EXPECT_EQ(call(u"Add", {u"c", value}), "~");
  }
  EXPECT_EQ(referencesOf(object), 2U);
  // An answer that nobody takes is freed.
  DISPID items = DISPID_UNKNOWN;
  DISPPARAMS none{};
  ASSERT_EQ(automation::memberId(dictionary_.table(), u"Items", &items), S_OK);
  EXPECT_EQ(dictionary_.table()->Invoke(items, IID_NULL, 0, DISPATCH_METHOD, &none, nullptr,
                                        nullptr, nullptr),
            S_OK);
  EXPECT_EQ(referencesOf(object), 2U);
  EXPECT_EQ(call(u"RemoveAll"), "~");
  EXPECT_EQ(referencesOf(object), 1U);
}

}  // namespace
}  // namespace quendal::test
