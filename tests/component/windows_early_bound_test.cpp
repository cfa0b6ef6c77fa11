// The DLL as a C++ client uses it: objects created by class identifier, and called through the
// function tables that the type library's own interface definition declares.
#include <QUENDAL_REPORTS_ASP.h>
#include <gtest/gtest.h>
#include <quendal/variant.h>

#include <memory>

#include "platform/temp_folder.h"
#include "tests/component/windows_dll.h"
#include "tests/support/script_object.h"

namespace quendal::test {
namespace {

struct Release {
  void operator()(IUnknown* object) const { object->Release(); }
};
template <class Interface>
using Pointer = std::unique_ptr<Interface, Release>;

/// The text that a call hands out.
template <class Call>
std::u16string textFrom(Call&& call) {
  BSTR text = nullptr;
  EXPECT_EQ(call(&text), S_OK);
  return std::u16string(Text::attach(text).view());
}

/// The registered DLL.
class EarlyBoundTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    ASSERT_EQ(LoadedModule(dllPath()).call("DllRegisterServer"), S_OK);
  }
  static void TearDownTestSuite() {
    EXPECT_EQ(LoadedModule(dllPath()).call("DllUnregisterServer"), S_OK);
  }

  template <class Class, class Interface>
  static Pointer<Interface> create() {
    void* object = nullptr;
    EXPECT_EQ(CoCreateInstance(__uuidof(Class), nullptr, CLSCTX_INPROC_SERVER, __uuidof(Interface),
                               &object),
              S_OK);
    return Pointer<Interface>(static_cast<Interface*>(object));
  }
};

TEST_F(EarlyBoundTest, TheLoggerWritesAndGivesBackThroughReferences) {
  const platform::TempFolder folder;
  const auto logger = create<LOGGING, _LOGGING>();
  ASSERT_NE(logger, nullptr);
  short level = 3, repeat = 0;
  EXPECT_EQ(logger->put_LogLevel(&level), S_OK);
  Variant path = folder / u"logs\\", file = u"early.txt", text = u"Hello", stamp, nothing;
  EXPECT_EQ(logger->SetLogPath(&path, &nothing), S_OK);
  EXPECT_EQ(logger->SetLogFile(&file, &nothing), S_OK);
  const std::u16string entry = textFrom(
      [&](BSTR* result) { return logger->WriteLog(&level, &text, &repeat, &stamp, result); });
  EXPECT_EQ(repeat, 1);
  ITypeInfo* info = nullptr;
  ASSERT_EQ(logger->GetTypeInfo(0, 0, &info), S_OK);
  const Pointer<ITypeInfo> held(info);
  const auto nameOf = [&](MEMBERID id) {
    return textFrom(
        [&](BSTR* name) { return info->GetDocumentation(id, name, nullptr, nullptr, nullptr); });
  };
  EXPECT_EQ(nameOf(MEMBERID_NIL) + u" " + nameOf(1), u"LOGGING OnStartPage");
  EXPECT_EQ(entry, textOf(stamp) + u"Hello");
  EXPECT_TRUE(platform::fileExists(folder / u"logs\\early.txt"));
}

TEST_F(EarlyBoundTest, TheFunctionsTakeArraysAndVariants) {
  const auto functions = create<FUNCTIONS, _FUNCTIONS>();
  ASSERT_NE(functions, nullptr);
  Variant values = arrayOf({std::int16_t{3}, 7.5, std::int16_t{5}}), result;
  EXPECT_EQ(functions->Max(&values.parray, &result), S_OK);
  EXPECT_EQ(doubleOf(result), 7.5);
  _ClsArray* object = nullptr;
  ASSERT_EQ(functions->get_ARRAYS(&object), S_OK);
  const Pointer<_ClsArray> arrays(object);
  EXPECT_EQ(arrays->Push(&values, Variant(u"last")), S_OK);
  EXPECT_EQ(arrays->Pop(&values, &result), S_OK);
  EXPECT_EQ(textOf(result), u"last");
}

}  // namespace
}  // namespace quendal::test
