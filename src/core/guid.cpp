#include "core/guid.h"

#include "base/text.h"

namespace quendal {

std::u16string registryForm(const GUID& id) {
  std::u16string text = u"{" + hexText(id.Data1, 8);
  text.append(u"-").append(hexText(id.Data2, 4)).append(u"-").append(hexText(id.Data3, 4));
  for (std::size_t i = 0; i < sizeof id.Data4; ++i) {
    if (i == 0 || i == 2) text += u'-';
    text += hexText(id.Data4[i], 2);
  }
  return text += u'}';
}

}  // namespace quendal
