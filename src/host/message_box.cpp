#include "host/message_box.h"

#include "host/host.h"
#include "host/barriers.h"

namespace torvapdm {

HWND getMainFrameWindow()
{
    static HWND cached = nullptr;
    if (cached)
        return cached;
    return cached = atEdge<HWND>(nullptr, [] {
               CWnd* const frame = get_MainFrame();
               return frame ? frame->GetSafeHwnd() : nullptr;
           });
}

void showMessage(const std::wstring& caption, const std::wstring& text)
{
    const std::wstring shown = caption.empty() ? productName : caption;
    MessageBoxW(getMainFrameWindow(), text.c_str(), shown.c_str(), MB_OK);
}

void showMessage(const std::wstring& text)
{
    showMessage({}, text);
}

} // namespace torvapdm
