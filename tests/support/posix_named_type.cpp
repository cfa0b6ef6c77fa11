#include "automation/dispatch.h"
#include "support/named_type.h"

namespace quendal::test {

HRESULT namedType(std::u16string_view name, ITypeInfo** info) {
  return automation::typeInformation(IID_NULL, IID_NULL, name, info);
}

}  // namespace quendal::test
