// `FUNCTIONS`: the one object a page creates to reach the script helpers.
#pragma once

#include "arrays/array_functions.h"
#include "arrays/dictionary_functions.h"
#include "core/dispatch.h"
#include "functions/concat.h"
#include "functions/json/json.h"
#include "strings/string_functions.h"
#include "system/os_info.h"

namespace quendal {

class Functions {
 public:
  static constexpr std::u16string_view kClassName = u"FUNCTIONS";

  Functions();

  /// The owned helpers: the same objects on every call.
  Owned<Json> json() { return json_; }
  Owned<Concat> concat() { return concat_; }
  Owned<StringFunctions> strings() { return strings_; }
  Owned<ArrayFunctions> arrays() { return arrays_; }
  Owned<DictionaryFunctions> dictionaries() { return dictionaries_; }
  Owned<OsInfo> os() { return os_; }

  void sleep(VariantRef& milliseconds);
  Variant max(ArgumentList values);
  Variant min(ArgumentList values);

 private:
  Owned<Json> json_;
  Owned<ArrayFunctions> arrays_;
  Owned<Concat> concat_;
  Owned<StringFunctions> strings_;
  Owned<DictionaryFunctions> dictionaries_;
  Owned<OsInfo> os_;
};

template <>
const ClassDescription& describe<Functions>();

}  // namespace quendal
