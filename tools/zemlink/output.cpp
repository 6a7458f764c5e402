#include "tools/zemlink/output.h"

#include "peer/lines.h"
#include "peer/text.h"
#include "tools/zemlink/reports/report.h"
#include "tools/zemlink/facts/system.h"

#include <stdexcept>
#include <windows.h>

namespace zemlink {
namespace {

constexpr int indent = 2;

bool printToConsole(HANDLE stream, std::string_view text)
{
    DWORD mode = 0;
    if (!GetConsoleMode(stream, &mode))
        return false;
    const std::wstring wide = peer::fromUtf8(text);
    DWORD written = 0;
    return WriteConsoleW(stream, wide.data(), static_cast<DWORD>(wide.size()), &written, nullptr);
}

// Only on a terminal that understands colours, and not if the user does not want any.
bool isOutputColoured()
{
    HANDLE stream = GetStdHandle(STD_OUTPUT_HANDLE);
    DWORD mode = 0;
    return GetEnvironmentVariableW(L"NO_COLOR", nullptr, 0) <= 1 && GetConsoleMode(stream, &mode) &&
           SetConsoleMode(stream, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
}

// Reports contain only UTF-8; if one does not, it is shown with replacement characters instead of
// ending the program.
std::string json(const Report& report, int depth)
{
    return report.dump(depth, ' ', false, Report::error_handler_t::replace) + '\n';
}

} // namespace

void print(Stream stream, std::string_view text)
{
    HANDLE handle = GetStdHandle(stream == Stream::output ? STD_OUTPUT_HANDLE : STD_ERROR_HANDLE);
    DWORD written = 0;
    const bool isPrinted =
        printToConsole(handle, text) ||
        (WriteFile(handle, text.data(), static_cast<DWORD>(text.size()), &written, nullptr) &&
         written == text.size());
    if (!isPrinted && stream == Stream::output) {
        throw std::runtime_error("the output cannot be written: " +
                                 systemErrorText(GetLastError()));
    }
}

void printUsageError(std::string_view lines)
{
    for (const std::string_view line : peer::fileLines(lines))
        print(Stream::error, visible(std::string(line)) + '\n');
}

void printReport(const Report& report, bool isJson)
{
    if (isJson)
        print(Stream::output, json(report, indent));
    else if (report.contains("error"))
        print(Stream::error,
              "zemlink: " + visible(report["error"]["what"].get<std::string>()) + '\n');
    else
        print(Stream::output, isOutputColoured() ? coloured(asText(report)) : asText(report));
}

} // namespace zemlink
