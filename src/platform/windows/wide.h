// The library's text and the system's wide text, and the owners of system handles.
#pragma once

#include <quendal/automation.h>

#include <algorithm>
#include <array>
#include <memory>
#include <string_view>

namespace quendal::platform {

/// A text buffer of the library for the system to write into.
inline wchar_t* wideBuffer(char16_t* buffer) noexcept { return reinterpret_cast<wchar_t*>(buffer); }

/// A short text as the system takes it: ended by a NUL, held in place. A text that does not fit is
/// left out, which `fits` tells; nothing is ever cut.
template <std::size_t kCapacity>
class WideText {
 public:
  explicit WideText(std::u16string_view text) noexcept : fits_(text.size() < kCapacity) {
    const std::size_t size = fits_ ? text.size() : 0;
    std::copy_n(text.data(), size, text_.data());
    text_[size] = u'\0';
  }

  [[nodiscard]] bool fits() const noexcept { return fits_; }
  [[nodiscard]] const wchar_t* c_str() const noexcept { return oleText(text_.data()); }
  [[nodiscard]] wchar_t* data() noexcept { return wideBuffer(text_.data()); }

 private:
  std::array<char16_t, kCapacity> text_;
  bool fits_;
};

/// The owner of a handle; `Close` is called with it.
template <typename Close>
class OwnedHandle {
 public:
  explicit OwnedHandle(HANDLE handle) noexcept
      : handle_(handle == INVALID_HANDLE_VALUE ? nullptr : handle) {}

  explicit operator bool() const noexcept { return static_cast<bool>(handle_); }
  [[nodiscard]] HANDLE get() const noexcept { return handle_.get(); }
  [[nodiscard]] HANDLE release() noexcept { return handle_.release(); }

 private:
  std::unique_ptr<void, Close> handle_;
};

struct CloseFile {
  void operator()(HANDLE handle) const noexcept { CloseHandle(handle); }
};
struct CloseSearch {
  void operator()(HANDLE handle) const noexcept { FindClose(handle); }
};
struct CloseEventSource {
  void operator()(HANDLE handle) const noexcept { DeregisterEventSource(handle); }
};
using FileHandle = OwnedHandle<CloseFile>;
using SearchHandle = OwnedHandle<CloseSearch>;
using EventSourceHandle = OwnedHandle<CloseEventSource>;

}  // namespace quendal::platform
