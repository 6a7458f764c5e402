#include "host/message_box.h"

#include "host/document.h"

namespace torvapdm {

std::wstring translateText(int, const std::wstring& text)
{
    return text;
}

void showMessage(const std::wstring& caption, const std::wstring& text)
{
    const std::wstring shown = caption.empty() ? productName : caption;
    MessageBoxW(getMainFrameWindow(), translateText(0, text).c_str(), shown.c_str(), MB_OK);
}

void showMessage(const std::wstring& text)
{
    showMessage({}, text);
}

} // namespace torvapdm
