// The system's own XML document, parsed from good and bad text.
#include "base/utf8.h"
#include "tests/logging/logger_fixture.h"

namespace quendal::test {
namespace {

class XmlErrors : public LoggerTest {};

TEST_F(XmlErrors, TheParsersOwnErrorIsTold) {
  CLSID id;
  void* created = nullptr;
  ASSERT_TRUE(SUCCEEDED(CLSIDFromProgID(L"MSXML2.DOMDocument.3.0", &id)));
  ASSERT_TRUE(
      SUCCEEDED(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, &created)));
  const Object document = Object::attach(static_cast<IDispatch*>(created));

  document.call(u"loadXML", u"<a><b/></a>");
  EXPECT_EQ(call(u"LogXMLError", kLow, document, u"well formed"), "");
  EXPECT_EQ(written(), "");

  document.call(u"loadXML", u"<a>\r\n  <b></a>");
  const Object error = Object::from(document.get(u"parseError"));
  // Not every system's parser has built each member; what it answers then reaches the page.
  const std::string url = textOrError([&] { return masked(error.get(u"url")); });
  const std::string told = call(u"LogXMLError", kLow, document, u"mixed up");
  const std::string log = written();
  if (url.starts_with("error ")) {
    EXPECT_EQ(told, url);
    EXPECT_EQ(log, "@ *** ERROR *** mixed up\n");
    return;
  }
  EXPECT_TRUE(log.starts_with("@ *** ERROR *** mixed up\n@ *** XML Parser Error URL")) << log;
  for (const auto& [label, member] :
       {std::pair("Line     *** = ", u"line"), std::pair("Code     *** = ", u"errorCode")})
    EXPECT_NE(log.find(label + toUtf8(textOf(error.get(member))) + "\n"), std::string::npos) << log;
  EXPECT_NE(int32Of(error.get(u"errorCode")), 0);
}

}  // namespace
}  // namespace quendal::test
