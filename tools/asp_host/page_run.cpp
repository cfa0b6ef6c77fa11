#include "page_run.h"

#include <ocidl.h>

#include <stdexcept>
#include <string>
#include <utility>

#include "automation/dispatch.h"
#include "automation/reference.h"
#include "encoding.h"
#include "platform/files.h"

namespace quendal::host {
namespace {

/// The cookie that holds a session's key.
constexpr std::u16string_view kSessionCookie = u"ASPSESSIONID";

std::string readFile(const std::u16string& file) {
  std::vector<std::byte> bytes;
  if (platform::readFile(file, bytes) != platform::FileError::None)
    throw std::runtime_error("the file cannot be read: " + encoded(file, kUtf8));
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

bool offers(const Object& object, std::u16string_view member) {
  DISPID id = DISPID_UNKNOWN;
  return SUCCEEDED(automation::memberId(object.dispatch(), member, &id));
}

std::string messageOf(const std::exception& error) {
  if (const auto* raised = dynamic_cast<const AutomationError*>(&error))
    return encoded(raised->description(), kUtf8);
  return error.what();
}

}  // namespace

PageRun::PageRun(PageRequest request, PagePlace place, std::shared_ptr<SharedState> shared,
                 std::chrono::seconds scriptTimeout)
    : request_(std::move(request)),
      place_(std::move(place)),
      shared_(std::move(shared)),
      timeout_(scriptTimeout) {}

PageResponse PageRun::execute() {
  {
    const std::scoped_lock lock(mutex_);
    started_ = Clock::now();
  }
  std::optional<std::string> failure;
  try {
    const ParsedPage page = parse();
    context_ = makeContext(page);
    runScripts(page, context_);
  } catch (const PageError& error) {
    if (!ended_) failure = error.what();
  } catch (const std::exception& error) {
    failure = fileName() + ": " + messageOf(error);
  }
  if (ended_) *stop_ = false;  // objects may still use the page at its end
  endObjects();
  dropEngines();
  context_ = {};
  *stop_ = true;
  shared_->applicationLock.unlock(this);
  PageResponse response;
  try {
    response = failure ? failed(*failure) : response_->finished();
    if (failure) response.body = response_->finished().body;
  } catch (const std::exception& error) {
    response = failed(messageOf(error));
  }
  if (session_ != nullptr && session_->key != sessionKey())
    response.headers.emplace_back(
        "Set-Cookie", encoded(kSessionCookie, kUtf8) + "=" + session_->key + "; path=/; HttpOnly");
  const std::scoped_lock lock(mutex_);
  started_.reset();
  return response;
}

ParsedPage PageRun::parse() const {
  return parsePage(place_.file(),
                   {[this](std::u16string_view name, bool isVirtual, const std::u16string& from) {
                      return place_.map(
                          isVirtual ? u"/" + std::u16string(name) : std::u16string(name), from);
                    },
                    &readFile, &decoded});
}

std::string PageRun::sessionKey() const {
  const auto decode = [](std::string_view bytes) { return decoded(bytes, kUtf8); };
  const Fields cookies = parseFields(request_.header("Cookie"), ';', decode);
  const Field* key = find(cookies, kSessionCookie);
  return key == nullptr ? std::string() : encoded(key->values.front(), kUtf8);
}

Object PageRun::makeContext(const ParsedPage& page) {
  checkCodePage(page.codePage);
  response_->codePage = page.codePage;
  session_ = shared_->sessions.find(sessionKey());
  const auto end = [this] {
    ended_ = true;
    *stop_ = true;
    // Without the lock, with which a thread must not enter an engine: only this one changes the
    // list.
    for (const auto& engine : engines_) engine->interrupt();
    raiseEnded();
  };
  HostObject context = pageObject(stop_);
  const std::pair<std::u16string_view, Object> parts[] = {
      {u"Request", makeRequest(stop_, request_, place_, page.codePage)},
      {u"Response", makeResponse(stop_, response_, page.blocks, end)},
      {u"Server", makeServer()},
      {u"Session", makeSession(stop_, session_)},
      {u"Application", makeApplication(stop_, shared_, this)}};
  for (const auto& [name, part] : parts) addCollection(context, name, part);
  return context.object();
}

Object PageRun::makeServer() {
  HostObject server = pageObject(stop_);
  const auto gives = [&](std::u16string_view name, auto result) {
    server.member(name, [result](Arguments arguments) { return Variant(result(arguments[0])); }, {},
                  {1, 1});
  };
  gives(u"CreateObject", [this](const VARIANT& id) { return createObject(textOf(id)); });
  gives(u"MapPath",
        [place = place_](const VARIANT& path) { return place.map(textOf(path), place.file()); });
  gives(u"HTMLEncode", [](const VARIANT& text) { return htmlEncoded(joinedTextOf(text)); });
  gives(u"URLEncode", [this](const VARIANT& text) {
    return decoded(percentEncoded(joinedTextOf(text), response_->codePage), kUtf8);
  });
  return server
      .property(
          u"ScriptTimeout",
          [this] {
            const std::scoped_lock lock(mutex_);
            return Variant(static_cast<std::int32_t>(timeout_.count()));
          },
          [this](const VARIANT& value) {
            const std::int32_t seconds = int32Of(value);
            if (seconds < 1) raise(error_number::kInvalidCall, u"A time-out is a second at least");
            const std::scoped_lock lock(mutex_);
            timeout_ = std::chrono::seconds(seconds);
          })
      .object();
}

Object PageRun::createObject(std::u16string_view programId) {
  const std::u16string name(programId);
  CLSID classId{};
  void* created = nullptr;
  const HRESULT code =
      FAILED(CLSIDFromProgID(oleText(name.c_str()), &classId))
          ? REGDB_E_CLASSNOTREG
          : CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER,
                             IID_IDispatch, &created);
  if (FAILED(code)) raise(error_number::kCannotCreate, u"The object cannot be created: " + name);
  Object object = Object::attach(static_cast<IDispatch*>(created));
  void* asked = nullptr;
  if (SUCCEEDED(object.dispatch()->QueryInterface(__uuidof(IObjectWithSite), &asked))) {
    const automation::Reference<IObjectWithSite> sited(static_cast<IObjectWithSite*>(asked));
    sited->SetSite(engines_.back()->site());
  }
  if (offers(object, u"OnStartPage")) object.call(u"OnStartPage", context_);
  created_.push_back(object);
  return object;
}

void PageRun::runScripts(const ParsedPage& page, const Object& context) {
  for (const PageScript& script : page.scripts) {
    auto engine = std::make_unique<ScriptEngine>(script.language, context);
    ScriptEngine& current = *engine;
    if (!engines_.empty()) current.addFunctionsOf(*engines_.back());
    {
      const std::scoped_lock lock(mutex_);
      engines_.push_back(std::move(engine));
    }
    current.run(script);
  }
}

void PageRun::endObjects() noexcept {
  for (const Object& object : created_) {
    try {
      if (offers(object, u"OnEndPage")) object.call(u"OnEndPage");
    } catch (const std::exception&) {
      // The page is over, and nobody is left to whom this could be told.
    }
  }
  created_.clear();
}

void PageRun::dropEngines() noexcept {
  std::vector<std::unique_ptr<ScriptEngine>> engines;
  {
    const std::scoped_lock lock(mutex_);
    engines.swap(engines_);
  }
  while (!engines.empty()) engines.pop_back();
}

std::optional<PageRun::Clock::time_point> PageRun::deadline() const {
  const std::scoped_lock lock(mutex_);
  if (!started_) return std::nullopt;
  return *started_ + timeout_;
}

void PageRun::stop() noexcept {
  *stop_ = true;
  const std::scoped_lock lock(mutex_);
  for (const auto& engine : engines_) engine->interrupt();
}

std::string PageRun::fileName() const { return encoded(place_.file(), kUtf8); }

PageResponse PageRun::timedOut() {
  shared_->applicationLock.unlock(this);
  return failed(fileName() + ": the script ran longer than its time-out");
}

PageResponse PageRun::failed(std::string why) {
  PageResponse response;
  response.status = 500;
  response.reason = "Internal Server Error";
  response.failure = std::move(why);
  return response;
}

}  // namespace quendal::host
