#include "component/catalogue.h"

#include <algorithm>
#include <array>

#include "base/text.h"
#include "functions/functions.h"
#include "logging/logging.h"
#include "versioninfo/version_info.h"

namespace quendal {
namespace {

template <class C>
CatalogueEntry entry() {
  return {describe<C>(), [] { return Owned<C>::make().object(); }};
}

template <class Matches>
const CatalogueEntry* findWhere(Matches&& matches) {
  const auto all = catalogue();
  const auto found = std::ranges::find_if(all, [&](const CatalogueEntry& candidate) {
    const ClassIdentity& identity = candidate.description.identity();
    return !identity.programId.empty() && matches(identity);
  });
  return found == all.end() ? nullptr : &*found;
}

}  // namespace

std::span<const CatalogueEntry> catalogue() {
  static const std::array all = {
      entry<Logging>(),         entry<Functions>(),      entry<VersionInfo>(),
      entry<OsInfo>(),          entry<Json>(),           entry<Concat>(),
      entry<StringFunctions>(), entry<ArrayFunctions>(), entry<DictionaryFunctions>(),
  };
  return all;
}

const CatalogueEntry* findCreatable(REFCLSID classId) {
  return findWhere([&](const ClassIdentity& identity) { return identity.classId == classId; });
}

const CatalogueEntry* findCreatable(std::u16string_view programId) {
  return findWhere(
      [&](const ClassIdentity& identity) { return equalNoCase(identity.programId, programId); });
}

}  // namespace quendal
