#include "support/windows.h"

namespace testing_support {

namespace {

struct Search {
    DWORD processId;
    const wchar_t* property;
    HWND found;
};

BOOL CALLBACK stopAtProperty(HWND window, LPARAM parameter)
{
    auto* const search = reinterpret_cast<Search*>(parameter);
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    if (owner != search->processId || !GetPropW(window, search->property))
        return TRUE;
    search->found = window;
    return FALSE;
}

} // namespace

HWND windowWithProperty(DWORD processId, const wchar_t* property)
{
    Search search = {processId, property, nullptr};
    EnumWindows(stopAtProperty, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

} // namespace testing_support
