// Tables of short texts in one text: rows between bars, two columns with "=" between them.
#pragma once

#include <gtest/gtest.h>

#include <string_view>

#include "base/utf8.h"

namespace quendal::test {

/// Calls `test(row)` for each row.
template <class Test>
void forEachText(std::u16string_view rows, Test test) {
  for (;;) {
    const std::size_t bar = rows.find(u'|');
    SCOPED_TRACE(toUtf8(rows.substr(0, bar)));
    test(rows.substr(0, bar));
    if (bar == std::u16string_view::npos) return;
    rows.remove_prefix(bar + 1);
  }
}

/// Calls `test(left, right)` for each row; the right column as UTF-8.
template <class Test>
void forEachPair(std::u16string_view rows, Test test) {
  forEachText(rows, [&test](std::u16string_view row) {
    const std::size_t mark = row.find(u'=');
    test(row.substr(0, mark), toUtf8(row.substr(mark + 1)));
  });
}

}  // namespace quendal::test
