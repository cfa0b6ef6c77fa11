#include "core/guid.h"

namespace quendal {

std::u16string registryForm(const GUID& id) {
  std::u16string text = u"{";
  const auto add = [&text](unsigned long value, int digits) {
    for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4)
      text += u"0123456789ABCDEF"[(value >> shift) & 0xF];
  };
  add(id.Data1, 8);
  text += u'-';
  add(id.Data2, 4);
  text += u'-';
  add(id.Data3, 4);
  for (std::size_t i = 0; i < sizeof id.Data4; ++i) {
    if (i == 0 || i == 2) text += u'-';
    add(id.Data4[i], 2);
  }
  return text += u'}';
}

}  // namespace quendal
