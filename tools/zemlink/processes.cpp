#include "tools/zemlink/processes.h"

#include "peer/handle.h"

namespace zemlink {

bool isRunning(std::uint32_t process)
{
    const companion::OwnHandle handle(
        OpenProcess(SYNCHRONIZE | PROCESS_QUERY_LIMITED_INFORMATION, FALSE, process));
    if (!handle)
        return GetLastError() == ERROR_ACCESS_DENIED;
    // The system takes an id that is no multiple of four for the next smaller one.
    return GetProcessId(handle.get()) == process &&
           WaitForSingleObject(handle.get(), 0) == WAIT_TIMEOUT;
}

std::wstring programOf(std::uint32_t process)
{
    const companion::OwnHandle handle(
        OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, process));
    std::wstring path(MAX_PATH, L'\0');
    DWORD length = MAX_PATH;
    const bool isKnown =
        handle && QueryFullProcessImageNameW(handle.get(), 0, path.data(), &length);
    path.resize(isKnown ? length : 0);
    return path;
}

} // namespace zemlink
