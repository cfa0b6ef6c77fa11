#include "response.h"

#include <algorithm>
#include <array>

#include "base/text.h"
#include "encoding.h"

namespace quendal::host {
namespace {

constexpr std::size_t kMostBytes = 16 * 1024 * 1024;

[[noreturn]] void refuse(std::u16string_view why) {
  throw AutomationError(error_number::kInvalidCall, why);
}

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
  static constexpr std::array kDays = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
  static constexpr std::array kMonths = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                         "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  std::array<char, 40> text{};
  std::snprintf(text.data(), text.size(), "%s, %02u %s %04u %02u:%02u:%02u GMT",
                kDays.at(utc.wDayOfWeek), unsigned{utc.wDay}, kMonths.at(utc.wMonth - 1u),
                unsigned{utc.wYear}, unsigned{utc.wHour}, unsigned{utc.wMinute},
                unsigned{utc.wSecond});
  return decoded(text.data(), kUtf8);
}

/// The bytes of an array of bytes; a text by its units, as a script holds bytes in one.
std::string bytesOf(const VARIANT& value) {
  if (value.vt == VT_BSTR) {
    const std::u16string_view text = viewOf(value.bstrVal);
    return {reinterpret_cast<const char*>(text.data()), text.size() * sizeof(char16_t)};
  }
  const Variant array = converted(value, VT_ARRAY | VT_UI1);
  void* data = nullptr;
  check(SafeArrayAccessData(array.parray, &data));
  std::string bytes(static_cast<const char*>(data), array.parray->rgsabound[0].cElements);
  check(SafeArrayUnaccessData(array.parray));
  return bytes;
}

Object makeCookie(const StopFlag& stop, const std::shared_ptr<ResponseState>& state,
                  const std::u16string& name) {
  const auto attribute = [state, name](std::u16string_view label) {
    return [state, name, label](const VARIANT& value) {
      state->cookie(name).attributes.append(u"; ").append(label).append(u"=").append(textOf(value));
    };
  };
  const auto flag = [state, name](std::u16string_view label) {
    return [state, name, label](const VARIANT& value) {
      if (int16Of(value) != 0) state->cookie(name).attributes.append(u"; ").append(label);
    };
  };
  const auto nothing = [] { return Variant(); };
  return PageObject(stop)
      .defaultMember(
          {0, 1}, [](Arguments) { return Variant(); },
          [state, name](Arguments arguments) {
            Cookie& cookie = state->cookie(name);
            if (arguments.size() == 1)
              cookie.value = textOf(arguments[0]);
            else
              add(cookie.keys, textOf(arguments[0]), textOf(arguments[1]));
            return Variant();
          })
      .defaultName(u"Item")
      .property(u"Path", nothing, attribute(u"path"))
      .property(u"Domain", nothing, attribute(u"domain"))
      .property(u"Secure", nothing, flag(u"secure"))
      .property(u"HttpOnly", nothing, flag(u"HttpOnly"))
      .property(u"Expires", nothing,
                [state, name](const VARIANT& value) {
                  state->cookie(name).attributes += u"; expires=" + httpDate(value);
                })
      .object();
}

}  // namespace

void ResponseState::write(std::u16string_view text) { writeBytes(encoded(text, codePage)); }

void ResponseState::writeBytes(std::string_view bytes) {
  if (body_.size() + bytes.size() > kMostBytes) refuse(u"The response is too long");
  body_ += bytes;
}

void ResponseState::clear() {
  if (!buffered) refuse(u"The response is not buffered");
  body_.resize(flushed_);
}

void ResponseState::requireOpenHeaders() const {
  if (committed_ || (!buffered && !body_.empty())) refuse(u"The headers have been sent already");
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
  return cookies_.emplace_back(Cookie{std::u16string(name), {}, {}, {}});
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
    for (const Field& key : cookie.keys)
      line += (line.back() == '=' ? "" : "&") + percentEncoded(key.name, codePage) + "=" +
              percentEncoded(key.values.back(), codePage);
    if (cookie.attributes.find(u"; path=") == std::u16string::npos) line += "; path=/";
    response.headers.emplace_back("Set-Cookie", line + headerText(cookie.attributes));
  }
  response.body = body_;
  return response;
}

Object makeResponse(const StopFlag& stop, std::shared_ptr<ResponseState> state,
                    std::shared_ptr<const std::vector<std::u16string>> blocks,
                    std::function<void()> end) {
  const Object cookies = PageObject(stop)
                             .defaultMember(
                                 {1, 1},
                                 [stop, state](Arguments arguments) {
                                   return Variant(makeCookie(stop, state, textOf(arguments[0])));
                                 },
                                 [state](Arguments arguments) {
                                   state->cookie(textOf(arguments[0])).value = textOf(arguments[1]);
                                   return Variant();
                                 })
                             .defaultName(u"Item")
                             .object();
  const auto text = [state](std::u16string ResponseState::*field) {
    return [state, field](const VARIANT& value) {
      state->requireOpenHeaders();
      const std::u16string newText = textOf(value);
      static_cast<void>(headerText(newText));
      (*state).*field = newText;
    };
  };
  const auto done = [](auto&& step) {
    return [step](Arguments arguments) {
      step(arguments);
      return Variant();
    };
  };
  return PageObject(stop)
      .method(u"Write", {1, 1}, done([state](Arguments a) { state->write(joinedTextOf(a[0])); }))
      .method(u"WriteBlock", {1, 1}, done([state, blocks](Arguments a) {
                state->write(blocks->at(static_cast<std::size_t>(int32Of(a[0]))));
              }))
      .method(u"BinaryWrite", {1, 1},
              done([state](Arguments a) { state->writeBytes(bytesOf(a[0])); }))
      .method(u"Clear", {}, done([state](Arguments) { state->clear(); }))
      .method(u"Flush", {}, done([state](Arguments) { state->flush(); }))
      .method(u"End", {}, done([end](Arguments) { end(); }))
      .method(u"Redirect", {1, 1}, done([state, end](Arguments a) {
                state->setStatus(u"302 Object moved");
                state->addHeader(u"Location", textOf(a[0]));
                state->clear();
                end();
              }))
      .method(u"AddHeader", {2, 2},
              done([state](Arguments a) { state->addHeader(textOf(a[0]), textOf(a[1])); }))
      .property(
          u"ContentType", [state] { return Variant(state->contentType); },
          text(&ResponseState::contentType))
      .property(
          u"Charset", [state] { return Variant(state->charset); }, text(&ResponseState::charset))
      .property(
          u"Status", [state] { return Variant(state->status()); },
          [state](const VARIANT& value) { state->setStatus(textOf(value)); })
      .property(
          u"CodePage", [state] { return Variant(static_cast<std::int32_t>(state->codePage)); },
          [state](const VARIANT& value) {
            const auto codePage = static_cast<unsigned>(int32Of(value));
            if (codePage != 0 && !IsValidCodePage(codePage)) refuse(u"There is no such code page");
            state->codePage = codePage;
          })
      .property(
          u"Buffer", [state] { return Variant(booleanOf(state->buffered)); },
          [state](const VARIANT& value) { state->buffered = int16Of(value) != 0; })
      .property(u"IsClientConnected", [] { return Variant(Boolean::True); })
      .property(u"Cookies", [cookies] { return Variant(cookies); })
      .object();
}

}  // namespace quendal::host
