// Sorting and growing a page's arrays, against the standard library on the same values.
#include <quendal/object.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "arrays/array_functions.h"
#include "arrays/dictionary_functions.h"
#include "arrays/sort_in_place.h"
#include "bench/row.h"
#include "core/dictionary.h"

namespace quendal::bench {
namespace {

constexpr int kNumbers = 1'000'000;
constexpr int kTexts = 100'000;

template <class Values>
Variant arrayOf(const Values& values) {
  SAFEARRAYBOUND bound{static_cast<ULONG>(values.size()), 0};
  Variant array = Variant::array(SafeArrayCreate(VT_VARIANT, 1, &bound));
  const ArrayView view(array);
  for (std::size_t i = 0; i < values.size(); ++i) view.put(i, Variant(values[i]).release());
  return array;
}

/// Milliseconds of one run of `work` on a fresh copy of `values`, the best of several.
template <class Values, class Work>
double onCopies(const Values& values, Work&& work) {
  double best = 1e300;
  for (int round = 0; round < 7; ++round) {
    Values copy = values;
    best = std::min(best, microseconds(
                              1, [&] { work(copy); }, 1));
  }
  return best / 1000;
}

double sortTime(const Variant& array, CompareMode mode) {
  return onCopies(array, [&](Variant& copy) { qSortInPlace(copy, kOwnBound, kOwnBound, {mode}); });
}

template <class Values>
double peerTime(const Values& values) {
  return onCopies(values, [](Values& copy) { std::ranges::sort(copy); });
}

std::vector<std::u16string> randomTexts(std::size_t count, std::u16string_view start) {
  std::mt19937 random(11);
  std::vector<std::u16string> texts;
  for (std::size_t i = 0; i < count; ++i) {
    std::u16string text(start);
    for (int j = 0; j < 10; ++j) text += static_cast<char16_t>(u'a' + random() % 26);
    texts.push_back(std::move(text));
  }
  return texts;
}

void sortRows() {
  std::mt19937_64 random(5);
  std::vector<double> doubles(kNumbers);
  for (double& value : doubles) value = std::ldexp(static_cast<double>(random() >> 11), -30);
  const double onRandom = sortTime(arrayOf(doubles), CompareMode::Text);
  row("sort 1,000,000 numbers (ms)", onRandom, peerTime(doubles));

  const std::vector<std::u16string> texts = randomTexts(kTexts, u"");
  const std::vector<std::u16string> alike = randomTexts(kTexts, u"customer record ");
  std::vector<Variant> mixed;
  for (std::size_t i = 0; i < doubles.size(); ++i)
    mixed.push_back(i % 2 == 0 ? Variant(doubles[i]) : Variant(static_cast<std::int32_t>(i)));
  row("sort 1,000,000 numbers of two types (ms)", sortTime(arrayOf(mixed), CompareMode::Text),
      peerTime(doubles));
  row("sort 100,000 texts, binary (ms)", sortTime(arrayOf(texts), CompareMode::Binary),
      peerTime(texts));
  const double onTexts = sortTime(arrayOf(texts), CompareMode::Text);
  row("sort 100,000 texts, without case (ms)", onTexts, peerTime(texts));
  row("sort 100,000 texts of one beginning (ms)", sortTime(arrayOf(alike), CompareMode::Text),
      peerTime(alike));

  // Against the random one, not against a peer.
  std::vector<double> other = doubles;
  std::ranges::sort(other);
  row("sort in order / random (ms)", sortTime(arrayOf(other), CompareMode::Text), onRandom);
  std::ranges::reverse(other);
  row("sort in opposite order / random (ms)", sortTime(arrayOf(other), CompareMode::Text),
      onRandom);
  std::ranges::fill(other, 1.0);
  row("sort all equal / random (ms)", sortTime(arrayOf(other), CompareMode::Text), onRandom);
  for (std::size_t i = 0; i < other.size(); ++i)
    other[i] = static_cast<double>(i < other.size() / 2 ? i : other.size() - i);
  row("sort rising and falling / random (ms)", sortTime(arrayOf(other), CompareMode::Text),
      onRandom);
  const std::vector<std::u16string> half = randomTexts(kTexts / 2, u"");
  row("sort 100,000 / 50,000 texts (ms)", onTexts, sortTime(arrayOf(half), CompareMode::Text));
  doubles.resize(kNumbers / 2);
  row("sort 1,000,000 / 500,000 numbers (ms)", onRandom,
      sortTime(arrayOf(doubles), CompareMode::Text));
}

double pushTime(int count) {
  return onCopies(Variant(), [&](Variant& variable) {
    ArrayFunctions arrays;
    variable = Variant::array(nullptr);
    VariantRef reference(&variable);
    for (int i = 0; i < count; ++i) arrays.push(reference, Variant(std::int32_t{i}));
  });
}

void growthRows() {
  constexpr int kPushes = 10'000;  // the system of one home copies the array each time
  const double ours = pushTime(kPushes);
  const std::vector<Variant> none;
  row("push 10,000 (ms)", ours, onCopies(none, [](std::vector<Variant>& values) {
        for (int i = 0; i < kPushes; ++i) values.emplace_back(std::int32_t{i});
      }));
  row("push 20,000 / 10,000 (ms)", pushTime(2 * kPushes), ours);
}

double dictionarySortTime(std::size_t count) {
  double best = 1e300;
  for (int round = 0; round < 5; ++round) {
    const Dictionary dictionary = Dictionary::create();
    for (const std::u16string& text : randomTexts(count, u"")) dictionary.set(text, text);
    DictionaryFunctions functions;
    best = std::min(
        best,
        microseconds(
            1, [&] { functions.sort(dictionary.object(), Boolean::True, Boolean::False, 1); }, 1));
  }
  return best / 1000;
}

}  // namespace

void run() {
  sortRows();
  growthRows();
  const double smaller = dictionarySortTime(10'000);
  row("dictionary sort 20,000 / 10,000 (ms)", dictionarySortTime(20'000), smaller);
}

}  // namespace quendal::bench
