// What a host asks of the component: class factories, and whether it may be unloaded.
#include "component/class_factory.h"

#include <gtest/gtest.h>

#include "component/catalogue.h"
#include "core/dispatch.h"

namespace quendal::test {
namespace {

TEST(ClassFactoryTest, OnlyTwoClassesCanBeCreated) {
  const std::int32_t inUse = moduleUseCount();
  for (const CatalogueEntry& candidate : catalogue()) {
    const ClassIdentity& identity = candidate.description.identity();
    const bool isCreatable = !identity.programId.empty();
    void* found = &found;
    EXPECT_EQ(classObject(identity.classId, IID_IClassFactory, &found),
              isCreatable ? S_OK : CLASS_E_CLASSNOTAVAILABLE);
    if (!isCreatable) {
      EXPECT_EQ(found, nullptr);
      continue;
    }
    EXPECT_EQ(findCreatable(identity.programId), &candidate);
    auto* const factory = static_cast<IClassFactory*>(found);
    void* object = &object;
    EXPECT_EQ(factory->CreateInstance(factory, IID_IUnknown, &object), CLASS_E_NOAGGREGATION);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(factory->CreateInstance(nullptr, IID_IEnumVARIANT, &object), E_NOINTERFACE);
    EXPECT_EQ(moduleUseCount(), inUse + 1);  // the factory
    EXPECT_EQ(factory->CreateInstance(nullptr, identity.interfaceId, &object), S_OK);
    EXPECT_TRUE(Object::attach(static_cast<IDispatch*>(object)));
    EXPECT_EQ(factory->LockServer(1), S_OK);
    EXPECT_EQ(factory->Release(), 0u);
    EXPECT_EQ(moduleUseCount(), inUse + 1);  // the lock
    EXPECT_FALSE(canUnload());
    classObject(identity.classId, IID_IUnknown, &found);
    static_cast<IClassFactory*>(found)->LockServer(0);
    static_cast<IClassFactory*>(found)->Release();
    EXPECT_EQ(moduleUseCount(), inUse);
    EXPECT_EQ(canUnload(), inUse == 0);
  }
  EXPECT_EQ(findCreatable(u"QUENDAL_REPORTS_ASP.JSON"), nullptr);
  EXPECT_EQ(findCreatable(u"quendal_reports_asp.logging")->description.identity().name, u"LOGGING");
}

}  // namespace
}  // namespace quendal::test
