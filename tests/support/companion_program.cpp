#include "support/companion_program.h"

#include "support/windows.h"

#include <filesystem>

namespace testing_support {

namespace {

constexpr wchar_t instanceProperty[] = L"https://torva.example/namespace/torvapdm/instance";
constexpr size_t dateTimeAndBlank = 24;

HWND windowOf(const Process& process)
{
    return windowWithProperty(process.id(), instanceProperty);
}

std::wstring commandLine(const Installation& installation, const std::wstring& words)
{
    return quoted(installation.path(L"TORVA-ZEM.exe")) + (words.empty() ? L"" : L" ") + words;
}

} // namespace

void installCompanionWithLibrary(const Installation& installation)
{
    installation.installCompanion(programFolder() + L"TORVA-ZEM.exe");
    std::filesystem::copy(programFolder() + L"shipped\\companion\\parts",
                          installation.path(L"library"), std::filesystem::copy_options::recursive);
}

CompanionProgram::CompanionProgram(const Installation& installation, const std::wstring& words,
                                   bool isSuspended)
    : installation_(installation), process_(commandLine(installation, words), isSuspended)
{
}

Lines CompanionProgram::log() const
{
    Lines lines =
        linesOf(fromUtf8(readBytes(installation_.path(L"sys\\companion.log")).value_or("")));
    for (std::wstring& line : lines)
        line.erase(0, dateTimeAndBlank);
    return lines;
}

size_t CompanionProgram::count(const std::wstring& text) const
{
    return testing_support::count(log(), text);
}

bool CompanionProgram::waitForLog(const std::wstring& text, size_t times) const
{
    return waitUntil([&] { return count(text) >= times; });
}

std::wstring CompanionProgram::lastLine(const std::wstring& text) const
{
    std::wstring found;
    for (const std::wstring& line : log())
        if (line.find(text) != std::wstring::npos)
            found = line;
    return found;
}

HWND CompanionProgram::waitForWindow() const
{
    waitUntil([this] { return windowOf(process_) != nullptr || !process_.isRunning(); });
    return windowOf(process_);
}

DWORD CompanionProgram::tell(const std::wstring& words) const
{
    waitForWindow();
    return startCompanion(installation_, words);
}

DWORD startCompanion(const Installation& installation, const std::wstring& words)
{
    const Process start(commandLine(installation, words));
    return start.waitForExit().value_or(STILL_ACTIVE);
}

} // namespace testing_support
