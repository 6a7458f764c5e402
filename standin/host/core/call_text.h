// How the trace writes arguments and results: strings in double quotes, not escaped; true, false
// and null as these words; a window as main, null or other; anything passed by address as *.
#pragma once

#include "core/text.h"
#include "framework/framework.h"
#include "host/import.h"

#include <concepts>
#include <string>
#include <string_view>

namespace standin {

MCCORE_API std::wstring callText(const wchar_t* text);
MCCORE_API std::wstring callText(const CString& text);
MCCORE_API std::wstring callText(double number);
MCCORE_API std::wstring callText(const void* address);
MCCORE_API std::wstring callText(const CWnd* window);

// A template, since a pointer would otherwise convert to bool.
template <std::same_as<bool> Flag>
std::wstring callText(Flag flag)
{
    return flag ? L"true" : L"false";
}

template <std::integral Integer>
requires(!std::same_as<Integer, bool>) std::wstring callText(Integer number)
{
    return std::to_wstring(number);
}

// The call as the trace writes it, without its result: `name(argument, argument)`.
template <class... Arguments>
std::wstring callLine(std::string_view name, const Arguments&... arguments)
{
    std::wstring list;
    ((list.append(list.empty() ? L"" : L", ").append(callText(arguments))), ...);
    return std::wstring(name.begin(), name.end()) + L'(' + list + L')';
}

} // namespace standin
