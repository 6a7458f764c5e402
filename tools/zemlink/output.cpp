#include "tools/zemlink/output.h"

#include "peer/lines.h"
#include "peer/text.h"
#include "tools/zemlink/facts/system.h"
#include "tools/zemlink/reports/report.h"

#include <stdexcept>
#include <windows.h>

namespace zemlink {
namespace {

bool printToConsole(HANDLE stream, std::string_view text)
{
    DWORD mode = 0;
    if (!GetConsoleMode(stream, &mode))
        return false;
    const std::wstring wide = peer::fromUtf8(text);
    DWORD written = 0;
    return WriteConsoleW(stream, wide.data(), static_cast<DWORD>(wide.size()), &written, nullptr);
}

// Only on a terminal that understands colours, and not if the user does not want any. The
// terminal's mode is restored by the destructor.
class Colours {
public:
    Colours()
    {
        if (GetEnvironmentVariableW(L"NO_COLOR", nullptr, 0) <= 1 &&
            GetConsoleMode(stream_, &mode_))
            areShown_ = SetConsoleMode(stream_, mode_ | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
    }
    ~Colours()
    {
        if (areShown_)
            SetConsoleMode(stream_, mode_);
    }
    Colours(const Colours&) = delete;
    Colours& operator=(const Colours&) = delete;

    bool areShown() const { return areShown_; }

private:
    HANDLE stream_ = GetStdHandle(STD_OUTPUT_HANDLE);
    DWORD mode_ = 0;
    bool areShown_ = false;
};

std::string errorText(const Report& error)
{
    std::string text = "zemlink: " + visible(error["what"].get<std::string>()) + '\n';
    if (error.contains("do"))
        text += visible(error["do"].get<std::string>()) + '\n';
    return text;
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
    const bool isError = report.contains("error");
    if (isJson) {
        print(Stream::output,
              jsonText(report, isError ? JsonLayout::oneLine : JsonLayout::indented));
    } else if (isError) {
        print(Stream::error, errorText(report["error"]));
    } else {
        const Colours colours;
        print(Stream::output, colours.areShown() ? coloured(asText(report)) : asText(report));
    }
}

std::optional<Outcome> findExisting(const std::wstring& path)
{
    for (const std::wstring& each : {path, path + L".new"})
        if (GetFileAttributesW(each.c_str()) != INVALID_FILE_ATTRIBUTES)
            return failure("file-exists", peer::toUtf8(each) + ": this file exists already",
                           "Give another name; nothing is overwritten.");
    return std::nullopt;
}

} // namespace zemlink
