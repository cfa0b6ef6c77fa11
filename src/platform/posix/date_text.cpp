#include "platform/date_text.h"

#include "platform/posix/automation/date_text.h"

namespace quendal::platform {

bool parseDate(std::u16string_view text, double& date) { return parseDateText(text, date); }

}  // namespace quendal::platform
