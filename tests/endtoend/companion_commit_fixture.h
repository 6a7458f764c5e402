// Fixture for tests of the stand-in Companion's commit handling, with its own installation folder.
#pragma once

#include "peer/commit_record.h"
#include "support/companion_program.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>

namespace testing_support {

constexpr std::uint32_t noId = 0xFFFFFFFF;

inline std::string formatCommitRecord(std::uint32_t id, const std::wstring& file)
{
    return peer::formatCommitRecord({id, file});
}

// One append with the same calls in the same order as the add-in. The constructor opens the file,
// creates it if it is missing, and seeks to the end.
class CommitAppend {
public:
    explicit CommitAppend(const std::wstring& requestFile);
    ~CommitAppend() { CloseHandle(file_); }
    CommitAppend(const CommitAppend&) = delete;
    CommitAppend& operator=(const CommitAppend&) = delete;

    // Locks this many bytes from the end; false if another process has locked any of them. The
    // add-in ignores the result.
    bool lock(size_t bytes);
    // Writes at the end found by the constructor, then after the previous write.
    bool write(const std::string& bytes);
    void unlock() { UnlockFile(file_, offset_, 0, locked_, 0); }

private:
    const HANDLE file_;
    const DWORD offset_;
    DWORD locked_ = 0;
};

// Appends one complete record.
void appendCommit(const std::wstring& requestFile, const std::string& record);

class CommitFixture : public ::testing::Test {
protected:
    CommitFixture() { installCompanionWithLibrary(installation); }

    // The commit file of this Companion, or of one that had this process id.
    std::wstring requestFile(DWORD processId) const;
    // Appends a record to the Companion's commit file, once it can be found.
    void commit(const CompanionProgram& companion, std::uint32_t id,
                const std::wstring& file) const;

    // Writes a part file to the folder `parts` and returns its path.
    std::wstring makePart(const std::wstring& name, const std::string& bytes) const;
    // Sends a part of the library to this process, which acts as the host. On return, the working
    // copy exists and no request is waiting. Returns the copy's path.
    std::wstring sendPart(const CompanionProgram& companion, const std::wstring& name,
                          const std::wstring& options = L"") const;
    void makePicture(const std::string& bytes) const;
    std::optional<std::string> picture() const;

    // The content of a file in the library: `bracket\v2.mcam`.
    std::optional<std::string> libraryBytes(const std::wstring& file) const;
    std::wstring indexText() const;
    // The files in the folder `temp`, except command files and settings.
    Lines requestFiles() const;

    // Waits until the log reports the version; false on timeout.
    static bool waitForVersion(const CompanionProgram& companion, const std::wstring& name,
                               int version);
    // The log lines after those of the start.
    static Lines logBehindStart(const CompanionProgram& companion);

    Installation installation{Registry::ofTheUser};
};

} // namespace testing_support
