// One script engine of a page: runs its script and tells failures by the page's own lines.
#pragma once

#include <quendal/object.h>

#include <activscp.h>

#include "automation/reference.h"
#include "page_parser.h"

namespace quendal::host {

class ScriptSite;

/// Belongs to one apartment, but for `interrupt`.
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

  /// The site as components see it: it offers IServiceProvider.
  [[nodiscard]] IUnknown* site() const noexcept;

 private:
  void addGlobals(const wchar_t* name, const Object& object);

  automation::Reference<ScriptSite> site_;
  automation::Reference<IActiveScript> engine_;
  automation::Reference<IActiveScriptParse> parser_;
};

}  // namespace quendal::host
