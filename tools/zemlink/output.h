// What the program prints.
#pragma once

#include "tools/zemlink/report.h"

#include <string_view>

namespace zemlink {

enum class Stream { output, error };

// Writes UTF-8 text at once: as it is, or as the console's own characters where there is one.
// Throws std::runtime_error when the output does not take it; what the error stream does not take
// is lost.
void print(Stream stream, std::string_view text);

// The lines of what was wrong about the command line, which they may quote.
void printComplaint(std::string_view lines);

// Writes a whole report: JSON, or text; the cause of a failure goes to the error stream in text.
void printReport(const Report& report, bool isJson);

} // namespace zemlink
