// The DLL as hosts load, use and unload it, together with other modules.
#include <gtest/gtest.h>
#include <quendal/object.h>

#include <vector>

#include "component/catalogue.h"
#include "tests/component/windows_dll.h"

namespace quendal::test {
namespace {

/// A copy of the DLL beside it, for a test that nothing must have used before. It stays: a module
/// that was used cannot be deleted.
std::u16string copyOfDll(std::u16string_view name) {
  std::u16string path = besideProgram(name);
  EXPECT_TRUE(CopyFileW(oleText(dllPath().c_str()), oleText(path.c_str()), FALSE));
  return path;
}

/// The error that a new logger raises as it has no file to write to; 0 when it raises none.
std::int32_t errorOfAWrite(const LoadedModule& dll) {
  const ClassIdentity& identity =
      findCreatable(u"QUENDAL_REPORTS_ASP.LOGGING")->description.identity();
  void* found = nullptr;
  dll.entry<HRESULT STDMETHODCALLTYPE(REFCLSID, REFIID, void**)>("DllGetClassObject")(
      identity.classId, IID_IClassFactory, &found);
  auto* const factory = static_cast<IClassFactory*>(found);
  void* object = nullptr;
  const HRESULT code = factory->CreateInstance(nullptr, IID_IDispatch, &object);
  factory->Release();
  if (FAILED(code)) return code & 0xFFFF;
  try {
    Object::attach(static_cast<IDispatch*>(object)).call(u"WriteLog", std::int16_t{1}, u"x");
    return 0;
  } catch (const AutomationError& error) {
    return error.number();
  }
}

constexpr std::int32_t kNoFile = 52;

TEST(LoadingTest, ErrorsAreCaughtWhenAnotherModuleBroughtTheSharedUnwinder) {
  EXPECT_EQ(errorOfAWrite(LoadedModule(copyOfDll(u"COPY_ALONE.DLL"))), kNoFile);
  // Start-up code that looks for the other unwinder knows it by its name.
  const LoadedModule other(copyOfDll(u"libgcc_s_dw2-1.dll"));
  EXPECT_EQ(errorOfAWrite(LoadedModule(copyOfDll(u"COPY_BESIDE.DLL"))), kNoFile);
}

/// Takes all slots for the state of threads that the process has left.
std::vector<DWORD> takeSlots() {
  std::vector<DWORD> taken;
  for (DWORD slot = 0; (slot = FlsAlloc(nullptr)) != FLS_OUT_OF_INDEXES;) taken.push_back(slot);
  return taken;
}

TEST(LoadingTest, AThreadThatCannotHaveItsStateGetsError7) {
  const LoadedModule dll(copyOfDll(u"COPY_WITHOUT_STATE.DLL"));
  const std::vector<DWORD> taken = takeSlots();
  EXPECT_EQ(errorOfAWrite(dll), error_number::kOutOfMemory);
  for (const DWORD slot : taken) FlsFree(slot);
  EXPECT_EQ(errorOfAWrite(dll), kNoFile);
}

/// What a process has only so many of.
struct Resources {
  DWORD handles = 0;
  std::size_t freeThreadSlots = 0;

  static Resources now() {
    // The emulation does not count handles, but gives a new one the lowest free number.
    const platform::FileHandle probe(CreateFileW(oleText(dllPath().c_str()), 0, FILE_SHARE_READ,
                                                 nullptr, OPEN_EXISTING, 0, nullptr));
    Resources resources;
    GetProcessHandleCount(GetCurrentProcess(), &resources.handles);
    if (resources.handles == 0)
      resources.handles = static_cast<DWORD>(reinterpret_cast<std::uintptr_t>(probe.get()));
    std::vector<DWORD> taken;
    for (DWORD slot = 0; (slot = TlsAlloc()) != TLS_OUT_OF_INDEXES;) taken.push_back(slot);
    resources.freeThreadSlots = taken.size();
    for (const DWORD slot : taken) TlsFree(slot);
    return resources;
  }
};

TEST(LoadingTest, AThousandLoadsAndUnloadsCostNothingWithOrWithoutUse) {
  constexpr std::size_t kTimes = 1000;
  const std::u16string path = copyOfDll(u"COPY_OFTEN.DLL");
  for (const bool used : {false, true}) {
    Resources before;
    for (std::size_t i = 0; i <= kTimes; ++i) {
      {
        const LoadedModule dll(path);
        if (used) {
          ASSERT_EQ(errorOfAWrite(dll), kNoFile);
        }
      }
      if (i == 0) before = Resources::now();
    }
    const Resources after = Resources::now();
    EXPECT_LT(after.handles, before.handles + kTimes / 2);
    EXPECT_GT(after.freeThreadSlots + kTimes / 2, before.freeThreadSlots);
  }
}

}  // namespace
}  // namespace quendal::test
