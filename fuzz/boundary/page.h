// The page that calls the library in a run: its variables, and what its code does when the library
// calls back.
//
// It keeps to what a host guarantees. The arguments of a call and the variables that they refer to
// stay in place; what the variables hold may change at any moment. A locked array is neither
// re-dimensioned nor freed. An object is kept alive by those who hold it, and by nobody else.
#pragma once

#include <quendal/object.h>

#include <array>
#include <cstdint>
#include <vector>

#include "boundary/input.h"

namespace quendal::fuzz {

class Page {
 public:
  explicit Page(Input& input);
  Page(const Page&) = delete;
  Page& operator=(const Page&) = delete;
  /// Lets go of everything, with whatever the objects that go do then. Ends the process when the
  /// library still holds one of the page's objects.
  ~Page();

  Input& in;

  // Variables. Each index counts round.

  /// One that can hold anything; never a reference.
  VARIANT& variable(std::size_t i) noexcept { return variables_[i % variables_.size()]; }
  [[nodiscard]] std::size_t variableCount() const noexcept { return variables_.size(); }
  /// A reference to a variable, or to another such reference.
  VARIANT& link(std::size_t i) noexcept { return links_[i % links_.size()]; }
  /// One with a type of its own, which its tag is.
  VARIANT& typed(std::size_t i) noexcept { return typed_[i % typed_.size()]; }
  [[nodiscard]] std::size_t typedCount() const noexcept { return typed_.size(); }
  /// The one of a type that the page has a variable for.
  VARIANT& typedAs(VARTYPE type) noexcept;

  /// Puts a value into a variable as a host does: a locked array stays, references are followed.
  static void store(VARIANT& variable, Variant value);

  // Page code.

  /// What the input says next, when the library calls: change variables, call the library, ...
  void act();
  /// False once the page has done enough in a run; from then on its objects only raise.
  [[nodiscard]] bool mayGoOn() const noexcept { return budget_ > 0; }

  /// Counts nested calls of the library.
  [[nodiscard]] bool enterCall() noexcept { return depth_ < kDeepestCall && ++depth_ > 0; }
  void leaveCall() noexcept { --depth_; }

  /// Page objects that exist.
  void objectMade() noexcept { ++objects_; }
  void objectGone() noexcept { --objects_; }

  /// A dictionary that may hold itself; it is emptied at the end.
  void willEmpty(const Object& dictionary) { cyclic_.push_back(dictionary); }

 private:
  static constexpr int kDeepestCall = 4;
  static constexpr int kBudget = 200;

  void actOnce();
  void clear(VARIANT& variable) { store(variable, {}); }
  void erase(VARIANT& variable);
  void redim(VARIANT& variable);
  void replaceElement(VARIANT& variable);
  void lock(VARIANT& variable);
  void unlockAll();
  void changeDictionary(VARIANT& variable);
  void letGoOf(VARIANT& variable);
  void changeTyped(VARIANT& variable);

  std::array<Variant, 10> variables_;
  std::array<VARIANT, 3> links_;
  std::vector<Variant> typed_;
  std::vector<SAFEARRAY*> locked_;
  std::vector<Object> cyclic_;
  int budget_ = kBudget;
  int depth_ = 0;
  int objects_ = 0;
};

}  // namespace quendal::fuzz
