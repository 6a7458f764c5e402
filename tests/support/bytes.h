// Whole files as bytes, text conversions, and the lines of a log or a trace.
#pragma once

#include "peer/files.h"
#include "peer/text.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace testing_support {

using peer::fromUtf8;
using peer::toUtf8;

// Returns the file's bytes, or nothing if it cannot be opened. Opens it with all sharing rights.
inline std::optional<std::string> readBytes(const std::wstring& path)
{
    return peer::readFile(path);
}

// Replaces the file; exits with a message on failure.
inline void writeBytes(const std::wstring& path, std::string_view bytes)
{
    if (peer::writeFile(path, bytes))
        return;
    std::fprintf(stderr, "cannot write %ls\n", path.c_str());
    std::exit(99);
}

using Lines = std::vector<std::wstring>;

// Splits text into lines without line ends; an unterminated last line counts.
inline Lines linesOf(const std::wstring& text)
{
    Lines lines;
    for (size_t begin = 0; begin < text.size(); begin += lines.back().size() + 1)
        lines.push_back(text.substr(begin, text.find(L'\n', begin) - begin));
    return lines;
}

// The number of lines that contain the text.
inline size_t count(const Lines& lines, const std::wstring& text)
{
    return static_cast<size_t>(std::ranges::count_if(
        lines, [&](const std::wstring& line) { return line.find(text) != line.npos; }));
}

// The lines that start with the text, in order.
inline Lines linesThatStart(Lines lines, const std::wstring& text)
{
    std::erase_if(lines, [&](const std::wstring& line) { return !line.starts_with(text); });
    return lines;
}

} // namespace testing_support
