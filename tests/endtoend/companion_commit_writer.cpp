#include "endtoend/companion_commit_writer.h"

#include <cstdio>
#include <cstdlib>

namespace testing_support {

CommitAppend::CommitAppend(const std::wstring& requestFile)
    : file_(CreateFileW(requestFile.c_str(), GENERIC_READ | GENERIC_WRITE,
                        FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                        OPEN_ALWAYS, 0, nullptr))
{
    if (file_ == INVALID_HANDLE_VALUE) {
        std::fprintf(stderr, "cannot open %ls: error %lu\n", requestFile.c_str(), GetLastError());
        std::exit(99);
    }
    offset_ = SetFilePointer(file_, 0, nullptr, FILE_END);
}

CommitAppend::~CommitAppend()
{
    CloseHandle(file_);
}

bool CommitAppend::lock(size_t bytes)
{
    locked_ = static_cast<DWORD>(bytes);
    return LockFile(file_, offset_, 0, locked_, 0) != FALSE;
}

bool CommitAppend::write(const std::string& bytes)
{
    DWORD written = 0;
    return WriteFile(file_, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) &&
           written == bytes.size();
}

void CommitAppend::unlock()
{
    UnlockFile(file_, offset_, 0, locked_, 0);
}

void appendCommit(const std::wstring& requestFile, const std::string& record)
{
    CommitAppend append(requestFile);
    append.lock(record.size());
    append.write(record);
    append.unlock();
}

} // namespace testing_support
