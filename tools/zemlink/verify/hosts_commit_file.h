// A commit file, appended to as hosts do.
#pragma once

#include "peer/handle.h"
#include "tools/zemlink/verify/waiting.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace zemlink {

// A record whose bytes are locked until it is released.
class LockedRecord {
public:
    LockedRecord(peer::OwnHandle file, std::uint64_t offset, size_t size)
        : file_(std::move(file)), offset_(offset), size_(size)
    {
    }
    LockedRecord(LockedRecord&&) = default;
    LockedRecord& operator=(LockedRecord&&) = delete;
    ~LockedRecord() { release(); }

    explicit operator bool() const { return file_ != nullptr; }
    void release();

private:
    peer::OwnHandle file_;
    std::uint64_t offset_;
    size_t size_;
};

// For as long as the process of the Companion lives. Keeps what disturbed a host. One handle stays
// open, as that of a host which has opened the file and not yet written.
class HostsCommitFile {
public:
    // Creates the file, empty. `path`: of the commit file of the Companion's process.
    HostsCommitFile(std::wstring path, const Waiting& waiting);

    // Opens the file, locks from its end, writes the bytes with one write and unlocks. Tries again
    // when it cannot be opened or locked; false when that is not possible in time.
    bool append(std::string_view bytes);
    // The same with the handle that was opened first.
    bool appendWithFirstHandle(std::string_view bytes);
    // Keeps the lock; its handle is empty when nothing was written.
    LockedRecord appendLocked(std::string_view bytes);

    // Checks that the file is still there and as large as it was, and that hosts can open it and
    // lock at its end.
    void look();

    // The first thing that went wrong; empty: none did.
    const std::string& change() const { return change_; }       // of the file
    const std::string& openError() const { return openError_; } // a host could not open it
    const std::string& lockError() const { return lockError_; } // or not lock at its end
    bool hasFile() const { return first_ != nullptr; }
    const std::wstring& path() const { return path_; }

private:
    peer::OwnHandle open();
    bool lock(HANDLE file, std::uint64_t offset, size_t size);
    bool write(HANDLE file, std::string_view bytes, std::uint64_t& offset);
    void checkStays();

    std::wstring path_;
    const Waiting& waiting_;
    std::uint64_t end_ = 0; // of what was appended
    std::string change_{}, openError_{}, lockError_{};
    peer::OwnHandle first_;
};

} // namespace zemlink
