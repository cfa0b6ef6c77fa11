// Decoding and encoding against two well-known libraries. Figures of speed are in million
// characters of the document per second.
#include <nlohmann/json.hpp>
#include <string>

#include "bench/json_documents.h"
#include "bench/json_sides.h"

namespace quendal::bench {
namespace {

void measure(const JsonDocument& document) {
  const OurJson json;
  Variant text(document.utf16);
  const std::size_t size = document.utf16.size();
  const auto ours = [&] { return json.decode(text); };
  const auto rapid = [&] { return rapidDecode(document.utf16); };
  const auto nlohmann = [&] { return nlohmann::json::parse(document.utf8); };

  speeds("decode " + document.name + ", Mchar/s (RapidJSON)", size, ours, rapid);
  speeds("decode " + document.name + ", Mchar/s (nlohmann)", size, ours, nlohmann);
  const auto dropped = [](auto& decode) { return [&decode] { static_cast<void>(decode()); }; };
  speeds("  and free, Mchar/s (RapidJSON)", size, dropped(ours), dropped(rapid));

  Variant value = ours();
  const auto rapidValue = rapid();
  const nlohmann::json nlohmannValue = nlohmann();
  const auto encode = [&] { return json.encode(value); };
  speeds("encode " + document.name + ", Mchar/s (RapidJSON)", size, encode,
         [&] { return rapidEncode(*rapidValue); });
  speeds("encode " + document.name + ", Mchar/s (nlohmann)", size, encode,
         [&] { return nlohmannValue.dump(); });

  Variant twiceText(u"[" + document.utf16 + u"," + document.utf16 + u"]");
  Variant twiceValue = json.decode(twiceText);
  compare(
      "decode twice as much, us (once)", 1, [&] { return json.decode(twiceText); }, ours);
  compare(
      "encode twice as much, us (once)", 1, [&] { return json.encode(twiceValue); }, encode);
}

}  // namespace

void run() {
  for (const JsonDocument& document : jsonDocuments()) measure(document);
}

}  // namespace quendal::bench
