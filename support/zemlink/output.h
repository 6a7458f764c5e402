// What the program prints.
#pragma once

#include "zemlink/decisions/report.h"

#include <string_view>

namespace zemlink {

enum class Stream { output, error };

// Writes UTF-8 text at once: as it is, or as the console's own characters where there is one.
void print(Stream stream, std::string_view text);

// Writes a whole report: JSON, or text; the cause of a failure goes to the error stream in text.
void printReport(const Report& report, bool isJson);

} // namespace zemlink
