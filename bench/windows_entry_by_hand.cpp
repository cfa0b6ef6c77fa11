#include <quendal/automation.h>

#include <cstdlib>

#include "bench/entry_by_hand.h"

namespace quendal::bench {
namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

void must(bool done) {
  if (!done) std::abort();
}

void lookAt(const std::filesystem::path& path) {
  WIN32_FILE_ATTRIBUTE_DATA data;
  must(GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data));
}

HANDLE opened(const HandLog& log, DWORD access) {
  const HANDLE file = CreateFileW(log.file.c_str(), access, kShareAll, nullptr, OPEN_EXISTING,
                                  FILE_ATTRIBUTE_NORMAL, nullptr);
  must(file != INVALID_HANDLE_VALUE);
  return file;
}

void writeTo(HANDLE file, std::u16string_view entry) {
  DWORD written = 0;
  const auto size = static_cast<DWORD>(entry.size() * sizeof(char16_t));
  must(WriteFile(file, entry.data(), size, &written, nullptr) && written == size);
}

}  // namespace

void plainEntryByHand(const HandLog& log, std::u16string_view entry) {
  lookAt(log.folder);
  lookAt(log.file);
  const HANDLE file = opened(log, FILE_APPEND_DATA);
  writeTo(file, entry);
  must(CloseHandle(file));
}

void wholeEntryByHand(const HandLog& log, std::u16string_view entry) {
  const HANDLE file = opened(log, FILE_WRITE_DATA);
  must(SetFilePointerEx(file, {}, nullptr, FILE_END));
  SYSTEMTIME now;
  GetSystemTime(&now);
  GetLocalTime(&now);
  char name[200];
  DWORD size = sizeof name;
  must(GetUserNameA(name, &size) && GetCurrentProcessId() != 0);
  OVERLAPPED lock{};
  lock.OffsetHigh = 0x7FFFFFFF;
  must(LockFileEx(file, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &lock));
  must(SetFilePointerEx(file, {}, nullptr, FILE_END));
  writeTo(file, entry);
  must(UnlockFileEx(file, 0, 1, 0, &lock) && CloseHandle(file));
}

}  // namespace quendal::bench
