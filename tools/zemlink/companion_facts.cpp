#include "tools/zemlink/companion_facts.h"

#include "peer/handle.h"
#include "peer/wire_constants.h"
#include "peer/running_programs.h"

#include <algorithm>

namespace zemlink {
namespace {

// The Companion may belong to another security context; then the semaphore is there all the same.
bool isCompanionRunning()
{
    const companion::OwnHandle semaphore(
        OpenSemaphoreW(SEMAPHORE_MODIFY_STATE, FALSE, companion::singletonName));
    return semaphore != nullptr || GetLastError() == ERROR_ACCESS_DENIED;
}

} // namespace

Companion lookAtCompanion()
{
    Companion seen;
    seen.isRunning = isCompanionRunning();
    if (HWND window = companion::findInstanceWindow()) {
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        wchar_t title[256];
        const int length = GetWindowTextW(window, title, 256);
        seen.process = process;
        seen.title = std::wstring(title, static_cast<size_t>(std::max(length, 0)));
    }
    return seen;
}

} // namespace zemlink
