// A class as its table describes it: everything that dispatch, the type library and the reference
// need to know about its members, without their C++ types.
#pragma once

#include <quendal/variant.h>

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace quendal {

class DispatchObject;
class CallFrame;

/// A slot of a function table, whatever its signature.
using AnyFunction = void (*)();

/// How a value is typed in the interface.
enum class InterfaceType : std::uint8_t {
  None,         // no result
  Int16,        // short
  Int32,        // long
  Boolean,      // VARIANT_BOOL
  String,       // BSTR
  Variant,      // VARIANT
  Dispatch,     // IDispatch*
  Class,        // a class's interface pointer, named
  Enumeration,  // a 32-bit enumeration, named
  VariantList,  // SAFEARRAY(VARIANT), the trailing arguments of the call
};

struct TypeReference {
  InterfaceType type = InterfaceType::None;
  std::u16string_view name = {};  // of the class or enumeration
};

/// What an omitted optional parameter becomes.
struct NoDefault {};  // the missing-argument marker, zero or False
struct EmptyText {};  // a Variant holding the empty string
using ParameterDefault = std::variant<NoDefault, EmptyText, std::int32_t, std::u16string_view>;

struct ParameterRow {
  std::u16string_view name = {};
  bool optional = false;
  ParameterDefault defaultValue = NoDefault{};
  // As the parameter's C++ type tells.
  TypeReference type = {};
  bool byReference = false;
};

enum class MemberKind : std::uint8_t { Method, Get, Put };

inline constexpr std::size_t kMaxParameters = 6;

/// One row of a class's table: one slot of its interface.
struct MemberRow {
  std::u16string_view name;
  MemberKind kind = MemberKind::Method;
  TypeReference result;
  std::array<ParameterRow, kMaxParameters> parameterRows;
  std::size_t parameterCount = 0;
  AnyFunction slot = nullptr;  // the function-table entry
  void (*late)(DispatchObject& object, const CallFrame& frame, Variant& result) = nullptr;
  std::u16string_view help;    // one sentence for the reference
  DISPID id = DISPID_UNKNOWN;  // given when the table is complete; a property's rows share one

  [[nodiscard]] std::span<const ParameterRow> parameters() const noexcept {
    return {parameterRows.data(), parameterCount};
  }
  /// True when the last parameter takes any number of trailing arguments.
  [[nodiscard]] bool takesList() const noexcept {
    return parameterCount > 0 &&
           parameterRows[parameterCount - 1].type.type == InterfaceType::VariantList;
  }
};

/// A class's identity, before its members.
struct ClassIdentity {
  std::u16string_view name;           // as TypeName answers
  std::u16string_view interfaceName;  // "_" and the name
  GUID classId;
  GUID interfaceId;
  std::u16string_view programId;  // empty for a class that clients cannot create
  std::u16string_view help;
};

/// A class's identity and members, with what calling by name needs.
class ClassDescription {
 public:
  ClassDescription(const ClassIdentity& identity, std::span<const MemberRow> members);
  ClassDescription(const ClassDescription&) = delete;  // rows are found by address
  ClassDescription& operator=(const ClassDescription&) = delete;

  [[nodiscard]] const ClassIdentity& identity() const noexcept { return identity_; }
  /// In slot order.
  [[nodiscard]] std::span<const MemberRow> members() const noexcept { return members_; }
  /// The IDispatch entries, then the members' slots.
  [[nodiscard]] const AnyFunction* functionTable() const noexcept { return table_.data(); }

  /// The identifier of a member by its name in any case; DISPID_UNKNOWN when there is none.
  [[nodiscard]] DISPID idOf(std::u16string_view name) const noexcept;
  /// The position of a parameter by its name in any case; DISPID_UNKNOWN when there is none.
  [[nodiscard]] DISPID parameterOf(DISPID member, std::u16string_view name) const noexcept;
  /// The row that an Invoke with these flags means; null when there is none.
  [[nodiscard]] const MemberRow* find(DISPID id, WORD flags) const noexcept;

 private:
  struct Rows {
    std::u16string_view name;
    const MemberRow* read = nullptr;  // method or get
    const MemberRow* put = nullptr;
  };

  ClassIdentity identity_;
  std::vector<MemberRow> members_;
  std::vector<AnyFunction> table_;
  std::vector<Rows> rows_;  // by identifier, 1 to n
};

/// The description of an automation class. Each room specialises it for its own.
template <class C>
const ClassDescription& describe();

}  // namespace quendal
