// Writes commit records as the add-in does, with the same calls in the same order.
#pragma once

#include "peer/commit_record.h"

#include <cstdint>
#include <string>
#include <windows.h>

namespace testing_support {

inline std::string formatCommitRecord(std::uint32_t id, const std::wstring& file)
{
    return peer::formatCommitRecord({id, file});
}

// One append, step by step: opening finds the end of the file, which is made when it is missing.
class CommitAppend {
public:
    explicit CommitAppend(const std::wstring& requestFile);
    ~CommitAppend();
    CommitAppend(const CommitAppend&) = delete;
    CommitAppend& operator=(const CommitAppend&) = delete;

    // Locks so many bytes from the end on; false when another has locked one of them. The add-in
    // does not look at that.
    bool lock(size_t bytes);
    // Writes at the end that was found, then after what was written before.
    bool write(const std::string& bytes);
    void unlock();

private:
    HANDLE file_;
    DWORD offset_ = 0;
    DWORD locked_ = 0;
};

// The whole append of one record.
void appendCommit(const std::wstring& requestFile, const std::string& record);

} // namespace testing_support
