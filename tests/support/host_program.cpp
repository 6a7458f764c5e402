#include "support/host_program.h"

#include "support/windows.h"

namespace testing_support {

namespace {

constexpr unsigned firstEventCommand = 43000; // of the Events menu, plus the event's code
constexpr wchar_t hostProperty[] = L"https://torva.example/namespace/torvapdm/mastercam-instance";

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
    return windowWithProperty(process_.id(), hostProperty);
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

Lines fromOtherThreads(const Lines& lines)
{
    return linesThatStart(lines, L"other ");
}

} // namespace testing_support
