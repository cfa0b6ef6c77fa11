// Keeps the unwind tables of this module with the unwinder inside it.
//
// The compiler's start-up code (crtbegin.o) asks whether libgcc_s_dw2-1.dll is in the process, and
// if it is, registers the tables there. With the static runtime nothing of ours looks there: the
// first exception would find no handler and end the process, whenever some other module had brought
// that library along. The linker (--wrap) leads the start-up code's question here, and the answer
// for that one library is no.
#include <quendal/automation.h>

#include <cstring>

namespace {

HMODULE WINAPI moduleHandle(const char* name) noexcept {
  if (name != nullptr && std::strncmp(name, "libgcc_s_", 9) == 0) return nullptr;
  HMODULE module = nullptr;
  // Not GetModuleHandleA, which would come here again.
  GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT, name, &module);
  return module;
}

}  // namespace

// What stands in the import table's place.
extern "C" {
extern decltype(&moduleHandle) const importedModuleHandle asm("___wrap__imp__GetModuleHandleA@4");
constinit decltype(&moduleHandle) const importedModuleHandle = &moduleHandle;
}
