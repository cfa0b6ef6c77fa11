// What the environment answers where the system has no such variables, and other accounts.
#include <gtest/gtest.h>
#include <sys/utsname.h>

#include <cstdlib>
#include <string>

#include "platform/identities.h"
#include "tests/platform/posix_environment.h"

namespace quendal::platform {
namespace {

TEST(PosixIdentitiesTest, EnvironmentAnswersAsPagesAsk) {
  const struct {
    const char* variables[2];
    const char16_t *name, *value;
  } cases[] = {
      {{"TEMP=/upper", "TMPDIR=/other"}, u"temp", u"/upper"},
      {{"TEMP=/upper", "temp=/exact"}, u"temp", u"/exact"},
      {{"TEMP=", "TMP=/first"}, u"temp", u""},
      {{"NAME=gr\xC3\xBC\xC3\x9F", "Y="}, u"name", u"gr\u00FC\u00DF"},
  };
  for (const auto& c : cases) {
    EXPECT_TRUE(holdsInChild([&c] {
      ::clearenv();
      for (const char* const variable : c.variables) ::putenv(const_cast<char*>(variable));
      return environmentVariable(c.name) == c.value;
    })) << c.variables[0];
  }
}

TEST(PosixIdentitiesTest, UserNameFollowsTheAccountOfTheMoment) {
  if (::geteuid() != 0) GTEST_SKIP() << "only root can change the account";
  EXPECT_TRUE(holdsInChild([] {
    ::unsetenv("USER");
    const bool first = userName() == u"root";
    if (::seteuid(3999999) != 0) return false;
    const bool second = userName() == u"3999999";  // no directory knows it
    return first && second && ::seteuid(0) == 0 && userName() == u"root";
  }));
}

TEST(PosixIdentitiesTest, TheVersionIsThatOfTheKernel) {
  const OSVersion version = osVersion();
  utsname system;
  ASSERT_EQ(::uname(&system), 0);
  const std::string told = std::to_string(version.major) + "." + std::to_string(version.minor);
  EXPECT_TRUE(std::string(system.release).starts_with(told)) << told;
  EXPECT_EQ(version.platformId, 4);
  EXPECT_EQ(version.servicePack, std::u16string(1, u'\0') + std::u16string(127, u' '));
}

}  // namespace
}  // namespace quendal::platform
