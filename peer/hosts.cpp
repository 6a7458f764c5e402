#include "hosts.h"

#include "wire_constants.h"

#include <algorithm>
#include <windows.h>

namespace companion {
namespace {

std::wstring windowTitle(HWND window)
{
    wchar_t title[256];
    const int length = GetWindowTextW(window, title, 256);
    return std::wstring(title, static_cast<size_t>(std::max(length, 0)));
}

bool hasProcess(const std::vector<Host>& hosts, std::uint32_t process)
{
    return std::any_of(
        hosts.begin(), hosts.end(), [&](const Host& host) { return host.process == process; });
}

BOOL CALLBACK addHost(HWND window, LPARAM parameter)
{
    auto& hosts = *reinterpret_cast<std::vector<Host>*>(parameter);
    if (GetPropW(window, hostProperty) == nullptr)
        return TRUE;
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process != 0 && !hasProcess(hosts, process))
        hosts.push_back({process, windowTitle(window)});
    return TRUE;
}

} // namespace

std::vector<Host> findHosts()
{
    std::vector<Host> hosts;
    EnumWindows(addHost, reinterpret_cast<LPARAM>(&hosts));
    std::sort(hosts.begin(), hosts.end(),
              [](const Host& a, const Host& b) { return a.process < b.process; });
    return hosts;
}

} // namespace companion
