// The texts of traces and events that the steps of a soak leave behind.
#pragma once

#include "support/bytes.h"

#include <cstdint>
#include <initializer_list>
#include <string>

namespace testing_support {

std::wstring inQuotes(const std::wstring& text);
// ` id=17`, ` file="C:\a b.mcam"`.
std::wstring field(const wchar_t* name, std::int64_t value);
std::wstring field(const wchar_t* name, const std::wstring& value);
void addLines(Lines& lines, std::initializer_list<std::wstring> more);

} // namespace testing_support
