// Calls a function table's slot with arguments that are only known when the program runs.
#pragma once

#include <quendal/automation.h>

#include <cstdint>
#include <cstdlib>
#include <span>
#include <variant>

#include "core/class_description.h"

namespace quendal::fuzz {

/// An argument as the 64-bit calling conventions know it: one word, whatever the number or pointer,
/// or a VARIANT by value, which is copied to the stack.
using Word = std::intptr_t;
using SlotArgument = std::variant<Word, VARIANT>;

/// This pointer, parameters and result.
inline constexpr std::size_t kMaxSlotArguments = kMaxParameters + 2;
/// So many of them by value: each more doubles the ways there are.
inline constexpr std::size_t kMaxVariants = 3;

/// Numbers come extended to a word; the object is the first argument.
template <class... Done>
HRESULT callSlot(AnyFunction slot, std::span<const SlotArgument> arguments, Done... done) {
  if (arguments.empty())
    return reinterpret_cast<HRESULT(STDMETHODCALLTYPE*)(Done...)>(slot)(done...);
  if constexpr (sizeof...(Done) < kMaxSlotArguments) {
    constexpr std::size_t kVariants =
        (std::size_t{0} + ... + std::size_t{sizeof(Done) > sizeof(Word)});
    const auto rest = arguments.subspan(1);
    if (const Word* word = std::get_if<Word>(&arguments.front()))
      return callSlot(slot, rest, done..., *word);
    if constexpr (kVariants < kMaxVariants)
      return callSlot(slot, rest, done..., std::get<VARIANT>(arguments.front()));
  }
  std::abort();
}

/// Whether callSlot has a way for a row's parameters.
inline bool canCall(const MemberRow& row) {
  std::size_t variants = 0;
  for (const ParameterRow& parameter : row.parameters())
    if (parameter.type.type == InterfaceType::Variant && !parameter.byReference) ++variants;
  return variants <= kMaxVariants;
}

}  // namespace quendal::fuzz
