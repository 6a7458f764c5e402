// Standard output and standard error.
#pragma once

#include "tools/zemlink/reports/report.h"

#include <optional>
#include <string>
#include <string_view>

namespace zemlink {

enum class Stream { output, error };

// Writes UTF-8 text unbuffered: as UTF-16 to a console, else unchanged. Throws std::runtime_error
// when standard output fails; a failure of standard error is ignored.
void print(Stream stream, std::string_view text);

// An error message about the command line, which it may quote.
void printUsageError(std::string_view lines);

// Prints a report as JSON or as text. An error is one line of JSON, so that it fits between the
// lines of `listen` and `watch`; as text, its cause and what to do go to standard error.
void printReport(const Report& report, bool isJson);

// The error if the file that a command is to write, or `<path>.new`, which it writes first, exists
// already.
std::optional<Outcome> findExisting(const std::wstring& path);

} // namespace zemlink
