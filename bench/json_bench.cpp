// Decoding and encoding against two well-known libraries. Figures of speed are in million
// characters of the document per second; those of memory in MiB that the decoded document takes at
// its peak, over what the text alone takes.
#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>

#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "bench/json_documents.h"
#include "bench/row.h"
#include "core/dispatch.h"
#include "functions/json/json.h"

namespace quendal::bench {

/// The function table of `JSON`. Not in the unnamed namespace, where the compiler sees that nobody
/// implements it.
struct JsonTable : IDispatch {
  virtual HRESULT STDMETHODCALLTYPE Encode(VARIANT* value, VARIANT* result) = 0;
  virtual HRESULT STDMETHODCALLTYPE Decode(VARIANT* text, VARIANT* result) = 0;
};

namespace {

using Utf16 = rapidjson::UTF16<char16_t>;
using RapidDocument = rapidjson::GenericDocument<Utf16>;
using RapidBuffer = rapidjson::GenericStringBuffer<Utf16>;

/// `JSON` through its function table.
class OurJson {
 public:
  OurJson() : object_(Owned<Json>::make().object()) {}

  Variant encode(VARIANT& value) const { return call(&JsonTable::Encode, value); }
  Variant decode(VARIANT& text) const { return call(&JsonTable::Decode, text); }

 private:
  Variant call(HRESULT (JsonTable::*member)(VARIANT*, VARIANT*), VARIANT& argument) const {
    Variant result;
    check((reinterpret_cast<JsonTable*>(object_.dispatch())->*member)(&argument, &result));
    return result;
  }

  Object object_;
};

constexpr int kRounds = 25;

struct Times {
  double ours = 1e300;  // microseconds
  double peer = 1e300;
};

/// Best times of both sides, which run in turns. What a side returns goes after its time is taken.
template <class Ours, class Peer>
Times timesOf(Ours&& ours, Peer&& peer) {
  using Clock = std::chrono::steady_clock;
  Times best;
  const auto run = [](double& time, auto& work) {
    const auto start = Clock::now();
    [[maybe_unused]] const auto result = work();
    const std::chrono::duration<double, std::micro> taken = Clock::now() - start;
    time = std::min(time, taken.count());
  };
  for (int round = 0; round < kRounds; ++round) {
    run(best.ours, ours);
    run(best.peer, peer);
  }
  return best;
}

/// Million characters a second of both sides.
template <class Ours, class Peer>
void speeds(const std::string& name, std::size_t characters, Ours&& ours, Peer&& peer) {
  const Times times = timesOf(ours, peer);
  const auto size = static_cast<double>(characters);
  row(name, size / times.ours, size / times.peer);
}

std::unique_ptr<RapidDocument> rapidDecode(const std::u16string& text) {
  auto document = std::make_unique<RapidDocument>();
  document->Parse(text.c_str());
  if (document->HasParseError()) std::abort();
  return document;
}

/// MiB of the peak of a process's memory that `work` adds, found out in a process of its own.
template <class Work>
double peakOf(Work&& work) {
  const auto kilobytes = [](const std::string& field) {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
      if (line.starts_with(field)) return std::strtod(line.c_str() + field.size(), nullptr);
    return 0.0;
  };
  int ends[2];
  if (pipe(ends) != 0) std::abort();
  const pid_t child = fork();
  if (child == 0) {
    malloc_trim(0);                                 // no freed memory that the work could use again
    std::ofstream("/proc/self/clear_refs") << "5";  // the peak starts afresh
    const double before = kilobytes("VmRSS:");
    [[maybe_unused]] const auto result = work();
    const double added = (kilobytes("VmHWM:") - before) / 1024;
    const bool told = write(ends[1], &added, sizeof(added)) == sizeof(added);
    _exit(told ? 0 : 1);
  }
  close(ends[1]);
  double added = 0;
  if (read(ends[0], &added, sizeof(added)) != sizeof(added)) std::abort();
  close(ends[0]);
  waitpid(child, nullptr, 0);
  return added;
}

void measure(const JsonDocument& document) {
  const OurJson json;
  Variant text(document.utf16);
  const std::size_t size = document.utf16.size();
  const auto ours = [&] { return json.decode(text); };
  const auto rapid = [&] { return rapidDecode(document.utf16); };
  const auto nlohmann = [&] { return nlohmann::json::parse(document.utf8); };

  row("peak memory " + document.name + ", MiB (nlohmann)", peakOf(ours), peakOf(nlohmann));

  speeds("decode " + document.name + ", Mchar/s (RapidJSON)", size, ours, rapid);
  speeds("decode " + document.name + ", Mchar/s (nlohmann)", size, ours, nlohmann);
  const auto dropped = [](auto&& decode) {
    return [&decode] {
      decode();
      return 0;
    };
  };
  speeds("  and free, Mchar/s (RapidJSON)", size, dropped(ours), dropped(rapid));

  Variant value = ours();
  const auto rapidValue = rapid();
  const auto encode = [&] { return json.encode(value); };
  const auto rapidEncode = [&] {
    auto buffer = std::make_unique<RapidBuffer>();
    rapidjson::Writer<RapidBuffer, Utf16, Utf16> writer(*buffer);
    rapidValue->Accept(writer);
    return buffer;
  };
  speeds("encode " + document.name + ", Mchar/s (RapidJSON)", size, encode, rapidEncode);

  Variant twiceText(u"[" + document.utf16 + u"," + document.utf16 + u"]");
  Variant twiceValue = json.decode(twiceText);
  const Times decodes = timesOf([&] { return json.decode(twiceText); }, ours);
  row("decode twice as much, us (once)", decodes.ours, decodes.peer);
  const Times encodes = timesOf([&] { return json.encode(twiceValue); }, encode);
  row("encode twice as much, us (once)", encodes.ours, encodes.peer);
}

}  // namespace
}  // namespace quendal::bench

int main() {
  const auto documents = quendal::bench::jsonDocuments();
  for (const auto& document : documents) quendal::bench::measure(document);
  return 0;
}
