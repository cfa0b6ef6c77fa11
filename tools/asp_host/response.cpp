#include "response.h"

#include <quendal/automation.h>
#include <wininet.h>

#include <algorithm>
#include <array>
#include <utility>

#include "base/text.h"
#include "encoding.h"

namespace quendal::host {
namespace {

constexpr std::size_t kMostBytes = 16 * 1024 * 1024;

[[noreturn]] void refuse(std::u16string_view why) { raise(error_number::kInvalidCall, why); }

/// A value of a header line, which must stay one line.
std::string headerText(std::u16string_view text) {
  if (text.find_first_of(u"\r\n") != std::u16string_view::npos || text.find(u'\0') != text.npos)
    refuse(u"A header is one line");
  return encoded(text, kUtf8);
}

/// "Wed, 15 Nov 2026 10:00:00 GMT" of a date that a page gives in local time.
std::u16string httpDate(const VARIANT& value) {
  const VARIANT date = converted(value, VT_DATE);
  SYSTEMTIME local{}, utc{};
  if (!VariantTimeToSystemTime(date.date, &local) ||
      !TzSpecificLocalTimeToSystemTime(nullptr, &local, &utc))
    refuse(u"This is no date");
  std::array<char, INTERNET_RFC1123_BUFSIZE + 1> text{};
  if (!InternetTimeFromSystemTimeA(&utc, INTERNET_RFC1123_FORMAT, text.data(),
                                   static_cast<DWORD>(text.size())))
    refuse(u"This is no date");
  return decoded(text.data(), kUtf8);
}

Object makeCookie(const StopFlag& stop, const std::shared_ptr<ResponseState>& state,
                  const std::u16string& name) {
  HostObject object = pageObject(stop);
  // What is put to a property becomes an attribute.
  const auto attribute = [&](std::u16string_view label, auto textOfValue) {
    object.property(
        label, [] { return Variant(); },
        [state, name, textOfValue](const VARIANT& value) {
          state->cookie(name).attributes += textOfValue(value);
        });
  };
  attribute(u"Path", [](const VARIANT& value) { return u"; path=" + textOf(value); });
  attribute(u"Expires", [](const VARIANT& value) { return u"; expires=" + httpDate(value); });
  attribute(u"HttpOnly", [](const VARIANT& value) {
    return std::u16string(int16Of(value) != 0 ? u"; HttpOnly" : u"");
  });
  return object.object();
}

}  // namespace

void ResponseState::write(std::u16string_view text) {
  const std::string bytes = encoded(text, codePage);
  if (body_.size() + bytes.size() > kMostBytes) refuse(u"The response is too long");
  body_ += bytes;
}

void ResponseState::clear() { body_.resize(flushed_); }

void ResponseState::requireOpenHeaders() const {
  if (committed_) refuse(u"The headers have been sent already");
}

void ResponseState::setStatus(const std::u16string& status) {
  requireOpenHeaders();
  const std::string text = headerText(status);
  if (text.size() < 3 || text.find_first_not_of("0123456789") < 3 || text[0] < '1' ||
      text[0] > '5' || (text.size() > 3 && text[3] != ' '))
    refuse(u"A status is a number of three digits and a text");
  status_ = std::stoi(text.substr(0, 3));
  reason_ = status.substr(std::min<std::size_t>(4, status.size()));
}

std::u16string ResponseState::status() const { return decimalText(status_) + u" " + reason_; }

void ResponseState::addHeader(std::u16string_view name, std::u16string_view value) {
  requireOpenHeaders();
  const std::string key = headerText(name);
  if (key.empty() || key.find_first_of(" \t:") != std::string::npos) refuse(u"This is no header");
  headers_.emplace_back(key, headerText(value));
}

Cookie& ResponseState::cookie(std::u16string_view name) {
  requireOpenHeaders();
  const auto found = std::ranges::find_if(
      cookies_, [&](const Cookie& cookie) { return equalNoCase(cookie.name, name); });
  if (found != cookies_.end()) return *found;
  return cookies_.emplace_back(Cookie{std::u16string(name), {}, {}});
}

PageResponse ResponseState::finished() const {
  PageResponse response;
  response.status = status_;
  response.reason = encoded(reason_, kUtf8);
  std::u16string type = contentType;
  if (!charset.empty()) type += u"; Charset=" + charset;
  response.headers.emplace_back("Content-Type", headerText(type));
  response.headers.insert(response.headers.end(), headers_.begin(), headers_.end());
  for (const Cookie& cookie : cookies_) {
    std::string line =
        percentEncoded(cookie.name, codePage) + "=" + percentEncoded(cookie.value, codePage);
    if (cookie.attributes.find(u"; path=") == std::u16string::npos) line += "; path=/";
    response.headers.emplace_back("Set-Cookie", line + headerText(cookie.attributes));
  }
  response.body = body_;
  return response;
}

Object makeResponse(const StopFlag& stop, const std::shared_ptr<ResponseState>& state,
                    std::vector<std::u16string> blocks, std::function<void()> end) {
  const Object cookies =
      pageObject(stop)
          .defaultMember(
              [stop, state](Arguments a) { return Variant(makeCookie(stop, state, textOf(a[0]))); },
              procedure([state](Arguments a) { state->cookie(textOf(a[0])).value = textOf(a[1]); }),
              {1, 1})
          .defaultName(u"Item")
          .object();
  HostObject object = pageObject(stop);
  const auto does = [&](std::u16string_view name, std::size_t count, auto step) {
    object.member(name, procedure(std::move(step)), {}, {count, count});
  };
  does(u"Write", 1, [state](Arguments a) { state->write(joinedTextOf(a[0])); });
  does(u"WriteBlock", 1, [state, blocks = std::move(blocks)](Arguments a) {
    state->write(blocks.at(static_cast<std::size_t>(int32Of(a[0]))));
  });
  does(u"Clear", 0, [state](Arguments) { state->clear(); });
  does(u"Flush", 0, [state](Arguments) { state->flush(); });
  does(u"End", 0, [end](Arguments) { end(); });
  does(u"Redirect", 1, [state, end](Arguments a) {
    state->setStatus(u"302 Object moved");
    state->addHeader(u"Location", textOf(a[0]));
    state->clear();
    end();
  });
  does(u"AddHeader", 2, [state](Arguments a) { state->addHeader(textOf(a[0]), textOf(a[1])); });

  const auto text = [&](std::u16string_view name, std::u16string ResponseState::*field) {
    object.property(
        name, [state, field] { return Variant((*state).*field); },
        [state, field](const VARIANT& value) {
          state->requireOpenHeaders();
          const std::u16string newText = textOf(value);
          static_cast<void>(headerText(newText));
          (*state).*field = newText;
        });
  };
  text(u"ContentType", &ResponseState::contentType);
  text(u"Charset", &ResponseState::charset);
  object
      .property(
          u"Status", [state] { return Variant(state->status()); },
          [state](const VARIANT& value) { state->setStatus(textOf(value)); })
      .value(u"Buffer", Boolean::True)  // whatever is put, all is sent at the end
      .value(u"IsClientConnected", Boolean::True);
  return addCollection(object, u"Cookies", cookies).object();
}

}  // namespace quendal::host
