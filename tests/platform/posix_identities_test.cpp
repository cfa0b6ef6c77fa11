// What the environment answers where the system has no such variables, and other accounts.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <functional>

#include "platform/identities.h"

namespace quendal::platform {
namespace {

// The environment belongs to the whole process, so each check has a process of its own.
bool holdsInChild(const std::function<bool()>& check) {
  const pid_t child = ::fork();
  if (child == 0) ::_exit(check() ? 0 : 1);
  int status = -1;
  return ::waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

TEST(PosixIdentitiesTest, EnvironmentAnswersAsPagesAsk) {
  const struct {
    const char* variables[2];
    const char16_t* name;
    const char16_t* value;
  } cases[] = {
      {{"TEMP=/upper", "TMPDIR=/other"}, u"temp", u"/upper"},
      {{"temp=/exact", "TEMP=/upper"}, u"temp", u"/exact"},
      {{"TEMP=", "TMP=/first"}, u"temp", u""},
      {{"Os=Mine", "Y="}, u"OS", u"Mine"},
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

}  // namespace
}  // namespace quendal::platform
