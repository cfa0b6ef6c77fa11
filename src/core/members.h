// A member is described once: one row of its class's table, from which templates derive the
// function-table slot, the late-bound call and the types of the interface.
//
//   method<&Logging::writeLog>(u"WriteLog", u"Writes an entry.",
//                              {in(u"IN_iLogLevel"), optional(u"IN_szLog", EmptyText{}), ...})
#pragma once

#include <algorithm>
#include <array>
#include <tuple>
#include <utility>

#include "core/parameters.h"

namespace quendal {

/// A required parameter, in a row.
constexpr ParameterRow in(std::u16string_view name) { return {name}; }
/// An optional parameter, with its declared default if it has one.
constexpr ParameterRow optional(std::u16string_view name,
                                ParameterDefault defaultValue = NoDefault{}) {
  return {name, true, defaultValue};
}

namespace detail {

template <class M>
struct MemberTraits;
template <class C, class R, class... P>
struct MemberTraits<R (C::*)(P...)> {
  using Class = C;
  using Returned = R;
  using Parameters = std::tuple<P...>;
};

/// Keeps an object alive for the length of a call on it, as foreign code that runs meanwhile may
/// let go of its last reference. Null for a call that runs none.
class Hold {
 public:
  explicit Hold(DispatchObject* object) noexcept : object_(object) {
    if (object_ != nullptr) object_->addRef();
  }
  Hold(const Hold&) = delete;
  Hold& operator=(const Hold&) = delete;
  ~Hold() {
    if (object_ != nullptr) object_->release();
  }

 private:
  DispatchObject* object_;
};

/// Calls a function with arguments that are made one after the other, as making one may run the
/// page's code, and that live until it returns. Only a list in braces promises that order.
struct InOrder {
  template <class Function, class... Arguments>
  explicit InOrder(const Function& function, Arguments&&... arguments) {
    function(arguments...);
  }
};

template <MemberKind Kind, auto Member, class Parameters>
struct Slot;

/// The function-table entry and the late-bound call of one member.
template <MemberKind Kind, auto Member, class... P>
struct Slot<Kind, Member, std::tuple<P...>> {
  using Traits = MemberTraits<decltype(Member)>;
  using R = typename Traits::Returned;
  using Indexes = std::index_sequence_for<P...>;

  static MemberRow row(std::u16string_view name, std::u16string_view help,
                       const std::array<ParameterRow, sizeof...(P)>& parameters) {
    static_assert(sizeof...(P) <= kMaxParameters);
    MemberRow row;
    row.name = name;
    row.kind = Kind;
    row.help = help;
    row.parameterCount = sizeof...(P);
    std::ranges::copy(parameters, row.parameterRows.begin());
    [[maybe_unused]] ParameterRow* next = row.parameterRows.data();
    ((next->type = Parameter<P>::kType, next->byReference = Parameter<P>::kByReference, ++next),
     ...);
    row.late = &late;
    if constexpr (std::is_void_v<R>) {
      row.slot = reinterpret_cast<AnyFunction>(&call);
    } else {
      row.result = Result<R>::kType;
      row.slot = reinterpret_cast<AnyFunction>(&callFor<typename Result<R>::Abi>);
    }
    return row;
  }

 private:
  static auto member(DispatchObject& object) noexcept {
    return [&instance = static_cast<Component<typename Traits::Class>&>(object).instance](
               auto&... arguments) -> R { return (instance.*Member)(arguments...); };
  }

  /// A plain property's getter runs no foreign code.
  static DispatchObject* heldIn(DispatchObject& object) noexcept {
    return Kind == MemberKind::Get && sizeof...(P) == 0 ? nullptr : &object;
  }

  static HRESULT STDMETHODCALLTYPE call(DispatchObject* self,
                                        typename Parameter<P>::Abi... arguments) noexcept {
    const Hold hold(heldIn(*self));
    try {
      InOrder{member(*self), Parameter<P>::fromTable(arguments)...};
      return S_OK;
    } catch (...) {
      return publishCurrentException(nullptr);
    }
  }

  template <class Abi>
  static HRESULT STDMETHODCALLTYPE callFor(DispatchObject* self,
                                           typename Parameter<P>::Abi... arguments,
                                           Abi* result) noexcept {
    if (result == nullptr) return E_POINTER;
    *result = Abi{};
    const Hold hold(heldIn(*self));
    try {
      InOrder{[&](auto&... own) { *result = Result<R>::toTable(member(*self)(own...)); },
              Parameter<P>::fromTable(arguments)...};
      return S_OK;
    } catch (...) {
      return publishCurrentException(nullptr);
    }
  }

  static void late(DispatchObject& object, const CallFrame& frame, Variant& result) {
    const Hold hold(heldIn(object));
    lateWith(object, frame, result, Indexes{});
  }

  template <std::size_t... I>
  static void lateWith(DispatchObject& object, [[maybe_unused]] const CallFrame& frame,
                       [[maybe_unused]] Variant& result, std::index_sequence<I...>) {
    if constexpr (std::is_void_v<R>)
      InOrder{member(object), Parameter<P>::fromCall(frame, I)...};
    else
      InOrder{[&](auto&... own) { result = Result<R>::toVariant(member(object)(own...)); },
              Parameter<P>::fromCall(frame, I)...};
  }
};

template <auto Member>
using ParametersOf = typename MemberTraits<decltype(Member)>::Parameters;
template <auto Member>
using Rows = std::array<ParameterRow, std::tuple_size_v<ParametersOf<Member>>>;
template <MemberKind Kind, auto Member>
using SlotOf = Slot<Kind, Member, ParametersOf<Member>>;

}  // namespace detail

/// A row for a method, a property's getter, and a property's setter.
template <auto Member>
MemberRow method(std::u16string_view name, std::u16string_view help,
                 const detail::Rows<Member>& parameters = {}) {
  return detail::SlotOf<MemberKind::Method, Member>::row(name, help, parameters);
}
template <auto Member>
MemberRow get(std::u16string_view name, std::u16string_view help,
              const detail::Rows<Member>& parameters = {}) {
  return detail::SlotOf<MemberKind::Get, Member>::row(name, help, parameters);
}
template <auto Member>
MemberRow put(std::u16string_view name, std::u16string_view help,
              const detail::Rows<Member>& parameters) {
  return detail::SlotOf<MemberKind::Put, Member>::row(name, help, parameters);
}

}  // namespace quendal
