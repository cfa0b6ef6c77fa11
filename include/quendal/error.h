// Automation errors: what a script sees as Err.Number, Err.Source and Err.Description.
#pragma once

#include <quendal/automation.h>

#include <cstdint>
#include <exception>
#include <string>
#include <string_view>

namespace quendal {

/// Script-visible error numbers that the library raises.
namespace error_number {
inline constexpr int kInvalidCall = 5;
inline constexpr int kOverflow = 6;
inline constexpr int kOutOfMemory = 7;
inline constexpr int kSubscript = 9;
inline constexpr int kTypeMismatch = 13;
inline constexpr int kOutOfStack = 28;
inline constexpr int kInternal = 51;
inline constexpr int kObjectNotSet = 91;
inline constexpr int kInvalidNull = 94;
inline constexpr int kObjectRequired = 424;
inline constexpr int kCannotCreate = 429;
inline constexpr int kNoSuchMember = 438;
inline constexpr int kWrongArguments = 450;
inline constexpr int kNotACollection = 451;
inline constexpr int kDuplicateKey = 457;
}  // namespace error_number

/// The code under which script-visible number n crosses the boundary: 0x800A0000 + n.
constexpr HRESULT errorCode(int number) noexcept {
  return static_cast<HRESULT>(0x800A0000u + static_cast<unsigned>(number));
}

/// A failure on its way to the page.
class QUENDAL_EXPORT AutomationError : public std::exception {
 public:
  /// By number, with the standard text of that number and the library as source.
  explicit AutomationError(int number);
  /// By number, with a description and, if not empty, a source of its own.
  AutomationError(int number, std::u16string_view description, std::u16string_view source = {});
  /// A failure reported by somebody else, passed on as it came.
  static AutomationError passedOn(HRESULT code, std::u16string_view source,
                                  std::u16string_view description);
  /// A failed call of the automation runtime, by the number a script knows it under.
  static AutomationError fromRuntime(HRESULT code);

  [[nodiscard]] HRESULT code() const noexcept { return code_; }
  /// The number as a script's error object shows it: n for 0x800A0000 + n, otherwise the code.
  [[nodiscard]] std::int32_t number() const noexcept;
  [[nodiscard]] const std::u16string& source() const noexcept { return source_; }
  [[nodiscard]] const std::u16string& description() const noexcept { return description_; }
  [[nodiscard]] const char* what() const noexcept override { return what_.c_str(); }

 private:
  struct Code {
    HRESULT value;
  };
  AutomationError(Code code, std::u16string description, std::u16string source);

  HRESULT code_;
  std::u16string source_;
  std::u16string description_;
  std::string what_;
};

/// Throws AutomationError::fromRuntime when the code is a failure.
inline void check(HRESULT code) {
  if (FAILED(code)) throw AutomationError::fromRuntime(code);
}

}  // namespace quendal
