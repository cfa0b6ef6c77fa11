// A C++ host that runs the page of page.vbs: it makes the page context a web server would hand
// over, creates the logger by its identifier and calls it by name. The folder of the page is the
// argument.
#include <quendal/classic_asp.h>
#include <quendal/host_object.h>

#include <cstdint>
#include <cstdio>
#include <exception>
#include <string>

namespace {

using quendal::HostObject;
using quendal::Object;
using quendal::textOf;
using quendal::Variant;

std::u16string serverVariable(const std::u16string& folder, const std::u16string& name) {
  const struct {
    const char16_t* name;
    std::u16string value;
  } variables[] = {{u"REMOTE_ADDR", u"10.1.2.3"},
                   {u"PATH_TRANSLATED", folder + u"\\default.asp"},  // in the log, when it exists
                   {u"REQUEST_METHOD", u"GET"},
                   {u"HTTP_USER_AGENT", u"Mozilla/5.0 (demo)"},
                   {u"URL", u"/reports/default.asp"},
                   {u"QUERY_STRING", u"report=7&lang=en"}};
  for (const auto& variable : variables)
    if (name == variable.name) return variable.value;
  return u"";
}

Object pageContext(const std::u16string& folder) {
  const Object plain = HostObject().object();
  const Object request = HostObject()
                             .member(u"ServerVariables",
                                     [folder](HostObject::Arguments arguments) {
                                       return Variant(serverVariable(folder, textOf(arguments[0])));
                                     },
                                     {}, {1, 1})
                             .object();
  const Object server =
      HostObject()
          .member(u"MapPath", [folder](HostObject::Arguments) { return Variant(folder); })
          .object();
  return HostObject()
      .value(u"Session", plain)
      .value(u"Application", plain)
      .value(u"Request", request)
      .value(u"Response", plain)
      .value(u"Server", server)
      .object();
}

void print(const std::u16string& text) {
  for (const char16_t c : text) std::putchar(c < 0x80 ? static_cast<char>(c) : '?');
  std::putchar('\n');
}

void runPage(const std::u16string& folder) {
  constexpr std::int16_t kLow = 2;
  const Object logger = quendal::createObject(u"QUENDAL_REPORTS_ASP.LOGGING");
  logger.call(u"OnStartPage", pageContext(folder));
  print(quendal::typeNameOf(Variant(logger)) + u" writes " + textOf(logger.get(u"FileName")) +
        u" for " + textOf(logger.get(u"RemoteIP")));
  logger.call(u"WriteASPStart");
  print(u"returned: " + textOf(logger.call(u"WriteLog", kLow, u"Loading the report")));
  logger.call(u"StartGroup", kLow);
  logger.call(u"WriteParam", kLow, u"Report", std::int16_t{7});
  logger.call(u"WriteParam", kLow, u"Title", u"Turnover, \u20AC");
  logger.call(u"WriteLog", std::int16_t{3}, u"too fine for the level: not written");
  logger.call(u"WriteLog", std::int16_t{1}, u"Two lines:\r\nthe second has the prefix too");
  const Object error = HostObject()
                           .value(u"Number", std::int32_t{11})
                           .value(u"Source", u"default.asp")
                           .value(u"Description", u"Division by zero")
                           .object();
  logger.call(u"LogMSError", kLow, error, u"The total could not be computed");
  logger.call(u"EndGroup", kLow);
  logger.call(u"LogConfiguration");
  logger.call(u"WriteASPEnd");
  logger.call(u"OnEndPage");
  print(u"end of page");
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: native_host FOLDER\n");
    return 2;
  }
  try {
    const std::string folder = argv[1];
    runPage(std::u16string(folder.begin(), folder.end()));
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "the page failed: %s\n", error.what());
    return 1;
  }
}
