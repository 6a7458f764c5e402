#include "endtoend/companion_commit_fixture.h"

#include <algorithm>
#include <filesystem>

namespace testing_support {

CommitAppend::CommitAppend(const std::wstring& requestFile)
    : file_(CreateFileW(requestFile.c_str(), GENERIC_READ | GENERIC_WRITE,
                        FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                        OPEN_ALWAYS, 0, nullptr)),
      offset_(SetFilePointer(file_, 0, nullptr, FILE_END))
{
    EXPECT_NE(file_, INVALID_HANDLE_VALUE) << GetLastError();
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

void appendCommit(const std::wstring& requestFile, const std::string& record)
{
    CommitAppend append(requestFile);
    append.lock(record.size());
    append.write(record);
    append.unlock();
}

std::wstring CommitFixture::requestFile(DWORD processId) const
{
    return installation.path(L"temp\\torvapdm-" + std::to_wstring(processId) + L".dat");
}

void CommitFixture::commit(const CompanionProgram& companion, std::uint32_t id,
                           const std::wstring& file) const
{
    ASSERT_NE(companion.waitForWindow(), nullptr);
    appendCommit(requestFile(companion.process().id()), formatCommitRecord(id, file));
}

std::wstring CommitFixture::makePart(const std::wstring& name, const std::string& bytes) const
{
    CreateDirectoryW(installation.path(L"parts").c_str(), nullptr);
    const std::wstring path = installation.path(L"parts\\" + name);
    writeBytes(path, bytes);
    return path;
}

std::wstring CommitFixture::sendPart(const CompanionProgram& companion, const std::wstring& name,
                                     const std::wstring& options) const
{
    const std::wstring commandFile = installation.commandFile(GetCurrentProcessId());
    writeBytes(commandFile, "");
    const size_t taken = companion.count(L"taken ");
    EXPECT_EQ(companion.tell(L"--send " + quoted(name) + L" --host " +
                             std::to_wstring(GetCurrentProcessId()) + options),
              carriedOut);
    EXPECT_TRUE(waitUntil([&] { return readBytes(commandFile).value_or("") != ""; }));
    writeBytes(commandFile, "");
    EXPECT_TRUE(companion.waitForLog(L"taken ", taken + 1));
    return installation.path(L"work\\" + name + L".mcam");
}

void CommitFixture::makePicture(const std::string& bytes) const
{
    writeBytes(installation.path(L"commit\\screendump.bmp"), bytes);
}

std::optional<std::string> CommitFixture::picture() const
{
    return readBytes(installation.path(L"commit\\screendump.bmp"));
}

std::optional<std::string> CommitFixture::libraryBytes(const std::wstring& file) const
{
    return readBytes(installation.path(L"library\\" + file));
}

std::wstring CommitFixture::indexText() const
{
    return fromUtf8(libraryBytes(L"library.txt").value_or(""));
}

Lines CommitFixture::requestFiles() const
{
    Lines names;
    for (const auto& entry : std::filesystem::directory_iterator(installation.path(L"temp")))
        if (entry.path().filename().wstring().rfind(L"torvapdm-", 0) == 0)
            names.push_back(entry.path().filename().wstring());
    std::sort(names.begin(), names.end());
    return names;
}

bool CommitFixture::waitForVersion(const CompanionProgram& companion, const std::wstring& name,
                                   int version)
{
    return companion.waitForLog(L"version name=\"" + name + L"\" version=" +
                                std::to_wstring(version) + L" ");
}

Lines CommitFixture::logBehindStart(const CompanionProgram& companion)
{
    constexpr std::ptrdiff_t linesOfStart = 2;
    Lines log = companion.log();
    log.erase(log.begin(), log.begin() + std::min(std::ssize(log), linesOfStart));
    return log;
}

} // namespace testing_support
