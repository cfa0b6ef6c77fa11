// What a step of a test gives or raises.
#pragma once

#include <quendal/error.h>

#include <string>

#include "base/utf8.h"

namespace quendal::test {

/// The number that a step raises, 0 for none.
template <class Step>
int raisedBy(Step&& step) {
  try {
    step();
    return 0;
  } catch (const AutomationError& error) {
    return error.number();
  }
}

/// The text that a step gives, or "error N".
template <class Step>
std::string textOrError(Step&& step) {
  std::string text;
  const int error = raisedBy([&] { text = step(); });
  return error == 0 ? text : "error " + std::to_string(error);
}

/// The text that a step gives, or number, source and description of its error.
template <class Step>
std::string textOrFailure(Step&& step) try {
  return step();
} catch (const AutomationError& error) {
  return std::to_string(error.number()) + " " + toUtf8(error.source()) + ": " +
         toUtf8(error.description());
}

}  // namespace quendal::test
