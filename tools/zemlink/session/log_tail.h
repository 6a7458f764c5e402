// What is appended to a log.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace zemlink {

class LogTail {
public:
    explicit LogTail(std::wstring path) : path_(std::move(path)) {}

    const std::wstring& path() const { return path_; }
    // The whole lines since the last call, each with its line end; a large rest is left for the
    // next call. Lines of more than 64 KB are left out. A log that was removed or has become
    // shorter is read again from its start.
    std::vector<std::string> newLines();
    // Leaves out what the log has now. An incomplete line at the end is read once it is complete.
    void skip();
    // When the last of the lines was written: milliseconds since 1970, UTC.
    std::int64_t writtenAt() const { return writtenAt_; }

private:
    std::wstring path_;
    std::uint64_t offset_ = 0;
    bool isInLongLine_ = false; // the line at the offset is left out
    std::int64_t writtenAt_ = 0;
};

} // namespace zemlink
