#include "state.h"

#include <algorithm>
#include <random>

#include "fields.h"

namespace quendal::host {
namespace {

constexpr std::chrono::minutes kSessionTime{20};
constexpr std::chrono::milliseconds kLockPoll{50};

void requireNoObject(const VARIANT& value) {
  const VARTYPE type = value.vt & VT_TYPEMASK;
  if (type == VT_DISPATCH || type == VT_UNKNOWN)
    raise(error_number::kNoSuchMember,
          u"An object belongs to its page and cannot be kept between pages");
  if (value.vt == kVariantArray)
    forEach(value, [](const Variant& item) { requireNoObject(follow(item)); });
}

std::string newKey() {
  static constexpr char kLetters[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
  std::random_device random;
  std::string key;
  for (int i = 0; i < 28; ++i) key += kLetters[random() % 26];  // some 130 bits
  return key;
}

/// What Session and Application have in common.
HostObject withContents(const StopFlag& stop, const std::shared_ptr<Contents>& contents) {
  const auto names = [contents] {
    const std::scoped_lock lock(contents->mutex);
    std::vector<Variant> list;
    for (const auto& [name, value] : contents->values) list.emplace_back(name);
    return list;
  };
  const auto get = [contents, names](Arguments arguments) {
    std::u16string name = textOf(arguments[0]);
    if (isPosition(arguments[0])) name = textOf(elementAt(names(), arguments[0]));
    const std::scoped_lock lock(contents->mutex);
    const auto found = contents->values.find(name);
    return found == contents->values.end() ? Variant() : found->second;
  };
  const auto put = procedure([contents](Arguments arguments) {
    requireNoObject(arguments[1]);
    const std::u16string name = textOf(arguments[0]);
    const Variant value = Variant::copyOf(arguments[1]);
    const std::scoped_lock lock(contents->mutex);
    contents->values.insert_or_assign(name, value);
  });
  const auto remove = procedure([contents](Arguments arguments) {
    const std::u16string name = textOf(arguments[0]);
    const std::scoped_lock lock(contents->mutex);
    if (const auto found = contents->values.find(name); found != contents->values.end())
      contents->values.erase(found);
  });
  const Object collection = pageObject(stop)
                                .defaultMember(get, put, {1, 1})
                                .defaultName(u"Item")
                                .property(u"Count", [names] { return countOf(names()); })
                                .member(u"Remove", remove, {}, {1, 1})
                                .elements(names)
                                .object();
  HostObject object = pageObject(stop);
  object.defaultMember(get, put, {1, 1}).defaultName(u"Value").defaultName(u"Item");
  return addCollection(object, u"Contents", collection);
}

}  // namespace

void PageLock::lock(const void* page, const StopFlag& stop) {
  std::unique_lock lock(mutex_);
  while (owner_ != nullptr && owner_ != page) {
    if (*stop) raiseEnded();
    freed_.wait_for(lock, kLockPoll);
  }
  owner_ = page;
}

void PageLock::unlock(const void* page) {
  {
    const std::scoped_lock lock(mutex_);
    if (owner_ != page) return;
    owner_ = nullptr;
  }
  freed_.notify_one();
}

std::shared_ptr<SessionState> Sessions::find(std::string_view key) {
  const std::scoped_lock lock(mutex_);
  const auto now = Clock::now();
  std::erase_if(kept_,
                [&](const auto& entry) { return now - entry.second.lastUsed >= kSessionTime; });
  if (const auto found = kept_.find(key); found != kept_.end()) {
    found->second.lastUsed = now;
    return found->second.session;
  }
  auto session = std::make_shared<SessionState>();
  session->key = newKey();
  session->id = ++lastId_;
  kept_.emplace(session->key, Kept{session, now});
  return session;
}

Object makeSession(const StopFlag& stop, std::shared_ptr<SessionState> session) {
  return withContents(stop, {session, &session->contents})
      .property(u"SessionID", [session] { return Variant(session->id); })
      .object();
}

Object makeApplication(const StopFlag& stop, std::shared_ptr<SharedState> shared,
                       const void* page) {
  const std::shared_ptr<Contents> contents(shared, &shared->application);
  PageLock& lock = shared->applicationLock;  // lives as long as the contents
  return withContents(stop, contents)
      .member(u"Lock",
              procedure([contents, &lock, page, stop](Arguments) { lock.lock(page, stop); }), {},
              {0, 0})
      .member(u"Unlock", procedure([contents, &lock, page](Arguments) { lock.unlock(page); }), {},
              {0, 0})
      .object();
}

}  // namespace quendal::host
