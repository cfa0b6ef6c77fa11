// Dates as text, as an English (United States) locale writes them.
#pragma once

#include <quendal/automation.h>

#include "automation/posix/number_text.h"

namespace quendal::automation {

/// "3/5/2005 2:07:09 PM"; the date alone at midnight, the time alone on day 0. False when the
/// value is no date.
[[nodiscard]] bool writeDateText(double date, NumberText& text) noexcept;

}  // namespace quendal::automation
