// Follows a text file that another process appends to.
#pragma once

#include "support/bytes.h"
#include "support/waiting.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace testing_support {

// Reads the complete lines that were appended to a UTF-8 file since the last call.
class FileTail {
public:
    explicit FileTail(std::wstring path) : path_(std::move(path)) {}

    Lines newLines()
    {
        std::ifstream file(std::filesystem::path(path_), std::ios::binary);
        file.seekg(offset_);
        std::string bytes{std::istreambuf_iterator<char>(file), {}};
        bytes.resize(bytes.rfind('\n') + 1); // empty if there is no line feed
        offset_ += std::ssize(bytes);
        return linesOf(fromUtf8(bytes));
    }

private:
    std::wstring path_;
    std::int64_t offset_ = 0;
};

// Waits until so many lines of the file contain the text; false once no further one has come for
// the timeout.
inline bool waitForLines(const std::wstring& path, const std::wstring& text, size_t times)
{
    FileTail file(path);
    size_t found = 0;
    return waitForCount(times, [&] { return found += count(file.newLines(), text); });
}

} // namespace testing_support
