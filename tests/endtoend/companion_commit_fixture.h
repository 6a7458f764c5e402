// A test of the stand-in Companion's side of commits, in its own installation folder.
#pragma once

#include "peer/commit_record.h"
#include "support/companion_program.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>

namespace testing_support {

constexpr DWORD carriedOut = 0;
constexpr DWORD notCarriedOut = 1;
constexpr std::uint32_t noId = 0xFFFFFFFF;

inline std::string formatCommitRecord(std::uint32_t id, const std::wstring& file)
{
    return peer::formatCommitRecord({id, file});
}

// One append as the add-in does it, with the same calls in the same order. Opening finds the end of
// the file, which is made when it is missing.
class CommitAppend {
public:
    explicit CommitAppend(const std::wstring& requestFile);
    ~CommitAppend() { CloseHandle(file_); }
    CommitAppend(const CommitAppend&) = delete;
    CommitAppend& operator=(const CommitAppend&) = delete;

    // Locks so many bytes from the end on; false when another has locked one of them. The add-in
    // does not look at that.
    bool lock(size_t bytes);
    // Writes at the end that was found, then after what was written before.
    bool write(const std::string& bytes);
    void unlock() { UnlockFile(file_, offset_, 0, locked_, 0); }

private:
    const HANDLE file_;
    const DWORD offset_;
    DWORD locked_ = 0;
};

// The whole append of one record.
void appendCommit(const std::wstring& requestFile, const std::string& record);

class CommitFixture : public ::testing::Test {
protected:
    CommitFixture() { installCompanionWithLibrary(installation); }

    // The request file for a Companion, or for one that had this process id.
    std::wstring requestFile(DWORD processId) const;
    // Appends a record to the Companion's request file, once it can be found.
    void commit(const CompanionProgram& companion, std::uint32_t id,
                const std::wstring& file) const;

    // Writes a part file into the folder `parts` and gives its path.
    std::wstring makePart(const std::wstring& name, const std::string& bytes) const;
    // Sends a part of the library to this process, which plays the host: its working copy is there
    // and empty of requests when this returns. Gives the copy's path.
    std::wstring sendPart(const CompanionProgram& companion, const std::wstring& name,
                          const std::wstring& options = L"") const;
    void makePicture(const std::string& bytes) const;
    std::optional<std::string> picture() const;

    // `bracket\v2.mcam` of the library.
    std::optional<std::string> libraryBytes(const std::wstring& file) const;
    std::wstring indexText() const;
    // What is in the folder `temp`, apart from command files and settings.
    Lines requestFiles() const;

    // True once the log reports the version.
    static bool waitForVersion(const CompanionProgram& companion, const std::wstring& name,
                               int version);
    // The lines of the log after those of the start.
    static Lines logBehindStart(const CompanionProgram& companion);

    Installation installation{Registry::ofTheUser};
};

} // namespace testing_support
