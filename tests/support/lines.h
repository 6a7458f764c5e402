// Lines of a log or a trace.
#pragma once

#include <string>
#include <vector>

namespace testing_support {

using Lines = std::vector<std::wstring>;

// How many lines contain the text.
size_t count(const Lines& lines, const std::wstring& text);

// The lines that start with the text, in their order.
Lines linesThatStart(const Lines& lines, const std::wstring& text);

} // namespace testing_support
