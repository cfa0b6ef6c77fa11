// One script engine of a page: runs its script and tells failures by the page's own lines.
#pragma once

#include <quendal/object.h>

#include <activscp.h>

#include <optional>

#include "page_object.h"
#include "page_parser.h"
#include "ref_counted.h"

namespace quendal::host {

class ScriptSite;

/// Where a module's instructions are.
struct ModuleRange {
  std::uintptr_t start = 0;
  std::uintptr_t end = 0;
};

/// Belongs to one apartment, but for `interrupt` and `module`.
class ScriptEngine {
 public:
  /// The members of `page` are global names of the script. Raises 429 without such an engine.
  ScriptEngine(Language language, const Object& page);
  ~ScriptEngine();

  /// Makes the functions of another engine global names of this one.
  void addFunctionsOf(ScriptEngine& other);

  /// Runs a script to its end. Throws PageError.
  void run(const PageScript& script);

  /// Asks the engine to end its script, from any thread. Not every engine can (Wine's cannot).
  void interrupt() noexcept;
  [[nodiscard]] ModuleRange module() const noexcept { return module_; }

  /// The site as components see it: it offers IServiceProvider.
  [[nodiscard]] IUnknown* site() const noexcept;

 private:
  void addGlobals(const wchar_t* name, const Object& object);

  Reference<ScriptSite> site_;
  Reference<IActiveScript> engine_;
  Reference<IActiveScriptParse> parser_;
  ModuleRange module_;
};

}  // namespace quendal::host
