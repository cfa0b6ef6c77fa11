// The arguments of one call.
#pragma once

#include <deque>
#include <vector>

#include "boundary/page.h"
#include "core/class_description.h"

namespace quendal::fuzz {

/// Makes arguments, and owns what is passed by value until the call is over.
class Arguments {
 public:
  explicit Arguments(Page& page) : page_(page) {}
  Arguments(const Arguments&) = delete;
  Arguments& operator=(const Arguments&) = delete;
  ~Arguments();

  /// As a host passes one in a call by name: a value, a reference to a variable or to an element
  /// of an array. For a parameter, or for none in particular. Borrowed.
  VARIANT late(const ParameterRow* parameter);
  /// A value that stays where it is until the call is over.
  Variant& own(Variant value) { return owned_.emplace_back(std::move(value)); }

  /// A value that a parameter takes.
  [[nodiscard]] static Variant suitable(Page& page, const ParameterRow& parameter);

 private:
  VARIANT reference(VARIANT& target, VARTYPE type);
  VARIANT element();

  Page& page_;
  std::deque<Variant> owned_;
  std::vector<SAFEARRAY*> locked_;  // those with an element that is passed by reference
};

}  // namespace quendal::fuzz
