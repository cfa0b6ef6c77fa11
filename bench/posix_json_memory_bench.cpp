// MiB that a decoded document takes at its peak, over what the text alone takes.
#include <nlohmann/json.hpp>

#include "bench/json_documents.h"
#include "bench/json_sides.h"
#include "bench/posix_cost.h"

namespace quendal::bench {

void run() {
  const OurJson json;
  const auto nothing = [] { return 0; };
  for (const JsonDocument& document : jsonDocuments()) {
    Variant text(document.utf16);
    const Cost ours = costOf(nothing, [&](int) { return json.decode(text); });
    const Cost peer = costOf(nothing, [&](int) { return nlohmann::json::parse(document.utf8); });
    row("peak memory " + document.name + ", MiB (nlohmann)", ours.mebibytes, peer.mebibytes);
  }
}

}  // namespace quendal::bench
