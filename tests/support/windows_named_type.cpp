#include "automation/dispatch.h"
#include "automation/windows/named_type_info.h"
#include "support/named_type.h"

namespace quendal::test {

HRESULT namedType(std::u16string_view name, ITypeInfo** info) {
  // Any type information will do: only the name is asked for.
  const automation::Reference<IDispatch> some(automation::newDictionary());
  const HRESULT result = some->GetTypeInfo(0, 0, info);
  if (FAILED(result)) return result;
  *info = automation::nameTypeInfo(automation::Reference<ITypeInfo>(*info), name);
  return S_OK;
}

}  // namespace quendal::test
