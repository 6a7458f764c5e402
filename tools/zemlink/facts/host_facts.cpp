#include "tools/zemlink/facts/host_facts.h"

#include "peer/handle.h"
#include "peer/lines.h"
#include "peer/running_programs.h"
#include "peer/text.h"
#include "peer/wire_constants.h"
#include "tools/zemlink/facts/system.h"

#include <algorithm>
#include <tlhelp32.h>

namespace zemlink {
namespace {

constexpr UINT answerBoundMs = 2000;
constexpr wchar_t addInName[] = L"torvapdm.dll";

// The top-level windows of one process, null where it has none.
struct HostWindows {
    DWORD process = 0;
    HWND main = nullptr;
    HWND messages = nullptr;
    HWND dialog = nullptr; // the topmost other one that takes input
};

// The add-in's message window has the host property's name as its class.
bool isMessageWindow(HWND window)
{
    wchar_t name[256] = L"";
    GetClassNameW(window, name, 256);
    return std::wstring_view(name) == peer::hostProperty;
}

BOOL CALLBACK addWindow(HWND window, LPARAM parameter)
{
    auto& found = *reinterpret_cast<HostWindows*>(parameter);
    if (peer::processOf(window) != found.process)
        return TRUE;
    if (GetPropW(window, peer::hostProperty) != nullptr)
        found.main = window;
    else if (isMessageWindow(window))
        found.messages = window;
    else if (!found.dialog && IsWindowVisible(window) && IsWindowEnabled(window))
        found.dialog = window;
    return TRUE;
}

HostWindows windowsOf(DWORD process)
{
    HostWindows found{process};
    EnumWindows(addWindow, reinterpret_cast<LPARAM>(&found));
    return found;
}

bool answers(HWND window)
{
    DWORD_PTR answer = 0;
    return SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_ABORTIFHUNG, answerBoundMs, &answer) !=
           0;
}

// The path of the add-in that the process has loaded, empty when it has not. No value when the
// user may not look into the process.
std::optional<std::wstring> findAddIn(DWORD process)
{
    peer::OwnHandle modules;
    for (int tries = 0; tries < 10 && !modules; ++tries) {
        modules = peer::ownFile(CreateToolhelp32Snapshot(TH32CS_SNAPMODULE, process));
        if (!modules && GetLastError() != ERROR_BAD_LENGTH) // a library is just being loaded
            break;
    }
    if (!modules)
        return std::nullopt;
    MODULEENTRY32W module{};
    module.dwSize = sizeof module;
    for (BOOL isFound = Module32FirstW(modules.get(), &module); isFound;
         isFound = Module32NextW(modules.get(), &module))
        if (peer::isSameIgnoringCase(module.szModule, addInName))
            return module.szExePath;
    return std::wstring();
}

bool isInThisSession(DWORD process)
{
    DWORD own = 0, other = 0;
    return ProcessIdToSessionId(GetCurrentProcessId(), &own) &&
           ProcessIdToSessionId(process, &other) && own == other;
}

std::vector<DWORD> processesOfHosts()
{
    std::vector<DWORD> found;
    const peer::OwnHandle all = peer::ownFile(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof entry;
    for (BOOL isFound = all && Process32FirstW(all.get(), &entry); isFound;
         isFound = Process32NextW(all.get(), &entry))
        if (peer::isSameIgnoringCase(entry.szExeFile, peer::hostProgram) &&
            isInThisSession(entry.th32ProcessID))
            found.push_back(entry.th32ProcessID);
    std::ranges::sort(found);
    return found;
}

} // namespace

std::vector<Host> findHostFacts()
{
    std::vector<Host> hosts;
    for (const peer::Host& found : peer::findHosts()) {
        const HostWindows windows = windowsOf(found.process);
        if (!windows.main)
            continue; // closed meanwhile
        Host host{found.process, found.title};
        host.isAnswering = answers(windows.main);
        host.isBlocked = !IsWindowEnabled(windows.main);
        if (host.isBlocked && windows.dialog)
            host.dialog = peer::windowTitle(windows.dialog);
        host.hasMessageWindow = windows.messages != nullptr;
        host.program = programOf(found.process);
        host.version = programVersion(host.program);
        host.addIn = findAddIn(found.process).value_or(std::wstring());
        host.addInVersion = programVersion(host.addIn);
        hosts.push_back(host);
    }
    return hosts;
}

std::vector<HostWithoutAddIn> findHostsWithoutAddIn(const std::vector<Host>& hosts)
{
    std::vector<HostWithoutAddIn> others;
    for (const DWORD process : processesOfHosts()) {
        const auto addIn = findAddIn(process);
        if (std::ranges::find(hosts, process, &Host::process) == hosts.end() && isRunning(process))
            others.push_back(
                {process, programOf(process), addIn.has_value(), addIn.value_or(std::wstring())});
    }
    return others;
}

std::string programVersion(const std::wstring& path)
{
    DWORD unused = 0;
    std::vector<BYTE> resource(GetFileVersionInfoSizeW(path.c_str(), &unused));
    void* found = nullptr;
    UINT size = 0;
    if (resource.empty() ||
        !GetFileVersionInfoW(path.c_str(), 0, static_cast<DWORD>(resource.size()),
                             resource.data()) ||
        !VerQueryValueW(resource.data(), L"\\", &found, &size) || size < sizeof(VS_FIXEDFILEINFO))
        return {};
    const auto& version = *static_cast<const VS_FIXEDFILEINFO*>(found);
    return std::to_string(HIWORD(version.dwFileVersionMS)) + '.' +
           std::to_string(LOWORD(version.dwFileVersionMS)) + '.' +
           std::to_string(HIWORD(version.dwFileVersionLS));
}

} // namespace zemlink
