#include "boundary/member_call.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <new>
#include <string>

#include "base/text.h"
#include "base/utf8.h"
#include "boundary/allocation.h"
#include "boundary/arguments.h"
#include "boundary/sandbox.h"
#include "boundary/slot_call.h"
#include "boundary/values.h"
#include "core/apartment.h"
#include "core/dispatch.h"

namespace quendal::fuzz {
namespace {

struct RowCount {
  std::uint64_t byName = 0;
  std::uint64_t byTable = 0;
};
struct Tally {
  std::uint64_t calls = 0;
  std::vector<std::vector<RowCount>> rows;  // by class and slot
};

Tally& tally() {
  static Tally instance;
  return instance;
}

/// An object's function table, which is that of its class if it is the library's.
const AnyFunction* tableOf(IDispatch* object) noexcept {
  return *reinterpret_cast<const AnyFunction* const*>(object);
}

struct Target {
  const ClassDescription& description;
  std::size_t classIndex;
  std::size_t rowIndex;

  [[nodiscard]] const MemberRow& row() const { return description.members()[rowIndex]; }
  [[nodiscard]] RowCount& count(const MemberRow& row) const {
    return tally().rows[classIndex][static_cast<std::size_t>(&row - description.members().data())];
  }
};

/// An object of a class that a variable holds; else null.
IDispatch* heldObject(Page& page, const ClassDescription& description, std::size_t first) {
  for (std::size_t i = 0; i < page.variableCount(); ++i) {
    const VARIANT& variable = page.variable(first + i);
    if (variable.vt == VT_DISPATCH && variable.pdispVal != nullptr &&
        tableOf(variable.pdispVal) == description.functionTable())
      return variable.pdispVal;
  }
  return nullptr;
}

/// The library turns what it did not foresee into error 51, which no page object raises.
void checkForeseen(HRESULT code) {
  if (code != errorCode(error_number::kInternal) && pendingError() != error_number::kInternal)
    return;
  std::fputs("an unforeseen exception reached the boundary\n", stderr);
  std::abort();
}

bool isArgumentError(HRESULT code) noexcept {
  constexpr HRESULT kCodes[] = {
      DISP_E_MEMBERNOTFOUND, DISP_E_PARAMNOTFOUND,    DISP_E_TYPEMISMATCH, DISP_E_OVERFLOW,
      DISP_E_BADPARAMCOUNT,  DISP_E_PARAMNOTOPTIONAL, E_INVALIDARG,        DISP_E_UNKNOWNINTERFACE};
  return std::ranges::find(kCodes, code) != std::end(kCodes);
}

WORD flagsFor(Page& page, const MemberRow& row) {
  if (page.in.oneIn(24)) return page.in.byte() % 16;
  const bool other = page.in.byte() % 4 == 1;
  switch (row.kind) {
    case MemberKind::Method:
      return other ? DISPATCH_METHOD | DISPATCH_PROPERTYGET : DISPATCH_METHOD;
    case MemberKind::Get:
      return other ? DISPATCH_METHOD | DISPATCH_PROPERTYGET : DISPATCH_PROPERTYGET;
    default:
      return other ? DISPATCH_PROPERTYPUTREF : DISPATCH_PROPERTYPUT;
  }
}

void keep(Page& page, Variant result) {
  if (page.in.byte() % 4 == 1) Page::store(page.variable(page.in.byte()), std::move(result));
}

void callByName(Page& page, const Target& target) {
  const MemberRow& row = target.row();
  Input& in = page.in;
  Arguments arguments(page);
  std::size_t count = row.parameterCount;
  if (row.takesList()) count += in.below(5) - 1;
  if (in.oneIn(12)) count = in.below(9);
  const WORD flags = flagsFor(page, row);
  std::vector<VARIANT> list(count);
  for (std::size_t i = 0; i < count; ++i)
    list[count - 1 - i] = arguments.late(i < row.parameterCount ? &row.parameterRows[i] : nullptr);
  std::vector<DISPID> named;
  if ((flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0 && count > 0) {
    named.push_back(DISPID_PROPERTYPUT);
  } else if (in.oneIn(8)) {
    for (std::size_t i = in.below(count + 1); i > 0; --i) {
      const std::size_t position = count - 1 - named.size();
      named.push_back(static_cast<DISPID>(in.oneIn(4) ? in.byte() % 8 - 4 : position));
    }
  }
  if (in.oneIn(64)) named.resize(count + 1);  // more names than arguments
  DISPPARAMS params{list.data(), named.data(), static_cast<UINT>(list.size()),
                    static_cast<UINT>(named.size())};
  const DISPID id = in.oneIn(32) ? in.number<std::int16_t>() : row.id;
  Variant result;
  EXCEPINFO exception{};
  UINT argumentError = 0;
  const std::uint8_t without = in.oneIn(8) ? in.byte() : 0;  // what the caller does not want
  // Preparing may have run page code.
  IDispatch* const object = heldObject(page, target.description, in.byte());
  if (object == nullptr) return;
  ++tally().calls;
  HRESULT code = S_OK;
  {
    const AllocationScope library(true);
    code = object->Invoke(
        id, (without & 16) != 0 ? IID_IUnknown : IID_NULL, 0, flags,
        (without & 8) != 0 ? nullptr : &params, (without & 1) != 0 ? nullptr : &result,
        (without & 2) != 0 ? nullptr : &exception, (without & 4) != 0 ? nullptr : &argumentError);
  }
  checkForeseen(code == DISP_E_EXCEPTION ? exception.scode : code);
  for (BSTR text : {exception.bstrSource, exception.bstrDescription, exception.bstrHelpFile})
    SysFreeString(text);
  const MemberRow* const called = target.description.find(id, flags);
  if (called != nullptr && !isArgumentError(code)) ++target.count(*called).byName;
  keep(page, std::move(result));
}

/// An argument of a call through the function table.
SlotArgument early(Page& page, Arguments& arguments, const ParameterRow& parameter) {
  Input& in = page.in;
  const auto word = [](const auto* pointer) { return reinterpret_cast<Word>(pointer); };
  const auto fit = [&] { return Arguments::suitable(page, parameter); };
  const auto number = [&] {
    const Variant value = fit();
    return value.vt == VT_BOOL ? std::int32_t{value.boolVal} : value.lVal;
  };
  if (parameter.byReference && in.oneIn(32)) return Word{0};
  switch (parameter.type.type) {
    case InterfaceType::Int16:
    case InterfaceType::Int32:
    case InterfaceType::Enumeration:
    case InterfaceType::Boolean: {
      const bool isShort = parameter.type.type == InterfaceType::Int16 ||
                           parameter.type.type == InterfaceType::Boolean;
      const std::int32_t value = isShort ? static_cast<std::int16_t>(number()) : number();
      if (!parameter.byReference) return Word{value};
      VARIANT& variable = page.typedAs(isShort ? VT_I2 : VT_I4);
      if (in.byte() % 4 != 0) variable.lVal = value;
      return word(&variable.lVal);
    }
    case InterfaceType::String: {
      if (!parameter.byReference) return word(arguments.own(anyText(page)).bstrVal);
      VARIANT& variable = page.typedAs(VT_BSTR);
      if (in.byte() % 4 != 0)
        SysFreeString(std::exchange(variable.bstrVal, anyText(page).release()));
      return word(&variable.bstrVal);
    }
    case InterfaceType::Dispatch: {
      VARIANT& variable = page.typedAs(VT_DISPATCH);
      if (in.byte() % 4 != 0) {
        Variant value = fit();
        const Object old = Object::attach(std::exchange(variable.pdispVal, nullptr));
        if (value.vt == VT_DISPATCH && variable.pdispVal == nullptr)
          variable.pdispVal = value.release().pdispVal;
      }
      return word(&variable.pdispVal);
    }
    case InterfaceType::VariantList: {
      if (in.oneIn(8))
        return word(&page.typedAs(VT_ARRAY | (in.byte() % 2 == 0 ? VT_VARIANT : VT_I4)).parray);
      const std::size_t count = in.below(5);
      SAFEARRAY* const list = SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(count));
      const Variant& held = arguments.own(Variant::array(list));
      for (std::size_t i = 0; i < count; ++i) {
        const VARIANT argument = arguments.late(nullptr);
        VariantCopy(&static_cast<VARIANT*>(list->pvData)[i], &argument);
      }
      return word(&held.parray);
    }
    default:
      break;
  }
  if (!parameter.byReference) return arguments.late(&parameter);
  if (in.oneIn(8)) return word(&page.link(in.byte()));
  VARIANT& variable = page.variable(in.byte());
  if (in.byte() % 2 == 0) Page::store(variable, fit());
  return word(&variable);
}

void callThroughTable(Page& page, const Target& target) {
  const MemberRow& row = target.row();
  Arguments arguments(page);
  std::vector<SlotArgument> list = {Word{0}};
  for (const ParameterRow& parameter : row.parameters())
    list.push_back(early(page, arguments, parameter));
  VARIANT raw;
  VariantInit(&raw);
  const InterfaceType type = row.result.type;
  if (type != InterfaceType::None) {
    void* const place = type == InterfaceType::Variant ? static_cast<void*>(&raw) : &raw.llVal;
    list.emplace_back(page.in.oneIn(32) ? Word{0} : reinterpret_cast<Word>(place));
  }
  IDispatch* const object = heldObject(page, target.description, page.in.byte());
  if (object == nullptr) return;
  list.front() = reinterpret_cast<Word>(object);
  ++tally().calls;
  HRESULT code = S_OK;
  {
    const AllocationScope library(true);
    code = callSlot(tableOf(object)[dispatchEntries().size() + target.rowIndex], list);
  }
  checkForeseen(code);
  if (code != E_POINTER) ++target.count(row).byTable;
  if (type == InterfaceType::String) raw.vt = VT_BSTR;
  if (type == InterfaceType::Class) raw.vt = VT_DISPATCH;
  keep(page, Variant::attach(raw));
  if (page.in.byte() % 2 == 1) SetErrorInfo(0, nullptr);
}

/// Left out by name: a builder that TrimToSize left without any capacity never grows again, so that
/// the next call on it does not return. It gets a capacity at once.
void giveCapacity(const Object& builder) {
  if (int32Of(builder.get(u"BufferLength")) == 0) builder.call(u"Clear", std::int32_t{0});
}

/// Gives an object what most of its members need.
void makeReady(const Object& object, std::u16string_view className) {
  if (className == u"LOGGING") {
    object.call(u"SetLogPath", Sandbox::folder() + u"LOGS\\");
    object.call(u"SetLogFile", u"LOG.TXT");
  } else if (className == u"VersionInfo") {
    object.put(u"FullPathName", u"module.dll");
  } else if (className == u"Concat") {
    object.call(u"Append", u"first ");
  }
}

}  // namespace

Object libraryObject(Page& page, std::size_t classIndex) {
  if (!page.mayGoOn()) return {};
  const CatalogueEntry& entry = catalogue()[classIndex % catalogue().size()];
  const bool isReady = page.in.byte() % 4 != 1;
  const AllocationScope library(true);
  Object object;
  try {
    object = entry.create();
    if (isReady) makeReady(object, entry.description.identity().name);
  } catch (const AutomationError&) {  // as far as it went
  } catch (const std::bad_alloc&) {   // the same
  }
  return object;
}

void callMember(Page& page, std::size_t classIndex, std::size_t rowIndex, Way way) {
  if (!page.enterCall()) return;
  const ClassDescription& description = catalogue()[classIndex].description;
  const std::size_t first = page.in.byte();
  if (heldObject(page, description, first) == nullptr)
    Page::store(page.variable(first), Variant(libraryObject(page, classIndex)));
  const Target target{description, classIndex, rowIndex};
  // A builder is kept here only where no page code runs.
  const bool trims = target.row().name == u"TrimToSize";
  const Object kept(trims ? heldObject(page, description, first) : nullptr);
  way == Way::ByName ? callByName(page, target) : callThroughTable(page, target);
  if (kept) giveCapacity(kept);
  page.leaveCall();
}

void callAnything(Page& page) {
  const std::size_t classIndex = page.in.below(catalogue().size());
  const std::size_t rowIndex = page.in.below(catalogue()[classIndex].description.members().size());
  callMember(page, classIndex, rowIndex, page.in.byte() % 2 == 0 ? Way::ByName : Way::ThroughTable);
}

std::uint64_t timesReached(std::size_t classIndex, std::size_t rowIndex, Way way) {
  const RowCount& count = tally().rows[classIndex][rowIndex];
  return way == Way::ByName ? count.byName : count.byTable;
}

bool reportCalls(std::FILE* out) {
  std::size_t rows = 0, byName = 0, byTable = 0;
  std::u16string missing;
  for (std::size_t i = 0; i < tally().rows.size(); ++i) {
    const ClassDescription& description = catalogue()[i].description;
    for (std::size_t j = 0; j < tally().rows[i].size(); ++j) {
      const RowCount& count = tally().rows[i][j];
      ++rows;
      if (count.byName > 0) ++byName;
      if (count.byTable > 0) ++byTable;
      if (count.byName > 0 && count.byTable > 0) continue;
      missing.append(u" ").append(description.identity().name).append(u".");
      missing.append(description.members()[j].name);
    }
  }
  std::fprintf(out, "calls: %llu, rows reached: %zu of %zu (invoke), %zu of %zu (table)\n",
               static_cast<unsigned long long>(tally().calls), byName, rows, byTable, rows);
  if (!missing.empty()) std::fprintf(out, "not reached:%s\n", toUtf8(missing).c_str());
  return missing.empty();
}

void prepareCalls() {
  for (const CatalogueEntry& entry : catalogue()) {
    tally().rows.emplace_back(entry.description.members().size());
    for (const MemberRow& row : entry.description.members()) {
      if (canCall(row)) continue;
      std::fprintf(stderr, "no way to call %s\n", toUtf8(row.name).c_str());
      std::abort();
    }
  }
}

}  // namespace quendal::fuzz
