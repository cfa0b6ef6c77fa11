// Dates as text, as an English (United States) locale writes them.
#pragma once

#include <string>

#include "base/date.h"

namespace quendal::automation {

/// "3/5/2005 2:07:09 PM"; the date alone at midnight, the time alone on day 0.
[[nodiscard]] std::u16string dateText(const Moment& at);

}  // namespace quendal::automation
