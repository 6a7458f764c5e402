// The Companion's files for hosts as reports: requests, machine settings, check-out answers.
#pragma once

#include "tools/zemlink/reports/report.h"

#include <string_view>

namespace zemlink {

Outcome decodeCommand(std::string_view bytes);
Outcome decodeMachine(std::string_view bytes);
Outcome decodeAnswer(std::string_view bytes);

} // namespace zemlink
