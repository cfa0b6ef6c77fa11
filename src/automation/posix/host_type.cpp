#include "automation/host_type.h"

#include "automation/dispatch.h"

namespace quendal::automation {

HRESULT hostType(std::u16string_view name, ITypeInfo** info) noexcept {
  return typeInformation(IID_NULL, IID_NULL, name, info);
}

}  // namespace quendal::automation
