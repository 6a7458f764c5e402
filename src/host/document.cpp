#include "host/document.h"

#include "host/barriers.h"
#include "host/host.h"

#include <algorithm>
#include <iterator>

namespace torvapdm {

HWND getMainFrameWindow()
{
    static HWND cached = nullptr;
    if (!cached)
        cached = barrier<HWND>(nullptr, [] {
            CWnd* const frame = get_MainFrame();
            return frame ? frame->GetSafeHwnd() : nullptr;
        });
    return cached;
}

CMastercamInterface* findHostApplication()
{
    return askHost<CMastercamInterface*>(
        nullptr, [] { return GetMastercamApp(); });
}

bool isHostReady()
{
    if (!IsWindowEnabled(getMainFrameWindow()))
        return false;
    return !askHost(true, [] { return BackplotActive(); });
}

std::wstring hostFileName()
{
    const wchar_t* const begin = geo_filename;
    return {begin, std::find(begin, begin + std::size(geo_filename), L'\0')};
}

bool hasDocumentChanged()
{
    return askHost(
        true, [] { return has_db_changed(); });
}

} // namespace torvapdm
