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

/// What Session and Application have in common. `change` runs before each change.
HostObject withContents(const StopFlag& stop, const std::shared_ptr<Contents>& contents,
                        const std::function<void()>& change) {
  const auto read = [contents](Arguments arguments) {
    if (!isPosition(arguments[0])) return contents->get(textOf(arguments[0]));
    const std::vector<Variant> names = contents->names();
    const auto at = static_cast<std::size_t>(int32Of(arguments[0])) - 1;
    if (at >= names.size()) throw AutomationError(error_number::kSubscript);
    return contents->get(textOf(names[at]));
  };
  const auto changing = [change](auto step) {
    return procedure([change, step](Arguments arguments) {
      change();
      step(arguments);
    });
  };
  const auto write = changing([contents](Arguments a) { contents->put(textOf(a[0]), a[1]); });
  const Object collection =
      pageObject(stop)
          .defaultMember(read, write, {1, 1})
          .defaultName(u"Item")
          .property(
              u"Count",
              [contents] { return Variant(static_cast<std::int32_t>(contents->names().size())); })
          .member(u"Remove", changing([contents](Arguments a) { contents->remove(textOf(a[0])); }),
                  {}, {1, 1})
          .member(u"RemoveAll", changing([contents](Arguments) { contents->clear(); }), {}, {0, 0})
          .elements([contents] { return contents->names(); })
          .object();
  HostObject object = pageObject(stop);
  object.defaultMember(read, write, {1, 1}).defaultName(u"Value").defaultName(u"Item");
  return addCollection(object, u"Contents", collection);
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
  if (const auto found = values_.find(name); found != values_.end()) values_.erase(found);
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
  std::erase_if(kept_,
                [&](const auto& entry) { return now - entry.second.lastUsed >= kSessionTime; });
  return kept_.insert_or_assign(session->key, Kept{session, now}).second;
}

Object makeSession(const StopFlag& stop, std::shared_ptr<SessionState> session) {
  const std::shared_ptr<Contents> contents(session, &session->contents);
  return withContents(stop, contents, [session] { session->used = true; })
      .property(u"SessionID",
                [session] {
                  session->used = true;
                  return Variant(session->id);
                })
      .member(u"Abandon", procedure([session](Arguments) { session->abandoned = true; }), {},
              {0, 0})
      .object();
}

Object makeApplication(const StopFlag& stop, std::shared_ptr<SharedState> shared,
                       const void* page) {
  const std::shared_ptr<Contents> contents(shared, &shared->application);
  PageLock& lock = shared->applicationLock;  // lives as long as the contents
  return withContents(stop, contents, [] {})
      .member(u"Lock",
              procedure([contents, &lock, page, stop](Arguments) { lock.lock(page, stop); }), {},
              {0, 0})
      .member(u"Unlock", procedure([contents, &lock, page](Arguments) { lock.unlock(page); }), {},
              {0, 0})
      .object();
}

}  // namespace quendal::host
