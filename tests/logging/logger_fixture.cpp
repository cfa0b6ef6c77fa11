#include "tests/logging/logger_fixture.h"

#include <cstring>

#include "base/text.h"
#include "base/utf8.h"
#include "core/apartment.h"
#include "platform/identities.h"

namespace quendal::test {

Object PageContext::object(const std::u16string& folder) {
  const Object variables = ScriptObject()
                               .defaultMember([this](ScriptObject::Arguments arguments) {
                                 const std::u16string name = textOf(arguments[0]);
                                 for (const auto& [variable, value] : serverVariables)
                                   if (equalNoCase(variable, name)) return value;
                                 return Variant();  // as the page host answers
                               })
                               .enumeration([this] {
                                 return [this, at = std::size_t{0}](Variant& element) mutable {
                                   if (at == serverVariables.size()) return atEnd(), false;
                                   element = serverVariables[at++].first;
                                   return true;
                                 };
                               })
                               .object();
  const Object other = ScriptObject().object();
  return ScriptObject()
      .value(u"Session", other)
      .value(u"Application", other)
      .value(u"Request", ScriptObject()
                             .value(u"ServerVariables", variables)
                             .beforeCalls([this] { whenAsked(); })
                             .object())
      .value(u"Response", other)
      .value(u"Server",
             ScriptObject().member(u"MapPath", [folder](auto) { return Variant(folder); }).object())
      .object();
}

LoggerTest::LoggerTest() {
  createLog(folder / u"log.txt");
  log.call(u"SetLogPath", folder / u"");
  log.call(u"SetLogFile", u"log.txt");
}

LoggerTest::~LoggerTest() { apartment().page = {}; }

void LoggerTest::startPage(PageContext& page) {
  EXPECT_EQ(platform::createFolder(folder / u"LOGS"), platform::FileError::None);
  createLog(folder / u"LOGS\\LOG.TXT");
  log.call(u"OnStartPage", page.object(folder.path()));
}

void LoggerTest::createLog(std::u16string_view path) {
  constexpr std::string_view kByteOrderMark = "\xFF\xFE";
  EXPECT_EQ(platform::createFile(path, platform::bytesOf(kByteOrderMark)),
            platform::FileError::None);
  path_ = path;
  seen_ = kByteOrderMark.size();
}

std::string LoggerTest::written() {
  const std::string bytes = platform::contentOf(path_);
  std::u16string text((bytes.size() - seen_) / 2, u'\0');
  std::memcpy(text.data(), bytes.data() + seen_, text.size() * 2);
  seen_ = bytes.size();
  EXPECT_TRUE(text.empty() || text.ends_with(kLineEnd));
  return masked(text);
}

std::string LoggerTest::runTogether(std::string lines) {
  std::erase(lines, '\n');
  return lines;
}

std::string LoggerTest::masked(const Variant& value) {
  constexpr std::size_t kDateLength = 24;  // 15 Nov 2026 23:34:35.123
  std::u16string text = replaceAll(textOf(value), kLineEnd, u"\n");
  const std::u16string identity = u" " + platform::computerName() + u" " + platform::userName() +
                                  u" " + decimalText(platform::processId()) + u" ";
  for (std::size_t at = text.find(identity, kDateLength); at != text.npos;
       at = text.find(identity, at))
    text.replace(at - kDateLength, kDateLength + identity.size(), u"@");
  return toUtf8(text);
}

}  // namespace quendal::test
