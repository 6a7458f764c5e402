#include "tools/zemlink/facts/host_facts.h"

#include "peer/handle.h"
#include "peer/lines.h"
#include "peer/running_programs.h"
#include "peer/text.h"
#include "peer/wire_constants.h"

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

// The path of the add-in that the process has loaded; empty when it is unknown.
std::wstring addInOf(DWORD process)
{
    const peer::OwnHandle modules =
        peer::ownFile(CreateToolhelp32Snapshot(TH32CS_SNAPMODULE, process));
    MODULEENTRY32W module{};
    module.dwSize = sizeof module;
    for (BOOL isFound = modules && Module32FirstW(modules.get(), &module); isFound;
         isFound = Module32NextW(modules.get(), &module))
        if (peer::isSameIgnoringCase(module.szModule, addInName))
            return module.szExePath;
    return {};
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
        host.addIn = addInOf(found.process);
        host.addInVersion = programVersion(host.addIn);
        hosts.push_back(host);
    }
    return hosts;
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
