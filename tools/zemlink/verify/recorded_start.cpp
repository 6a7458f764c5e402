#include "tools/zemlink/verify/recorded_start.h"

#include "peer/command_line.h"
#include "peer/exchange_paths.h"
#include "peer/files.h"
#include "peer/lines.h"
#include "peer/numbers.h"
#include "peer/text.h"
#include "peer/wire_constants.h"

#include <stdexcept>
#include <windows.h>

namespace zemlink {
namespace {

constexpr wchar_t startsFile[] = L"\\starts.txt";

std::wstring ownProgram()
{
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length =
            GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(path.size() * 2);
    }
}

int requestedShow()
{
    STARTUPINFOW start{};
    start.cb = sizeof start;
    GetStartupInfoW(&start);
    return (start.dwFlags & STARTF_USESHOWWINDOW) != 0 ? start.wShowWindow : SW_SHOWDEFAULT;
}

// `0 --checkout "C:\Temp\a.tmp"`
RecordedStart startIn(std::string_view line)
{
    const std::wstring text = peer::fromUtf8(line);
    const size_t space = text.find(L' ');
    RecordedStart start{peer::parseLeadingNumberOrZero(text)};
    if (space != std::wstring::npos)
        start.arguments = text.substr(space + 1);
    return start;
}

} // namespace

void putRecorder(const std::wstring& folder)
{
    const std::wstring program = folder + L'\\' + peer::companionProgram;
    if (!CopyFileW(ownProgram().c_str(), program.c_str(), FALSE))
        throw std::runtime_error(
            "zemlink cannot be copied to the place of the Companion's program");
}

bool isRecorder()
{
    return peer::isSameIgnoringCase(peer::fileNameOf(ownProgram()), peer::companionProgram);
}

int recordStart()
{
    const std::wstring program = ownProgram();
    const std::wstring line = std::to_wstring(requestedShow()) + L' ' +
                              std::wstring(peer::skipProgramName(GetCommandLineW())) + L'\n';
    const std::wstring list = program.substr(0, program.find_last_of(L'\\')) + startsFile;
    return peer::appendToFile(list, peer::toUtf8(line)) ? 0 : 1;
}

std::vector<RecordedStart> readStarts(const std::wstring& folder)
{
    std::vector<RecordedStart> starts;
    const std::string bytes = peer::readFile(folder + startsFile).value_or("");
    for (const std::string_view line : peer::fileLines(bytes))
        starts.push_back(startIn(line));
    return starts;
}

} // namespace zemlink
