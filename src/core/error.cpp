#include <quendal/error.h>

#include <algorithm>
#include <array>
#include <cstdint>

#include "base/text.h"
#include "core/names.h"

namespace quendal {
namespace {

struct StandardText {
  int number;
  std::u16string_view text;
};

// The platform's own texts, as a script's error object shows them.
constexpr auto kStandardTexts = std::to_array<StandardText>({
    {5, u"Invalid procedure call or argument"},
    {6, u"Overflow"},
    {7, u"Out of memory"},
    {9, u"Subscript out of range"},
    {10, u"This array is fixed or temporarily locked"},
    {13, u"Type mismatch"},
    {28, u"Out of stack space"},
    {51, u"Internal error"},
    {52, u"Bad file name or number"},
    {53, u"File not found"},
    {57, u"Device I/O error"},
    {58, u"File already exists"},
    {61, u"Disk full"},
    {67, u"Too many files"},
    {70, u"Permission denied"},
    {75, u"Path/File access error"},
    {76, u"Path not found"},
    {91, u"Object variable or With block variable not set"},
    {94, u"Invalid use of Null"},
    {424, u"Object required"},
    {429, u"ActiveX component can't create object"},
    {430, u"Class does not support Automation or does not support expected interface"},
    {438, u"Object doesn't support this property or method"},
    {445, u"Object doesn't support this action"},
    {446, u"Object doesn't support named arguments"},
    {448, u"Named argument not found"},
    {449, u"Argument not optional"},
    {450, u"Wrong number of arguments or invalid property assignment"},
    {451, u"Object not a collection"},
    {457, u"This key is already associated with an element of this collection"},
});

std::u16string standardText(int number) {
  const auto row = std::ranges::find(kStandardTexts, number, &StandardText::number);
  return std::u16string(row == kStandardTexts.end() ? u"Application-defined or object-defined error"
                                                    : row->text);
}

struct RuntimeCode {
  HRESULT code;
  int number;
};

constexpr auto kRuntimeCodes = std::to_array<RuntimeCode>({
    {DISP_E_TYPEMISMATCH, 13},
    {DISP_E_OVERFLOW, 6},
    {DISP_E_BADVARTYPE, 458},
    {DISP_E_BADINDEX, 9},
    {DISP_E_ARRAYISLOCKED, 10},
    {DISP_E_UNKNOWNNAME, 438},
    {DISP_E_MEMBERNOTFOUND, 438},
    {DISP_E_BADPARAMCOUNT, 450},
    {DISP_E_PARAMNOTOPTIONAL, 449},
    {DISP_E_PARAMNOTFOUND, 448},
    {DISP_E_NONAMEDARGS, 446},
    {E_OUTOFMEMORY, 7},
    {E_INVALIDARG, 5},
    {E_NOINTERFACE, 430},
    {E_NOTIMPL, 445},
    {E_ACCESSDENIED, 70},
});

std::string asciiOf(std::u16string_view text) {
  std::string result;
  result.reserve(text.size());
  for (const char16_t c : text) result += c < 0x80 ? static_cast<char>(c) : '?';
  return result;
}

std::u16string hexadecimal(HRESULT code) {
  return u"0x" + hexText(static_cast<std::uint32_t>(code), 8);
}

}  // namespace

AutomationError::AutomationError(Code code, std::u16string description, std::u16string source)
    : code_(code.value),
      source_(source.empty() ? std::u16string(kLibraryName) : std::move(source)),
      description_(std::move(description)),
      what_(asciiOf(description_)) {}

AutomationError::AutomationError(int number)
    : AutomationError(Code{errorCode(number)}, standardText(number), {}) {}

AutomationError::AutomationError(int number, std::u16string_view description,
                                 std::u16string_view source)
    : AutomationError(Code{errorCode(number)}, std::u16string(description),
                      std::u16string(source)) {}

AutomationError AutomationError::passedOn(HRESULT code, std::u16string_view source,
                                          std::u16string_view description) {
  std::u16string text(description);
  if (text.empty()) text = u"Automation error " + hexadecimal(code);
  return {Code{code}, std::move(text), std::u16string(source)};
}

AutomationError AutomationError::fromRuntime(HRESULT code) {
  const auto row = std::ranges::find(kRuntimeCodes, code, &RuntimeCode::code);
  if (row != kRuntimeCodes.end()) return AutomationError(row->number);
  return passedOn(code, {}, {});
}

std::int32_t AutomationError::number() const noexcept {
  const auto bits = static_cast<std::uint32_t>(code_);
  return (bits & 0xFFFF0000u) == 0x800A0000u ? static_cast<std::int32_t>(bits & 0xFFFFu) : code_;
}

}  // namespace quendal
