#include "peer/text.h"

#include <cstring>
#include <windows.h>

namespace peer {
namespace {

// Empty when the flags reject the bytes.
std::wstring widen(UINT codePage, DWORD flags, std::string_view bytes)
{
    const int length = static_cast<int>(bytes.size());
    const int needed = MultiByteToWideChar(codePage, flags, bytes.data(), length, nullptr, 0);
    std::wstring text(static_cast<size_t>(needed), L'\0');
    MultiByteToWideChar(codePage, flags, bytes.data(), length, text.data(), needed);
    return text;
}

} // namespace

std::string toUtf8(std::wstring_view text)
{
    const int length = static_cast<int>(text.size());
    const int needed =
        WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<size_t>(needed), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), length, bytes.data(), needed, nullptr, nullptr);
    return bytes;
}

std::wstring fromUtf8(std::string_view bytes)
{
    return widen(CP_UTF8, 0, bytes);
}

std::optional<std::string> toAnsi(std::wstring_view text)
{
    const int length = static_cast<int>(text.size());
    BOOL isReplaced = FALSE;
    const int needed = WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, text.data(), length,
                                           nullptr, 0, nullptr, &isReplaced);
    if (isReplaced)
        return std::nullopt;
    std::string bytes(static_cast<size_t>(needed), '\0');
    WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, text.data(), length, bytes.data(), needed,
                        nullptr, nullptr);
    return bytes;
}

std::wstring fromAnsi(std::string_view bytes)
{
    return widen(CP_ACP, 0, bytes);
}

std::string ansiToUtf8(std::string_view bytes)
{
    return toUtf8(fromAnsi(bytes));
}

std::wstring fromFileBytes(std::string_view bytes)
{
    if (bytes.starts_with("\xFF\xFE")) {
        std::wstring text(bytes.size() / 2 - 1, L'\0');
        std::memcpy(text.data(), bytes.data() + 2, text.size() * sizeof(wchar_t));
        return text;
    }
    const std::string_view afterMark = bytes.substr(bytes.starts_with("\xEF\xBB\xBF") ? 3 : 0);
    const std::wstring text = widen(CP_UTF8, MB_ERR_INVALID_CHARS, afterMark);
    return text.empty() ? fromAnsi(afterMark) : text;
}

} // namespace peer
