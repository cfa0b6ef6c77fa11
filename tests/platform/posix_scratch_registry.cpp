#include "base/utf8.h"
#include "platform/posix/registry_tree.h"
#include "tests/platform/scratch_registry.h"

namespace quendal::platform {

ScratchRegistry::ScratchRegistry(const std::vector<ScratchKey>& keys) {
  const auto tree = std::make_shared<RegistryTree>();
  for (const ScratchKey& key : keys) {
    tree->push_back({fromUtf8(key.path), {}});
    for (const ScratchValue& value : key.values)
      tree->back().values.push_back({fromUtf8(value.name), value.type, value.bytes});
  }
  content_ = tree;
  answerFrom(tree.get());
}

ScratchRegistry::~ScratchRegistry() { answerFrom(nullptr); }

}  // namespace quendal::platform
