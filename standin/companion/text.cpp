#include "text.h"

#include <windows.h>

namespace companion {

std::string toUtf8(std::wstring_view text)
{
    const int length = static_cast<int>(text.size());
    const int needed =
        WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<std::size_t>(needed), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), length, bytes.data(), needed, nullptr, nullptr);
    return bytes;
}

std::wstring fromUtf8(std::string_view bytes)
{
    const int length = static_cast<int>(bytes.size());
    const int needed = MultiByteToWideChar(CP_UTF8, 0, bytes.data(), length, nullptr, 0);
    std::wstring text(static_cast<std::size_t>(needed), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, bytes.data(), length, text.data(), needed);
    return text;
}

std::optional<std::string> toAnsi(std::wstring_view text)
{
    const int length = static_cast<int>(text.size());
    BOOL isReplaced = FALSE;
    const int needed = WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, text.data(), length,
                                           nullptr, 0, nullptr, &isReplaced);
    if (isReplaced) {
        return std::nullopt;
    }
    std::string bytes(static_cast<std::size_t>(needed), '\0');
    WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, text.data(), length, bytes.data(), needed,
                        nullptr, nullptr);
    return bytes;
}

} // namespace companion
