#include "core/text.h"

#include <cmath>
#include <windows.h>

namespace standin {

std::optional<std::wstring> fromUtf8(std::string_view bytes)
{
    if (bytes.empty())
        return std::wstring();
    const int size = static_cast<int>(bytes.size());
    const int length =
        MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, bytes.data(), size, nullptr, 0);
    if (length == 0)
        return std::nullopt;
    std::wstring text(static_cast<size_t>(length), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, bytes.data(), size, text.data(), length);
    return text;
}

std::string toUtf8(std::wstring_view text)
{
    if (text.empty())
        return {};
    const int length = static_cast<int>(text.size());
    const int size =
        WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), length, bytes.data(), size, nullptr, nullptr);
    return bytes;
}

std::string decimalText(double value)
{
    constexpr int fewestDigits = 6;
    constexpr int mostDigits = 17;
    char buffer[64];
    std::string text;
    for (int digits = fewestDigits; digits <= mostDigits; ++digits) {
        const auto end =
            std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, digits)
                .ptr;
        text.assign(buffer, end);
        double back = 0;
        // Rounding up a number close to DBL_MAX can give text that is out of range.
        if (readDecimal(text, back) && back == value)
            break;
    }
    return text;
}

std::wstring countText(size_t count, std::wstring_view noun)
{
    return std::to_wstring(count).append(L" ").append(noun).append(count == 1 ? L"" : L"s");
}

bool readDecimal(std::string_view text, double& value)
{
    double read = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), read);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(read))
        return false;
    value = read;
    return true;
}

} // namespace standin
