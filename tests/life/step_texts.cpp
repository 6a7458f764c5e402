#include "life/step_texts.h"

namespace testing_support {

std::wstring inQuotes(const std::wstring& text)
{
    return L'"' + text + L'"';
}

std::wstring field(const wchar_t* name, std::int64_t value)
{
    return std::wstring(L" ") + name + L'=' + std::to_wstring(value);
}

std::wstring field(const wchar_t* name, const std::wstring& value)
{
    return std::wstring(L" ") + name + L'=' + inQuotes(value);
}

void addLines(Lines& lines, std::initializer_list<std::wstring> more)
{
    lines.insert(lines.end(), more);
}

} // namespace testing_support
