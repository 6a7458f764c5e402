#include "endtoend/host_program.h"

#include <algorithm>

namespace testing_support {

namespace {

constexpr unsigned firstEventCommand = 43000; // of the Events menu, plus the event's code
constexpr wchar_t hostProperty[] = L"https://torva.example/namespace/torvapdm/mastercam-instance";

struct Search {
    DWORD processId;
    HWND found;
};

BOOL CALLBACK stopAtHostWindow(HWND window, LPARAM parameter)
{
    auto* const search = reinterpret_cast<Search*>(parameter);
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    if (owner != search->processId || !GetPropW(window, hostProperty))
        return TRUE;
    search->found = window;
    return FALSE;
}

bool contains(const std::wstring& line, const std::wstring& text)
{
    return line.find(text) != std::wstring::npos;
}

} // namespace

std::wstring HostProgram::commandLine(const Installation& installation, const std::string& script,
                                      const std::wstring& name)
{
    const std::wstring scriptPath = installation.path(name + L".script");
    writeBytes(scriptPath, script);
    return quoted(programFolder() + L"Mastercam.exe") + L" --addin " +
           quoted(programFolder() + L"torvapdm.dll") + L" --script " + quoted(scriptPath) +
           L" --trace " + quoted(installation.path(name + L".trace"));
}

HostProgram::HostProgram(const Installation& installation, const std::string& script,
                         const std::wstring& name)
    : installation_(installation),
      tracePath_(installation.path(name + L".trace")),
      process_(commandLine(installation, script, name))
{
}

Lines HostProgram::trace() const
{
    return linesOf(fromUtf8(readBytes(tracePath_).value_or("")));
}

bool HostProgram::waitForTrace(const std::wstring& text) const
{
    return waitUntil([&] { return count(trace(), text) > 0; });
}

bool HostProgram::waitForCommandFile() const
{
    return waitUntil([&] { return readBytes(commandFile()).has_value(); });
}

HWND HostProgram::window() const
{
    Search search = {process_.id(), nullptr};
    EnumWindows(stopAtHostWindow, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

void HostProgram::command(unsigned number) const
{
    waitUntil([this] { return window() != nullptr; });
    PostMessageW(window(), WM_COMMAND, number, 0);
}

bool HostProgram::sendEvent(int code) const
{
    const std::wstring line = L"ui m_notify(" + std::to_wstring(code) + L") ";
    const size_t before = count(trace(), line);
    command(firstEventCommand + static_cast<unsigned>(code));
    return waitUntil([&] { return count(trace(), line) > before; });
}

size_t count(const Lines& lines, const std::wstring& text)
{
    return static_cast<size_t>(
        std::count_if(lines.begin(), lines.end(),
                      [&](const std::wstring& line) { return contains(line, text); }));
}

Lines fromOtherThreads(const Lines& lines)
{
    Lines found;
    std::copy_if(lines.begin(), lines.end(), std::back_inserter(found),
                 [](const std::wstring& line) { return line.rfind(L"other ", 0) == 0; });
    return found;
}

} // namespace testing_support
