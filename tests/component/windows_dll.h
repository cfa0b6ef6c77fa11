// The DLL, which the test program expects beside it.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "platform/module.h"
#include "platform/windows/wide.h"

namespace quendal::test {

/// A file beside the test program.
inline std::u16string besideProgram(std::u16string_view name) {
  const std::u16string program = platform::ownModulePath();
  return program.substr(0, program.rfind(u'\\') + 1) + std::u16string(name);
}

inline std::u16string dllPath() { return besideProgram(u"QUENDAL_CLASSIC_ASP.DLL"); }

/// A module that is loaded from a file while this lives.
class LoadedModule {
 public:
  explicit LoadedModule(const std::u16string& path) : module_(LoadLibraryW(oleText(path.c_str()))) {
    EXPECT_NE(module_, nullptr);
  }
  LoadedModule(const LoadedModule&) = delete;
  LoadedModule& operator=(const LoadedModule&) = delete;
  ~LoadedModule() { FreeLibrary(module_); }

  template <class Function>
  [[nodiscard]] Function* entry(const char* name) const {
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(module_, name)));
  }
  HRESULT call(const char* name) const { return entry<HRESULT STDMETHODCALLTYPE()>(name)(); }

 private:
  HMODULE module_;
};

/// The DLL, loaded for the test.
class ComponentTest : public ::testing::Test {
 protected:
  const LoadedModule dll_{dllPath()};
};

}  // namespace quendal::test
