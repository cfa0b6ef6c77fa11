// Decodes arbitrary text: a value, or one of the errors that decoding may raise.
#include <quendal/error.h>

#include <cstdint>
#include <cstdlib>

#include "functions/json/decoder.h"
#include "json_input.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quendal;
  try {
    static_cast<void>(json::decode(fuzz::jsonText(data, size)));
  } catch (const AutomationError& error) {
    constexpr int kJsonError = 8732;
    switch (error.number()) {
      case kJsonError:
      case error_number::kDuplicateKey:
      case error_number::kTypeMismatch:  // "\u" without digits
      case error_number::kOverflow:      // a number beyond a double
      case error_number::kOutOfStack:
        break;
      default:
        std::abort();
    }
  }
  return 0;
}
