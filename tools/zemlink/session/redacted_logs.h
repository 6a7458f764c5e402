// Logs without the names in them.
#pragma once

#include "tools/zemlink/session/pseudonyms.h"

#include <string>
#include <string_view>

namespace zemlink {

// Adds the names in the Companion's log, UTF-8, and in the log of loads, ANSI.
void addNamesOfCompanionLog(Pseudonyms& names, std::string_view bytes);
void addNamesOfLoadLog(Pseudonyms& names, std::string_view bytes);

// The log with pseudonyms, UTF-8. A line that is not what such a log holds becomes "(line left
// out)", since nothing is known about what is in it, and so does the hexadecimal text of a notice.
std::string redactedCompanionLog(const Pseudonyms& names, std::string_view bytes);
std::string redactedLoadLog(const Pseudonyms& names, std::string_view bytes);

} // namespace zemlink
