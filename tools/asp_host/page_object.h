// The automation objects that a page sees, made of functions.
//
//   return PageObject(stop)
//       .method(u"MapPath", {1, 1}, [site](Arguments a) { return Variant(site->map(textOf(a[0])));
//       }) .property(u"ScriptTimeout", read, write) .object();
#pragma once

#include <quendal/object.h>

#include <algorithm>
#include <atomic>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/text.h"

namespace quendal::host {

/// In call order, references followed, borrowed; omitted ones at the end are not there. What is
/// put to a property comes last.
using Arguments = std::span<const VARIANT>;
using Call = std::function<Variant(Arguments)>;

/// Orders names without regard to the case of A to Z.
struct NameOrder {
  using is_transparent = void;
  bool operator()(std::u16string_view a, std::u16string_view b) const noexcept {
    return std::ranges::lexicographical_compare(a, b, {}, asciiLower, asciiLower);
  }
};

/// How many arguments a call takes; a property's new value is not counted.
struct Count {
  std::size_t least = 0;
  std::size_t most = 0;
};

/// Set when a page must come to its end: every further call of its objects raises.
using StopFlag = std::shared_ptr<const std::atomic<bool>>;

/// Describes an object, then makes it. Names are found in any case.
class PageObject {
 public:
  explicit PageObject(StopFlag stop);

  PageObject& method(std::u16string_view name, Count count, Call call);
  /// Arguments to a property go to the default member of the object it returns.
  PageObject& property(std::u16string_view name, std::function<Variant()> read,
                       std::function<void(const VARIANT&)> write = {});
  /// What is called or put without a name.
  PageObject& defaultMember(Count count, Call read, Call write = {});
  /// A name for the default member.
  PageObject& defaultName(std::u16string_view name);
  /// What For Each visits, asked for at each enumeration.
  PageObject& elements(std::function<std::vector<Variant>()> list);

  [[nodiscard]] Object object() const;

 private:
  class Dispatch;
  struct Definition;
  std::shared_ptr<Definition> definition_;
};

}  // namespace quendal::host
