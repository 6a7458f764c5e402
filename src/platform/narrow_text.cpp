#include "platform/narrow_text.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace torvapdm {

std::string toNarrow(const std::wstring& text, UINT codePage, DWORD flags)
{
    // These have every character, and Windows refuses them with flags.
    constexpr UINT gb18030 = 54936;
    if (codePage == CP_UTF8 || codePage == gb18030)
        flags = 0;
    const int length = static_cast<int>(text.size());
    const int size =
        WideCharToMultiByte(codePage, flags, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string narrow(static_cast<size_t>(std::max(size, 0)), '\0');
    WideCharToMultiByte(codePage, flags, text.data(), length, narrow.data(), size, nullptr,
                        nullptr);
    return narrow;
}

std::string toNarrowAnsi(const std::wstring& text)
{
    return toNarrow(text, GetACP());
}

std::string toNarrowByRuntime(const std::wstring& text)
{
    const size_t failed = static_cast<size_t>(-1);
    const size_t length = std::wcstombs(nullptr, text.c_str(), 0);
    if (length == failed)
        return {};
    std::vector<char> narrow(length + 1);
    if (std::wcstombs(narrow.data(), text.c_str(), narrow.size()) == failed)
        return {};
    return narrow.data();
}

std::string truncateToBytes(const std::wstring& text)
{
    std::string bytes(text.size(), '\0');
    std::transform(text.begin(), text.end(), bytes.begin(),
                   [](wchar_t unit) { return static_cast<char>(unit); });
    return bytes;
}

} // namespace torvapdm
