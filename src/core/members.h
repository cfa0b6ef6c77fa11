// A member is described once: one row of its class's table, from which templates derive the
// function-table slot, the late-bound call and the types of the interface.
//
//   method<&Logging::writeLog>(u"WriteLog", u"Writes an entry.",
//                              {in(u"IN_iLogLevel"), optional(u"IN_szLog", EmptyText{}), ...})
#pragma once

#include <optional>
#include <tuple>
#include <utility>

#include "core/parameters.h"

namespace quendal {

/// What a row says of a parameter besides its C++ type.
struct ParameterSpec {
  std::u16string_view name;
  bool optional = false;
  ParameterDefault defaultValue = NoDefault{};
};

/// A required parameter.
constexpr ParameterSpec in(std::u16string_view name) { return {name}; }
/// An optional parameter, with its declared default if it has one.
constexpr ParameterSpec optional(std::u16string_view name,
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
template <class C, class R, class... P>
struct MemberTraits<R (C::*)(P...) const> : MemberTraits<R (C::*)(P...)> {};

/// Keeps an object alive for the length of a call on it: foreign code that runs meanwhile may let
/// go of its last reference. A plain property's getter runs none, and goes without.
class Hold {
 public:
  explicit Hold(DispatchObject& object) noexcept : object_(object) { object_.addRef(); }
  Hold(const Hold&) = delete;
  Hold& operator=(const Hold&) = delete;
  ~Hold() { object_.release(); }

 private:
  DispatchObject& object_;
};
struct NoHold {
  explicit NoHold(DispatchObject&) noexcept {}
};

template <MemberKind Kind, auto Member, class Parameters>
struct Slot;

/// The function-table entry and the late-bound call of one member.
template <MemberKind Kind, auto Member, class... P>
struct Slot<Kind, Member, std::tuple<P...>> {
  using Traits = MemberTraits<decltype(Member)>;
  using C = typename Traits::Class;
  using R = typename Traits::Returned;
  using HoldForCall =
      std::conditional_t<Kind == MemberKind::Get && sizeof...(P) == 0, NoHold, Hold>;

  static C& instanceOf(DispatchObject& object) {
    return static_cast<Component<C>&>(object).instance;
  }

  static HRESULT STDMETHODCALLTYPE call(DispatchObject* self,
                                        typename Parameter<P>::Abi... arguments) noexcept {
    const HoldForCall hold(*self);
    try {
      (instanceOf(*self).*Member)(typename Parameter<P>::Argument(arguments).get()...);
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
    const HoldForCall hold(*self);
    try {
      *result = Result<R>::toTable(
          (instanceOf(*self).*Member)(typename Parameter<P>::Argument(arguments).get()...));
      return S_OK;
    } catch (...) {
      return publishCurrentException(nullptr);
    }
  }

  static void late(DispatchObject& object, CallFrame& frame, Variant& result) {
    lateWith(object, frame, result, std::index_sequence_for<P...>{});
  }

 private:
  template <std::size_t... I>
  static void lateWith(DispatchObject& object, [[maybe_unused]] CallFrame& frame,
                       [[maybe_unused]] Variant& result, std::index_sequence<I...>) {
    const HoldForCall hold(object);
    // Made one after the other, in place: converting one may run the page's code.
    std::tuple<std::optional<typename Parameter<P>::Argument>...> arguments;
    (std::get<I>(arguments).emplace(frame, I), ...);
    const auto writeBack = [&] { (handBack(*std::get<I>(arguments)), ...); };
    try {
      if constexpr (std::is_void_v<R>)
        (instanceOf(object).*Member)(std::get<I>(arguments)->get()...);
      else
        result =
            Result<R>::toVariant((instanceOf(object).*Member)(std::get<I>(arguments)->get()...));
    } catch (...) {
      writeBack();  // what the member changed before it failed stays changed
      throw;
    }
    writeBack();
  }

  template <class Argument>
  static void handBack(const Argument& argument) {
    if constexpr (requires { argument.writeBack(); }) argument.writeBack();
  }
};

template <MemberKind Kind, auto Member, class... P>
MemberRow row(std::u16string_view name, std::u16string_view help,
              std::span<const ParameterSpec> specs, std::tuple<P...>*) {
  using Traits = MemberTraits<decltype(Member)>;
  using MemberSlot = Slot<Kind, Member, std::tuple<P...>>;
  static_assert(sizeof...(P) <= kMaxParameters);
  MemberRow result;
  result.name = name;
  result.kind = Kind;
  result.help = help;
  result.parameterCount = sizeof...(P);
  std::size_t i = 0;
  [[maybe_unused]] const auto add = [&](TypeReference type, bool byReference) {
    const ParameterSpec& spec = specs[i];
    result.parameterRows[i++] = {spec.name, type, byReference, spec.optional, spec.defaultValue};
  };
  (add(Parameter<P>::kType, Parameter<P>::kByReference), ...);
  if constexpr (std::is_void_v<typename Traits::Returned>) {
    result.slot = reinterpret_cast<AnyFunction>(&MemberSlot::call);
  } else {
    using Returned = Result<typename Traits::Returned>;
    result.result = Returned::kType;
    result.slot =
        reinterpret_cast<AnyFunction>(&MemberSlot::template callFor<typename Returned::Abi>);
  }
  result.late = &MemberSlot::late;
  return result;
}

template <MemberKind Kind, auto Member, std::size_t N>
MemberRow rowOf(std::u16string_view name, std::u16string_view help,
                const std::array<ParameterSpec, N>& specs) {
  using Parameters = typename MemberTraits<decltype(Member)>::Parameters;
  static_assert(std::tuple_size_v<Parameters> == N, "name each parameter");
  return row<Kind, Member>(name, help, specs, static_cast<Parameters*>(nullptr));
}

template <auto Member>
using Specs = std::array<ParameterSpec,
                         std::tuple_size_v<typename MemberTraits<decltype(Member)>::Parameters>>;

}  // namespace detail

/// A row for a method, a property's getter, and a property's setter.
template <auto Member>
MemberRow method(std::u16string_view name, std::u16string_view help,
                 const detail::Specs<Member>& parameters = {}) {
  return detail::rowOf<MemberKind::Method, Member>(name, help, parameters);
}
template <auto Member>
MemberRow get(std::u16string_view name, std::u16string_view help,
              const detail::Specs<Member>& parameters = {}) {
  return detail::rowOf<MemberKind::Get, Member>(name, help, parameters);
}
template <auto Member>
MemberRow put(std::u16string_view name, std::u16string_view help,
              const detail::Specs<Member>& parameters) {
  return detail::rowOf<MemberKind::Put, Member>(name, help, parameters);
}

}  // namespace quendal
