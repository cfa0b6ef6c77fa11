// The system as the library sees it while it is fuzzed: files in a scratch folder only, no waiting,
// no network, no system log. The program is linked with these calls wrapped (kept in one list in
// fuzz/CMakeLists.txt).
#pragma once

#include <string>

namespace quendal::fuzz {

/// Makes the scratch folder, in the one that TMPDIR names, which goes when the program ends. It
/// holds a file with a version resource, "module.dll".
class Sandbox {
 public:
  Sandbox();
  Sandbox(const Sandbox&) = delete;
  Sandbox& operator=(const Sandbox&) = delete;
  ~Sandbox();

  /// The folder with a separator at its end.
  [[nodiscard]] static const std::u16string& folder();

  /// Closes the sandbox for a run, for which the scratch folder is the current one; empties the
  /// folder after it.
  void enter();
  void leave();
};

}  // namespace quendal::fuzz
