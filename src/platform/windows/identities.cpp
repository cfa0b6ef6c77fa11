#include "platform/identities.h"

#include <quendal/automation.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>

#include "platform/code_page.h"
#include "platform/windows/wide.h"

namespace quendal::platform {
namespace {

constexpr DWORD kNameSize = 200;
constexpr std::size_t kMaxVariableName = 512;
constexpr int kBracedIdentifierSize = 38;

// The text that a single-byte function of the system writes; empty when it writes none.
template <typename Query>
std::u16string queryName(Query query) {
  std::array<char, kNameSize> name{};
  DWORD size = kNameSize;
  query(name.data(), &size);
  name.back() = '\0';
  return fromCodePage(name.data());
}

}  // namespace

std::u16string computerName() {
  // The system takes its name when it starts, but reads it from the registry each time.
  static const std::u16string name = queryName(GetComputerNameA);
  return name.empty() ? queryName(GetComputerNameA) : name;  // the first question may have failed
}

std::u16string userName() { return queryName(GetUserNameA); }

std::int32_t processId() noexcept { return static_cast<std::int32_t>(GetCurrentProcessId()); }

std::int32_t threadId() noexcept { return static_cast<std::int32_t>(GetCurrentThreadId()); }

std::u16string environmentVariable(std::u16string_view name) {
  const WideText<kMaxVariableName> key(name);
  if (!key.fits() || name.empty() || name.find(u'\0') != name.npos) return {};
  std::u16string value(128, u'\0');
  for (;;) {
    // The size that is needed, or that of the value when it fits; another thread may lengthen the
    // value in between.
    const DWORD size = GetEnvironmentVariableW(key.c_str(), wideBuffer(value.data()),
                                               static_cast<DWORD>(value.size()));
    const bool complete = size < value.size();
    value.resize(size);
    if (complete) return value;
  }
}

OSVersion osVersion() {
  OSVERSIONINFOA record{};
  record.dwOSVersionInfoSize = sizeof record;
  static_assert(sizeof record == 148 && sizeof record.szCSDVersion == 128);
  std::fill(std::begin(record.szCSDVersion), std::end(record.szCSDVersion), ' ');
  GetVersionExA(&record);  // the record stays as it is when the system does not tell
  OSVersion version;
  version.major = static_cast<std::int32_t>(record.dwMajorVersion);
  version.minor = static_cast<std::int32_t>(record.dwMinorVersion);
  version.build = static_cast<std::int32_t>(record.dwBuildNumber);
  version.platformId = static_cast<std::int32_t>(record.dwPlatformId);
  version.servicePack = fromCodePage({record.szCSDVersion, sizeof record.szCSDVersion});
  return version;
}

std::int16_t wow64Flag() noexcept {
  const HMODULE kernel = GetModuleHandleA("kernel32");
  const auto query = kernel != nullptr ? GetProcAddress(kernel, "IsWow64Process") : nullptr;
  // The address is looked at as a signed 32-bit number, on purpose: only a positive one is called.
  const auto address = static_cast<std::int32_t>(reinterpret_cast<std::uintptr_t>(query));
  if (address <= 0) return 0;
  using IsWow64 = BOOL(WINAPI*)(HANDLE, BOOL*);
  BOOL flag = 0;
  reinterpret_cast<IsWow64>(reinterpret_cast<void*>(query))(GetCurrentProcess(), &flag);
  return static_cast<std::int16_t>(flag);
}

std::u16string newIdentifier() {
  GUID identifier{};
  if (FAILED(CoCreateGuid(&identifier))) return {};
  std::array<char16_t, kBracedIdentifierSize + 1> text{};
  const int size =
      StringFromGUID2(identifier, wideBuffer(text.data()), static_cast<int>(text.size()));
  if (size != kBracedIdentifierSize + 1) return {};
  return std::u16string(text.data() + 1, kBracedIdentifierSize - 2);
}

}  // namespace quendal::platform
