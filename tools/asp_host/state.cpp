#include "state.h"

#include <algorithm>
#include <random>

#include "fields.h"

namespace quendal::host {
namespace {

constexpr std::chrono::minutes kSessionTime{20};
constexpr std::size_t kMostSessions = 10'000;
constexpr std::chrono::milliseconds kLockPoll{50};

void requireNoObject(const VARIANT& value) {
  const VARTYPE type = value.vt & VT_TYPEMASK;
  if (type == VT_DISPATCH || type == VT_UNKNOWN)
    throw AutomationError(error_number::kNoSuchMember,
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

/// What Session and Application have in common. `change` runs before each change.
PageObject withContents(const StopFlag& stop, const std::shared_ptr<Contents>& contents,
                        const std::function<void()>& change) {
  const auto read = [contents](Arguments arguments) {
    if (!isPosition(arguments[0])) return contents->get(textOf(arguments[0]));
    const auto names = contents->names();
    const std::int32_t at = int32Of(arguments[0]);
    if (at < 1 || static_cast<std::size_t>(at) > names.size())
      throw AutomationError(error_number::kSubscript);
    return contents->get(textOf(names[static_cast<std::size_t>(at - 1)]));
  };
  const auto write = [contents, change](Arguments arguments) {
    change();
    contents->put(textOf(arguments[0]), arguments[1]);
    return Variant();
  };
  const Object collection =
      PageObject(stop)
          .defaultMember({1, 1}, read, write)
          .defaultName(u"Item")
          .property(
              u"Count",
              [contents] { return Variant(static_cast<std::int32_t>(contents->names().size())); })
          .method(u"Remove", {1, 1},
                  [contents, change](Arguments arguments) {
                    change();
                    contents->remove(textOf(arguments[0]));
                    return Variant();
                  })
          .method(u"RemoveAll", {},
                  [contents, change](Arguments) {
                    change();
                    contents->clear();
                    return Variant();
                  })
          .elements([contents] { return contents->names(); })
          .object();
  PageObject object(stop);
  object.defaultMember({1, 1}, read, write)
      .defaultName(u"Value")
      .property(u"Contents", [collection] { return Variant(collection); });
  return object;
}

}  // namespace

Variant Contents::get(std::u16string_view name) const {
  const std::scoped_lock lock(mutex_);
  const auto found = values_.find(name);
  return found == values_.end() ? Variant() : found->second;
}

void Contents::put(std::u16string_view name, const VARIANT& value) {
  requireNoObject(value);
  Variant copy = Variant::copyOf(value);
  const std::scoped_lock lock(mutex_);
  values_.insert_or_assign(std::u16string(name), std::move(copy));
}

void Contents::remove(std::u16string_view name) {
  const std::scoped_lock lock(mutex_);
  const auto found = values_.find(name);
  if (found != values_.end()) values_.erase(found);
}

void Contents::clear() {
  const std::scoped_lock lock(mutex_);
  values_.clear();
}

std::vector<Variant> Contents::names() const {
  const std::scoped_lock lock(mutex_);
  std::vector<Variant> names;
  for (const auto& [key, value] : values_) names.emplace_back(key);
  return names;
}

void PageLock::lock(const void* page, const StopFlag& stop) {
  std::unique_lock lock(mutex_);
  while (owner_ != nullptr && owner_ != page) {
    if (*stop) throw AutomationError(error_number::kInvalidCall, u"The page has ended");
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
  const auto found = kept_.find(key);
  if (found != kept_.end() && Clock::now() - found->second.lastUsed < kSessionTime) {
    found->second.lastUsed = Clock::now();
    return found->second.session;
  }
  auto session = std::make_shared<SessionState>();
  session->key = newKey();
  session->id = ++lastId_;
  return session;
}

bool Sessions::keep(const std::shared_ptr<SessionState>& session) {
  const std::scoped_lock lock(mutex_);
  if (session->abandoned) {
    kept_.erase(session->key);
    return false;
  }
  if (!session->used) return false;
  const auto now = Clock::now();
  const bool isNew = kept_.insert_or_assign(session->key, Kept{session, now}).second;
  if (isNew && kept_.size() > kMostSessions) {
    std::erase_if(kept_,
                  [&](const auto& entry) { return now - entry.second.lastUsed >= kSessionTime; });
    if (kept_.size() > kMostSessions)
      kept_.erase(std::ranges::min_element(
          kept_, {}, [](const auto& entry) { return entry.second.lastUsed; }));
  }
  return isNew;
}

Object makeSession(const StopFlag& stop, std::shared_ptr<SessionState> session) {
  const std::shared_ptr<Contents> contents(session, &session->contents);
  return withContents(stop, contents, [session] { session->used = true; })
      .property(u"SessionID",
                [session] {
                  session->used = true;
                  return Variant(session->id);
                })
      .method(u"Abandon", {},
              [session](Arguments) {
                session->abandoned = true;
                return Variant();
              })
      .object();
}

Object makeApplication(const StopFlag& stop, std::shared_ptr<SharedState> shared,
                       const void* page) {
  const std::shared_ptr<Contents> contents(shared, &shared->application);
  return withContents(stop, contents, [] {})
      .method(u"Lock", {},
              [shared, page, stop](Arguments) {
                shared->applicationLock.lock(page, stop);
                return Variant();
              })
      .method(u"Unlock", {},
              [shared, page](Arguments) {
                shared->applicationLock.unlock(page);
                return Variant();
              })
      .object();
}

}  // namespace quendal::host
