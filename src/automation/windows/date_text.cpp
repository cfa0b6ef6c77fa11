#include "automation/date_text.h"

#include <quendal/automation.h>

#include <string>

namespace quendal::automation {

bool parseDate(std::u16string_view text, double& date) {
  if (text.find(u'\0') != std::u16string_view::npos) return false;  // the system reads up to it
  const std::u16string terminated(text);
  return SUCCEEDED(VarDateFromStr(const_cast<wchar_t*>(oleText(terminated.c_str())),
                                  LOCALE_USER_DEFAULT, 0, &date));
}

}  // namespace quendal::automation
