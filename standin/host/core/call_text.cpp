#include "core/call_text.h"

#include "core/session.h"

namespace standin {

namespace {

std::wstring quoted(std::wstring_view text)
{
    return L'"' + std::wstring(text) + L'"';
}

} // namespace

std::wstring callText(const wchar_t* text)
{
    return text ? quoted(text) : L"null";
}

std::wstring callText(const CString& text)
{
    return quoted(text.GetString());
}

std::wstring callText(double number)
{
    const std::string text = decimalText(number);
    return {text.begin(), text.end()};
}

std::wstring callText(const void* address)
{
    return address ? L"*" : L"null";
}

std::wstring callText(const CWnd* window)
{
    if (!window)
        return L"null";
    return window->m_hWnd && window->m_hWnd == mainWindow() ? L"main" : L"other";
}

} // namespace standin
