#include "peer/ascii_case.h"

#include <algorithm>

namespace companion {
namespace {

wchar_t lowerCase(wchar_t c)
{
    return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c - L'A' + L'a') : c;
}

} // namespace

bool isSameIgnoringCase(std::wstring_view a, std::wstring_view b)
{
    return std::equal(
        a.begin(), a.end(), b.begin(), b.end(),
        [](wchar_t x, wchar_t y) { return lowerCase(x) == lowerCase(y); });
}

} // namespace companion
