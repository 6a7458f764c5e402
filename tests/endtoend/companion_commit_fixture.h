// Fixture for tests of the stand-in Companion's commit handling, with its own installation folder.
#pragma once

#include "peer/commit_record.h"
#include "peer/exchange_paths.h"
#include "support/companion_program.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
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
    explicit CommitAppend(const std::wstring& commitFile)
        : file_(CreateFileW(commitFile.c_str(), GENERIC_READ | GENERIC_WRITE,
                            FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                            OPEN_ALWAYS, 0, nullptr)),
          offset_(SetFilePointer(file_, 0, nullptr, FILE_END))
    {
        EXPECT_NE(file_, INVALID_HANDLE_VALUE) << GetLastError();
    }
    ~CommitAppend() { CloseHandle(file_); }
    CommitAppend(const CommitAppend&) = delete;
    CommitAppend& operator=(const CommitAppend&) = delete;

    // Locks this many bytes from the end; false if another process has locked any of them. The
    // add-in ignores the result.
    bool lock(size_t bytes)
    {
        locked_ = static_cast<DWORD>(bytes);
        return LockFile(file_, offset_, 0, locked_, 0) != FALSE;
    }
    // Writes at the end found by the constructor, then after the previous write.
    bool write(const std::string& bytes)
    {
        DWORD written = 0;
        const DWORD size = static_cast<DWORD>(bytes.size());
        return WriteFile(file_, bytes.data(), size, &written, nullptr) && written == size;
    }
    void unlock() { UnlockFile(file_, offset_, 0, locked_, 0); }

private:
    const HANDLE file_;
    const DWORD offset_;
    DWORD locked_ = 0;
};

// Appends one complete record.
inline void appendCommit(const std::wstring& commitFile, const std::string& record)
{
    CommitAppend append(commitFile);
    append.lock(record.size());
    append.write(record);
    append.unlock();
}

class CommitFixture : public ::testing::Test {
protected:
    CommitFixture() { installCompanionWithLibrary(installation); }

    // The commit file of this Companion, or of one that had this process id.
    std::wstring commitFile(DWORD processId) const
    {
        return peer::commitPaths(installation.root(), processId).live;
    }
    // Appends a record to the Companion's commit file, once it can be found.
    void commit(const CompanionProgram& companion, std::uint32_t id, const std::wstring& file) const
    {
        ASSERT_NE(companion.waitForWindow(), nullptr);
        appendCommit(commitFile(companion.process().id()), formatCommitRecord(id, file));
    }

    // Writes a part file to the folder `parts` and returns its path.
    std::wstring makePart(const std::wstring& name, const std::string& bytes) const
    {
        CreateDirectoryW(installation.path(L"parts").c_str(), nullptr);
        const std::wstring path = installation.path(L"parts\\" + name);
        writeBytes(path, bytes);
        return path;
    }
    // Sends a part of the library to this process, which acts as the host. On return, the working
    // copy exists and no request is waiting. Returns the copy's path.
    std::wstring sendPart(const CompanionProgram& companion, const std::wstring& name,
                          const std::wstring& options = L"") const
    {
        const std::wstring commandFile = installation.commandFile(GetCurrentProcessId());
        writeBytes(commandFile, "");
        const size_t taken = companion.count(L"taken ");
        EXPECT_EQ(companion.run(L"--send " + quoted(name) + L" --host " +
                                std::to_wstring(GetCurrentProcessId()) + options),
                  carriedOut);
        EXPECT_TRUE(waitUntil([&] { return readBytes(commandFile).value_or("") != ""; }));
        writeBytes(commandFile, "");
        EXPECT_TRUE(companion.waitForLog(L"taken ", taken + 1));
        return installation.path(L"work\\" + name + L".mcam");
    }
    void makePicture(const std::string& bytes) const
    {
        writeBytes(peer::screenPicturePath(installation.root()), bytes);
    }
    std::optional<std::string> picture() const
    {
        return readBytes(peer::screenPicturePath(installation.root()));
    }

    // The content of a file in the library: `bracket\v2.mcam`.
    std::optional<std::string> libraryBytes(const std::wstring& file) const
    {
        return readBytes(installation.path(L"library\\" + file));
    }
    std::wstring indexText() const { return fromUtf8(libraryBytes(L"library.txt").value_or("")); }
    // The files in the folder `temp`, except command files and settings.
    Lines commitFiles() const
    {
        Lines names;
        for (const auto& entry : std::filesystem::directory_iterator(installation.path(L"temp")))
            names.push_back(entry.path().filename().wstring());
        std::ranges::sort(names);
        return linesThatStart(names, L"torvapdm-");
    }

    // Waits until the log reports the version; false on timeout.
    static bool waitForVersion(const CompanionProgram& companion, const std::wstring& name,
                               int version)
    {
        return companion.waitForLog(L"version name=\"" + name + L"\" version=" +
                                    std::to_wstring(version) + L" ");
    }
    // The log lines after those of the start.
    static Lines logAfterStart(const CompanionProgram& companion)
    {
        Lines log = companion.log();
        log.erase(log.begin(), log.begin() + std::min(std::ssize(log), std::ptrdiff_t{2}));
        return log;
    }

    Installation installation{Registry::ofTheUser};
};

} // namespace testing_support
