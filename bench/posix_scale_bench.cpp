// Work of an unusual size against half of it, in time and in memory over what the input takes.
#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>

#include "arrays/array_functions.h"
#include "base/text.h"
#include "bench/json_documents.h"
#include "bench/json_sides.h"
#include "bench/posix_cost.h"
#include "bench/scratch_folder.h"
#include "bench/scratch_log.h"
#include "core/dictionary.h"

namespace quendal::bench {
namespace {

/// Two rows of `cost(size)` against `cost(size / 2)`.
template <class CostOf>
void growth(const std::string& name, int size, CostOf&& cost) {
  const Cost half = cost(size / 2), whole = cost(size);
  row(name + ", ms (half)", whole.milliseconds, half.milliseconds);
  row("  memory, MiB (half)", whole.mebibytes, half.mebibytes);
}

void jsonRows() {
  constexpr int kCharacters = 100'000'000;
  const std::u16string piece = utf16Of(messages()) + u",";
  const OurJson json;
  const auto textOf = [&](int characters) {
    std::u16string text = u"[";
    while (text.size() < static_cast<std::size_t>(characters)) text += piece;
    text.back() = u']';
    return Variant(text);
  };
  growth("decode 100,000,000 characters", kCharacters, [&](int characters) {
    return costOf([&] { return textOf(characters); },
                  [&](Variant& text) { return json.decode(text); });
  });
  growth("encode 100,000,000 characters", kCharacters, [&](int characters) {
    return costOf(
        [&] {
          Variant text = textOf(characters);
          return json.decode(text);
        },
        [&](Variant& value) { return json.encode(value); });
  });
}

void collectionRows() {
  constexpr int kElements = 1'000'000;
  const auto nothing = [] { return 0; };
  growth("fill and ask a dictionary of 1,000,000", kElements, [&](int count) {
    return costOf(nothing, [count](int) {
      const Dictionary dictionary = Dictionary::create();
      for (int i = 0; i < count; ++i) dictionary.set(u"key " + decimalText(i), std::int32_t{i});
      for (int i = 0; i < count; ++i) dictionary.object().get(u"Item", u"key " + decimalText(i));
      return dictionary.object();
    });
  });
  const auto pushed = [](int count) {
    ArrayFunctions arrays;
    Variant list = Variant::array(nullptr);
    VariantRef reference(&list);
    for (int i = 0; i < count; ++i)
      arrays.push(reference, Variant(static_cast<std::int32_t>(i * 7919LL % count)));
    return list;
  };
  growth("Push 1,000,000 elements", kElements,
         [&](int count) { return costOf(nothing, [&](int) { return pushed(count); }); });
  growth("Sort 1,000,000 elements", kElements, [&](int count) {
    return costOf(
        [&] { return pushed(count); },
        [](Variant& list) { return Owned<ArrayFunctions>::make().object().call(u"Sort", list); });
  });
}

void logRows() {
  const auto write = [](const Object& logger, int count) {
    for (int i = 0; i < count; ++i)
      logger.call(u"WriteLog", std::int16_t{2}, u"The total of the report was computed.");
  };
  growth("1,000,000 entries in one log", 1'000'000, [&](int count) {
    const ScratchFolder folder;
    return costOf([&] { return loggerIn(folder / "log"); },
                  [&](const Object& logger) {
                    write(logger, count);
                    return 0;
                  });
  });
  // The archives of one day are numbered; each roll-over looks for the first number that is free.
  growth("a roll-over to the 1,000th archive of a day", 1000, [&](int count) {
    const ScratchFolder folder;
    return costOf(
        [&] {
          Object logger = loggerIn(folder / "log");
          logger.put(u"RolloverBytes", std::int32_t{1});
          write(logger, count);  // the first creates the file, each other one an archive
          return logger;
        },
        [&](const Object& logger) {
          write(logger, 1);
          return 0;
        });
  });
}

}  // namespace

void run() {
  jsonRows();
  collectionRows();
  logRows();
}

}  // namespace quendal::bench
