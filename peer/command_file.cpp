#include "peer/command_file.h"

#include <algorithm>

namespace companion {
namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

bool isPlainCharacter(wchar_t c)
{
    return c >= L' ' && c <= L'~';
}

std::string narrow(std::wstring_view text)
{
    std::string bytes;
    for (const wchar_t c : text)
        bytes += isPlainCharacter(c) ? static_cast<char>(c) : '?';
    return bytes;
}

std::string requestLine(std::int32_t id, std::string_view path)
{
    std::string request(byteOrderMark);
    request += std::to_string(id);
    request += ' ';
    request += path;
    request += '\n';
    return request;
}

} // namespace

bool isPlainAscii(std::wstring_view text)
{
    return std::all_of(text.begin(), text.end(), isPlainCharacter);
}

std::optional<std::string> openRequest(std::int32_t id, std::wstring_view path)
{
    if (path.empty() || !isPlainAscii(path))
        return std::nullopt;
    const std::string request = requestLine(id, narrow(path));
    return request.size() <= longestRequestBytes ? std::optional(request) : std::nullopt;
}

std::string newFileRequest(std::int32_t id)
{
    return requestLine(id, {});
}

std::string checkInRequest(std::wstring_view name)
{
    return "CHECKIN " + narrow(name);
}

std::optional<std::wstring> machineSettingsLine(std::int32_t id, std::int32_t ncPath,
                                                std::int32_t secondNumber,
                                                std::wstring_view machine)
{
    if (machine.empty() || machine.find_first_of(L"|\r\n") != std::wstring_view::npos)
        return std::nullopt;
    return std::to_wstring(id) + L'|' + std::to_wstring(ncPath) + L'|' +
           std::to_wstring(secondNumber) + L'|' + std::wstring(machine) + L"\r\n";
}

} // namespace companion
