// Automation services in which the two homes differ.
#pragma once

#include <quendal/automation.h>

#include <string>
#include <string_view>

namespace quendal::automation {

/// Finds the identifier of an object's member by name, without regard to case. Objects of script
/// classes that answer only to the extended dispatch interface are asked through that. On failure
/// the HRESULT of the last question, and `id` is DISPID_UNKNOWN.
[[nodiscard]] HRESULT memberId(IDispatch* object, std::u16string_view name, DISPID* id) noexcept;

/// A new keyed container with the members of `Scripting.Dictionary`. Null when the system cannot
/// create one. The caller owns the reference.
[[nodiscard]] IDispatch* newDictionary() noexcept;

/// Type information for one of the library's interfaces, as `IDispatch::GetTypeInfo` gives it, or
/// with the class's identifier in place of the interface's for the class itself, as
/// `IProvideClassInfo` gives it. An interface that the type library lacks is described by its
/// class. The caller owns the reference; null on failure.
///
/// Its name is `className` and not that of the interface, which is the same with "_" before it:
/// script engines show this name as the type name of an object, and not all of them (Wine's does
/// not) ask for the class or drop the "_" themselves. Everything else is as in the type library.
[[nodiscard]] HRESULT typeInformation(REFIID interfaceId, REFCLSID classId,
                                      std::u16string_view className, ITypeInfo** info) noexcept;

}  // namespace quendal::automation
