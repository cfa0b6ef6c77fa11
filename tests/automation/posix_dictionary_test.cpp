// The parts of the keyed container that are this home's own.
#include <cmath>
#include <utility>

#include "automation/dictionary_access.h"
#include "automation/dictionary_fixture.h"

namespace quendal::test {
namespace {

using PosixDictionaryTest = DictionaryTest;

TEST_F(PosixDictionaryTest, MoreKeysAreTheSameByValue) {
  const std::pair<Value, Value> same[] = {
      {i4(-7), cy(-70000)},
      {r8(1.5), cy(15000)},
      {boolean(true), i2(-1)},
      {decimal(0, 25, 1, false), r8(2.5)},
      {decimal(0, 70, 1, true), i4(-7)},
      {ui8(1ULL << 63), r8(0x1p63)},
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
      {ui8(~0ULL), i4(-1)},
      {text(u"a"), text(std::u16string_view(u"a\0", 2))},
      {text(u"Key"), text(u"key")},
  };
  for (const auto& [key, other] : same) EXPECT_TRUE(this->same(key, other));
  for (const auto& [key, other] : different) EXPECT_FALSE(this->same(key, other));
  EXPECT_EQ(call(u"Add", {error(DISP_E_PARAMNOTFOUND), i4(1)}), "error 5");  // a type mismatch
  for (const Value& key : {i4(0), i4(1), empty()}) call(u"Add", {key, i4(1)});
  EXPECT_EQ(call(u"Remove", {empty()}), "Empty");  // leaves no Empty key behind
  EXPECT_EQ(call(u"Exists", {empty()}), "0");
  EXPECT_EQ(call(u"RemoveAll"), "Empty");
  EXPECT_EQ(put(u"CompareMode", {i4(1)}), "Empty");
  const Value school = text(u"Stra\u00DFe \u00C9cole");
  EXPECT_TRUE(this->same(school, text(u"STRA\u00DFE \u00E9COLE")));
  EXPECT_FALSE(this->same(school, text(u"STRA\u00DFE \u00E8COLE")));
}

TEST_F(PosixDictionaryTest, RenamesInPlace) {
  for (int i = 1; i <= 3; ++i) call(u"Add", {i4(i), i4(10 * i)});
  EXPECT_EQ(put(u"Key", {i4(2), text(u"two")}), "Empty");
  EXPECT_EQ(call(u"Items"), "10 20 30");
  EXPECT_EQ(call(u"Exists", {i4(2)}), "0");
  EXPECT_EQ(put(u"Key", {i4(1), i4(3)}), "error 457");
  EXPECT_EQ(description_,
            "Scripting.Dictionary: This key is already associated with an element of this "
            "collection");
  EXPECT_EQ(put(u"Key", {i4(1), r8(1)}), "Empty");  // the same key
  EXPECT_EQ(put(u"Key", {i4(4), i4(5)}), "Empty");
  EXPECT_EQ(call(u"Keys"), "1 two 3 5");
}

// Against a plain model, through growth, removal and renaming.
TEST_F(PosixDictionaryTest, ManyEntriesBehaveLikeFew) {
  std::vector<std::pair<int, int>> model;
  const auto at = [&](int key) {
    return std::find_if(model.begin(), model.end(), [&](auto& e) { return e.first == key; });
  };
  const auto keyOf = [](int key) {
    return key % 2 == 0 ? i4(key) : text(u"key" + std::u16string(1, static_cast<char16_t>(key)));
  };
  const auto expectSame = [&] {
    std::string expected;
    for (const auto& [key, value] : model) {
      ASSERT_EQ(call(u"Item", {keyOf(key)}), std::to_string(value));
      expected += (expected.empty() ? "" : " ") + std::to_string(value);
    }
    ASSERT_EQ(call(u"Items"), expected);
    ASSERT_EQ(call(u"Count"), std::to_string(model.size()));
  };
  unsigned random = 12345;
  for (int step = 0; step <= 6000; ++step) {
    random = random * 1103515245U + 12345U;
    const int key = static_cast<int>(random >> 16) % 200 + 1;
    const auto found = at(key);
    const bool isNew = found == model.end();
    switch ((random >> 8) % 4) {
      case 0:
      case 1:
        ASSERT_EQ(call(u"Add", {keyOf(key), i4(step)}), isNew ? "Empty" : "error 457");
        if (isNew) model.emplace_back(key, step);
        break;
      case 2:
        ASSERT_EQ(call(u"Remove", {keyOf(key)}), isNew ? "error 32811" : "Empty");
        if (!isNew) model.erase(found);
        break;
      default:
        if (isNew || at(key + 200) != model.end()) break;
        ASSERT_EQ(put(u"Key", {keyOf(key), keyOf(key + 200)}), "Empty");
        found->first = key + 200;
    }
    if (step % 500 == 0) expectSame();
  }
}

TEST_F(PosixDictionaryTest, ItsMakerAndReaderCopyNothing) {
  automation::DictionaryMaker maker;
  auto& dictionary = static_cast<automation::IDictionary&>(*dictionary_);
  Value item = array(SafeArrayCreateVector(VT_VARIANT, 0, 1));
  SAFEARRAY* const held = item.value.parray;
  EXPECT_EQ(maker.add(dictionary, newText(u"key"), item.value), S_OK);
  EXPECT_EQ(item.value.vt, VT_EMPTY);
  Value again = text(u"again");
  EXPECT_TRUE(FAILED(maker.add(dictionary, newText(u"key"), again.value)));
  EXPECT_EQ(again.value.vt, VT_EMPTY);
  automation::DictionaryReader reader(*dictionary_);
  ASSERT_EQ(reader.next(), S_OK);
  EXPECT_EQ(reader.item().parray, held);
  void* data = nullptr;
  ASSERT_EQ(SafeArrayAccessData(held, &data), S_OK);  // a locked array cannot go
  EXPECT_EQ(put(u"Item", {text(u"key"), i4(2)}), "error 13");
  EXPECT_EQ(call(u"Remove", {text(u"key")}), "error 13");
  EXPECT_EQ(call(u"RemoveAll"), "error 13");
  EXPECT_EQ(SafeArrayUnaccessData(held), S_OK);
  EXPECT_EQ(reader.next(), S_FALSE);
}

TEST_F(PosixDictionaryTest, EnumeratorsStandOnTheirOwn) {
  for (int i = 1; i <= 3; ++i) call(u"Add", {i4(i), text(u"item")});
  DISPPARAMS none{};
  Value made;
  ASSERT_EQ(dictionary_->Invoke(DISPID_NEWENUM, IID_NULL, 0, DISPATCH_METHOD | DISPATCH_PROPERTYGET,
                                &none, &made.value, nullptr, nullptr),
            S_OK);
  void* found = nullptr;
  ASSERT_EQ(made.value.punkVal->QueryInterface(IID_IEnumVARIANT, &found), S_OK);
  auto* enumerator = static_cast<IEnumVARIANT*>(found);
  Value keys[4];
  ULONG fetched = 0;
  EXPECT_EQ(enumerator->Next(1, &keys[0].value, &fetched), S_OK);
  EXPECT_EQ(enumerator->Next(2, &keys[1].value, &fetched), S_OK);
  EXPECT_EQ(fetched, 2U);
  EXPECT_EQ(enumerator->Next(1, &keys[3].value, &fetched), S_FALSE);
  EXPECT_EQ(show(keys[0].value) + show(keys[1].value) + show(keys[2].value), "123");
  EXPECT_EQ(enumerator->Reset(), S_OK);
  EXPECT_EQ(enumerator->Skip(2), S_OK);
  EXPECT_EQ(enumerator->Next(1, &keys[3].value, nullptr), S_OK);
  EXPECT_EQ(show(keys[3].value), "3");
  EXPECT_EQ(enumerator->Skip(1), S_FALSE);
  enumerator->Release();
}

}  // namespace
}  // namespace quendal::test
