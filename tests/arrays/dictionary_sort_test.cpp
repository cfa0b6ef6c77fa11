// `ClsDictionary.Sort`.
#include <gtest/gtest.h>

#include <string>

#include "arrays/dictionary_functions.h"
#include "core/dictionary.h"
#include "tests/arrays/page_arrays.h"
#include "tests/support/script_object.h"

namespace quendal::test {
namespace {

using Entries = std::vector<std::pair<Variant, Variant>>;

Dictionary dictionaryOf(const Entries& entries) {
  Dictionary dictionary = Dictionary::create(Dictionary::Compare::Binary);
  for (const auto& [key, item] : entries) dictionary.add(key, item);
  return dictionary;
}

std::string contents(const Dictionary& dictionary) {
  return shownArray(dictionary.keys()) + " " + shownArray(dictionary.items());
}

TEST(DictionarySort, OrdersByKeyOrItem) {
  const Entries numbers = {{Variant(std::int32_t{10}), Variant(u"b")},
                           {Variant(9.5), Variant(u"B")},
                           {Variant(std::int16_t{-1}), Variant(u"a")}};
  const Entries texts = {{Variant(u"b"), Variant(std::int32_t{3})},
                         {Variant(u"B"), Variant(2.5)},
                         {Variant(u"a"), Variant(std::int32_t{10})},
                         {Variant(u"A"), Variant(2.5)}};
  const struct {
    const Entries& entries;
    bool byKey, descending;
    std::int32_t mode;
    const char* contents;
  } rows[] = {{numbers, true, false, 1, "[-1 9.5 10] [a B b]"},
              {numbers, false, false, 0, "[9.5 -1 10] [B a b]"},
              {numbers, false, true, 1, "[10 9.5 -1] [b B a]"},
              {texts, true, false, 0, "[A B a b] [2.5 2.5 10 3]"},
              {texts, false, true, 1, "[a b B A] [10 3 2.5 2.5]"}};
  for (const auto& row : rows) {
    const Dictionary dictionary = dictionaryOf(row.entries);
    const Variant result = DictionaryFunctions().sort(dictionary.object(), booleanOf(row.byKey),
                                                      booleanOf(row.descending), row.mode);
    EXPECT_EQ(result.pdispVal, dictionary.object().dispatch());
    EXPECT_EQ(contents(dictionary), row.contents);
    for (const auto& [key, item] : row.entries)
      EXPECT_EQ(shownArray(dictionary.item(key)), shownArray(item));
  }
}

TEST(DictionarySort, KeepsTypesObjectsAndArrays) {
  const Object plain = ScriptObject().object();
  const Dictionary dictionary = dictionaryOf({{Variant(std::int16_t{4}), Variant(plain)},
                                              {Variant(3.0), of(u"xy")},
                                              {Variant(std::int32_t{2}), Variant(Object())},
                                              {Variant::date(1.0), Variant::null()}});
  DictionaryFunctions().sort(dictionary.object(), Boolean::True, Boolean::False, 1);
  EXPECT_EQ(shownArray(dictionary.items()), "[Null Nothing [x y] ?]");
  EXPECT_EQ(dictionary.item(Variant(4.0)).pdispVal, plain.dispatch());
  const Variant keys = dictionary.keys();
  const VARTYPE types[] = {VT_DATE, VT_I4, VT_R8, VT_I2};
  for (std::size_t i = 0; i < 4; ++i) EXPECT_EQ(ArrayView(keys).at(i).vt, types[i]);
}

TEST(DictionarySort, RefusesWhatItCannotSortAndChangesNothing) {
  const auto raised = [&](const Object& object, std::int32_t mode = 1) {
    return raisedBy(
        [&] { DictionaryFunctions().sort(object, Boolean::False, Boolean::False, mode); });
  };
  EXPECT_EQ(raised(Object()), 91);
  EXPECT_EQ(raised(ScriptObject().object()), 13);
  const Dictionary empty = Dictionary::create();
  EXPECT_EQ(raised(empty.object()), 0);
  EXPECT_EQ(raised(empty.object(), 2), 5);
  const std::pair<Variant, int> rows[] = {{Variant::null(), 94},
                                          {of(u"a"), 13},
                                          {Variant(Object()), 91},
                                          {Variant(ScriptObject().object()), 438}};
  for (const auto& [item, error] : rows) {
    const Dictionary dictionary =
        dictionaryOf({{Variant(u"b"), Variant(u"z")}, {Variant(u"a"), item}});
    EXPECT_EQ(raised(dictionary.object()), error);
    EXPECT_EQ(contents(dictionary), "[b a] [z " + shownArray(item) + "]");
  }
}

TEST(DictionarySort, BearsWithItemsThatChangeTheDictionaryWhenAsked) {
  const Dictionary dictionary = Dictionary::create();
  const auto change = [&](auto) {
    dictionary.remove(Variant(u"b"));
    dictionary.add(Variant(u"new"), Variant(u"n"));
    return Variant(u"c");
  };
  dictionary.add(Variant(u"c"), Variant(ScriptObject().defaultMember(change).object()));
  dictionary.add(Variant(u"b"), Variant(u"b"));
  dictionary.add(Variant(u"a"), Variant(u"a"));
  DictionaryFunctions().sort(dictionary.object(), Boolean::False, Boolean::False, 1);
  EXPECT_EQ(contents(dictionary), "[new a c] [n a ?]");
}

}  // namespace
}  // namespace quendal::test
