// The parts of the keyed container that are this home's own.
#include <algorithm>
#include <cmath>
#include <thread>
#include <tuple>

#include "automation/dictionary_access.h"
#include "automation/dictionary_fixture.h"
#include "automation/reference.h"

namespace quendal::test {
namespace {

using PosixDictionaryTest = DictionaryTest;

TEST_F(PosixDictionaryTest, MoreKeysAreTheSameByValue) {
  const std::tuple<Variant, Variant, bool> rows[] = {
      {-7, cy(-70000), true},
      {decimal(0, 70, 1, true), -7, true},
      {ui8(1ULL << 63), 0x1p63, true},
      {Variant::null(), Variant::null(), true},
      {u"", make(VT_BSTR, &VARIANT::bstrVal, nullptr), true},
      {0.0, -0.0, true},
      {std::nan(""), std::nan(""), true},
      {Variant(), 0, false},
      {Variant(), Variant::null(), false},
      {Variant(), u"", false},
      {i8(9007199254740993), i8(9007199254740992), false},
      {ui8(~0ULL), -1, false},
      {u"a", std::u16string_view(u"a\0", 2), false},
  };
  for (const auto& [key, other, alike] : rows) EXPECT_EQ(same(key, other), alike);
  EXPECT_EQ(call(u"Add", {Variant::missing(), 1}), "error 5");  // a type mismatch
  EXPECT_EQ(put(u"CompareMode", {1}), "~");
  EXPECT_TRUE(same(u"Stra\u00DFe \u00C9cole", u"STRA\u00DFE \u00E9COLE"));
  EXPECT_FALSE(same(u"\u00C9cole", u"\u00E8cole"));
}

TEST_F(PosixDictionaryTest, RenamesInPlace) {
  for (int i = 1; i <= 3; ++i) call(u"Add", {i, 10 * i});
  EXPECT_EQ(put(u"Key", {2, u"two"}), "~");
  EXPECT_EQ(call(u"Exists", {2}), "False");
  EXPECT_EQ(put(u"Key", {1, 3}), "error 457");
  EXPECT_EQ(error_,
            "457 Scripting.Dictionary: This key is already associated with an element of this "
            "collection");
  EXPECT_EQ(put(u"Key", {1, 1.0}), "~");  // the same key
  EXPECT_EQ(put(u"Key", {4, 5}), "~");
  EXPECT_EQ(call(u"Keys") + call(u"Items"), "[1 two 3 5][10 20 30 ~]");
  for (int i = 1000; i < 1010; ++i) call(u"Add", {i, 0});  // so many that there is an index
  for (int i = 5; i < 100; ++i) EXPECT_EQ(put(u"Key", {i, i + 1}), "~");
}

// Against a plain model, through growth, removal and renaming.
TEST_F(PosixDictionaryTest, ManyEntriesBehaveLikeFew) {
  std::vector<int> model;
  const auto keyOf = [](int key) {
    return key % 2 == 0 ? Variant(key) : Variant(u"key" + std::u16string(1, char16_t(key)));
  };
  unsigned random = 12345;
  for (int step = 1; step <= 6000; ++step) {
    random = random * 1103515245U + 12345U;
    const int key = static_cast<int>(random >> 16) % 200 + 1;
    const auto found = std::ranges::find(model, key);
    const bool isNew = found == model.end();
    ASSERT_EQ(call(u"Exists", {keyOf(key)}), isNew ? "False" : "True");
    if (isNew) {
      ASSERT_EQ(call(u"Add", {keyOf(key), key}), "~");
      model.push_back(key);
    } else if (random % 4096 < 2048 || std::ranges::count(model, key + 200) > 0) {
      ASSERT_EQ(call(u"Remove", {keyOf(key)}), "~");
      model.erase(found);
    } else {
      ASSERT_EQ(put(u"Key", {keyOf(key), keyOf(key + 200)}), "~");
      ASSERT_EQ(put(u"Item", {keyOf(key + 200), key + 200}), "~");
      *found = key + 200;
    }
    if (step % 500 != 0) continue;
    std::string expected;
    for (const int each : model) expected += " " + std::to_string(each);
    ASSERT_EQ(call(u"Items"), "[" + expected.substr(1) + "]");
  }
}

TEST_F(PosixDictionaryTest, ItsMakerAndReaderCopyNothing) {
  automation::DictionaryMaker maker;
  Variant item = arrayOf({7});
  SAFEARRAY* const held = item.parray;
  EXPECT_EQ(maker.add(*dictionary_.table(), u"key", item), S_OK);
  EXPECT_EQ(item.vt, VT_EMPTY);
  automation::DictionaryReader reader(*dictionary_.table());
  ASSERT_EQ(reader.next(), S_OK);
  EXPECT_EQ(reader.item().parray, held);
  ++held->cLocks;  // what is locked cannot go
  EXPECT_EQ(put(u"Item", {u"key", 2}), "error 13");
  EXPECT_EQ(call(u"Remove", {u"key"}), "error 13");
  EXPECT_EQ(call(u"RemoveAll"), "error 13");
  --held->cLocks;
  EXPECT_EQ(reader.next(), S_FALSE);
}

TEST_F(PosixDictionaryTest, EnumeratorsStandOnTheirOwn) {
  for (int i = 1; i <= 3; ++i) call(u"Add", {i, u"item"});
  IUnknown* made = nullptr;
  ASSERT_EQ(dictionary_.table()->_NewEnum(&made), S_OK);
  const auto keys = automation::Reference<IEnumVARIANT>(static_cast<IEnumVARIANT*>(made));
  Variant next[4];
  ULONG fetched = 0;
  EXPECT_EQ(keys->Next(4, next, &fetched), S_FALSE);
  EXPECT_EQ(fetched, 3U);
  EXPECT_EQ(show(next[0]) + show(next[1]) + show(next[2]), "123");
  EXPECT_EQ(keys->Reset() + keys->Skip(2), S_OK);
  IEnumVARIANT* clone = nullptr;
  ASSERT_EQ(keys->Clone(&clone), S_OK);
  for (IEnumVARIANT* const each : {keys.get(), clone}) {
    EXPECT_EQ(each->Next(1, next, nullptr), S_OK);
    EXPECT_EQ(show(next[0]), "3");
  }
  clone->Release();
  EXPECT_EQ(keys->Skip(1), S_FALSE);
}

TEST_F(PosixDictionaryTest, ErrorsAreToldOnceAndToTheirThread) {
  EXPECT_TRUE(FAILED(dictionary_.table()->Remove(source(Variant(1)))));
  IErrorInfo* info = nullptr;
  std::thread([&] { EXPECT_EQ(GetErrorInfo(0, &info), S_FALSE); }).join();
  ASSERT_EQ(GetErrorInfo(0, &info), S_OK);
  EXPECT_EQ(info->Release(), 0U);
  EXPECT_EQ(GetErrorInfo(0, &info), S_FALSE);
}

}  // namespace
}  // namespace quendal::test
