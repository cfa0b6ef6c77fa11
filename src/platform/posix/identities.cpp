#include "platform/identities.h"

#include <pwd.h>
#include <sys/random.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <climits>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <vector>

#include "base/characters.h"
#include "base/text.h"
#include "base/utf8.h"

namespace quendal::platform {
namespace {

constexpr std::int32_t kUnixPlatform = 4;
constexpr std::size_t kServicePackSize = 128;
constexpr std::size_t kMaxAccountRecord = 1 << 20;

std::optional<std::string> accountName(uid_t user) {
  passwd account{};
  passwd* found = nullptr;
  std::vector<char> buffer(1024);
  while (::getpwuid_r(user, &account, buffer.data(), buffer.size(), &found) == ERANGE &&
         buffer.size() < kMaxAccountRecord) {
    buffer.resize(buffer.size() * 2);
  }
  if (found == nullptr) return std::nullopt;
  return std::string(found->pw_name);
}

// An account that no directory knows is named by the environment, or else by its number.
std::u16string nameOf(uid_t user) {
  if (const auto name = accountName(user)) return fromUtf8(*name);
  const char* const name = std::getenv("USER");
  return name != nullptr && *name != '\0' ? fromUtf8(name) : decimalText(user);
}

// The value of a variable, spelled as asked for or else in any case; null when there is none.
const char* findVariable(const std::string& name) noexcept {
  if (const char* const value = std::getenv(name.c_str())) return value;
  for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
    const std::string_view text(*entry);
    const std::size_t equals = text.find('=');
    if (equals != text.npos &&
        std::ranges::equal(text.substr(0, equals), name, {}, asciiLower, asciiLower)) {
      return *entry + equals + 1;
    }
  }
  return nullptr;
}

// The number at the front of `text`, which loses it and the point after it; 0 when there is none.
std::int32_t takeNumber(std::string_view& text) noexcept {
  std::int32_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  const auto size = static_cast<std::size_t>(end - text.data());
  text.remove_prefix(size < text.size() && text[size] == '.' ? size + 1 : size);
  return error == std::errc() ? number : 0;
}

}  // namespace

std::u16string computerName() {
  std::array<char, HOST_NAME_MAX + 1> name{};
  if (::gethostname(name.data(), name.size() - 1) != 0) return {};
  return fromUtf8(name.data());
}

std::u16string userName() {
  // The account is asked for at each call, since a host may change it; its name is looked up only
  // when it has changed, since that reads the account file and every line of a log bears the name.
  struct Known {
    std::optional<uid_t> user;
    std::u16string name;
  };
  thread_local Known known;
  const uid_t user = ::geteuid();
  if (known.user != user) {
    known.name = nameOf(user);
    known.user = user;
  }
  return known.name;
}

std::int32_t processId() noexcept { return ::getpid(); }

std::int32_t threadId() noexcept { return ::gettid(); }

std::u16string environmentVariable(std::u16string_view name) {
  const std::string key = toUtf8(name);
  if (key.empty() || key.find('=') != key.npos || key.find('\0') != key.npos) return {};
  if (const char* const value = findVariable(key)) return fromUtf8(value);
  return {};
}

OSVersion osVersion() {
  utsname system;
  if (::uname(&system) != 0) return {};
  std::string_view release(system.release);
  OSVersion version;
  version.major = takeNumber(release);
  version.minor = takeNumber(release);
  version.build = takeNumber(release);
  version.platformId = kUnixPlatform;
  version.servicePack.assign(kServicePackSize, u' ');
  version.servicePack.front() = u'\0';  // an empty text in a field of blanks
  return version;
}

std::int16_t wow64Flag() noexcept { return 0; }

std::u16string newIdentifier() {
  std::array<std::uint8_t, 16> bytes;
  ssize_t filled;
  do {
    filled = ::getrandom(bytes.data(), bytes.size(), 0);
  } while (filled < 0 && errno == EINTR);
  if (filled != std::ssize(bytes)) return {};
  bytes[6] = static_cast<std::uint8_t>((bytes[6] & 0x0F) | 0x40);  // version: random
  bytes[8] = static_cast<std::uint8_t>((bytes[8] & 0x3F) | 0x80);  // variant: the standard one

  std::u16string text;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (i == 4 || i == 6 || i == 8 || i == 10) text += u'-';
    text += hexText(bytes[i], 2);
  }
  return text;
}

}  // namespace quendal::platform
