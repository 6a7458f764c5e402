// How the stand-in Companion handles commits: the test acts as the host with its add-in and checks
// the library and the log.
#include "endtoend/companion_commit_fixture.h"

using namespace testing_support;

namespace {

class CompanionCommits : public CommitFixture {
protected:
    // `commit file="…" id=17 from=torvapdm-4711.dat`
    static std::wstring commitLine(const CompanionProgram& companion, std::uint32_t id,
                                   const std::wstring& file)
    {
        return L"commit file=\"" + file + L"\" id=" + std::to_wstring(id) + L" from=torvapdm-" +
               std::to_wstring(companion.process().id()) + L".dat";
    }

    const std::wstring bracketV1 = L"17 | bracket    | 1 | 3 | C:\\Machines\\Mill 3-axis";
    const std::wstring bracketV2 = L"17 | bracket    | 2 | 3 | C:\\Machines\\Mill 3-axis";
};

// Keeps a file open so that it cannot be replaced.
class HeldFile {
public:
    explicit HeldFile(const std::wstring& path, DWORD share = FILE_SHARE_READ)
        : file_(CreateFileW(path.c_str(), GENERIC_READ, share, nullptr, OPEN_EXISTING, 0, nullptr))
    {
    }
    ~HeldFile() { CloseHandle(file_); }
    HeldFile(const HeldFile&) = delete;
    HeldFile& operator=(const HeldFile&) = delete;

    bool isHeld() const { return file_ != INVALID_HANDLE_VALUE; }

private:
    HANDLE file_;
};

void setWriteProtection(const std::wstring& path, bool isProtected)
{
    SetFileAttributesW(path.c_str(), isProtected ? FILE_ATTRIBUTE_READONLY : FILE_ATTRIBUTE_NORMAL);
}

// Sets the file's last-write time to this many seconds from now.
void setWriteTime(const std::wstring& path, int secondsFromNow)
{
    FILETIME now{};
    GetSystemTimeAsFileTime(&now);
    ULARGE_INTEGER time = {{now.dwLowDateTime, now.dwHighDateTime}};
    time.QuadPart += static_cast<ULONGLONG>(secondsFromNow * 10'000'000LL);
    const FILETIME moved = {time.LowPart, time.HighPart};
    const HANDLE file =
        CreateFileW(path.c_str(), FILE_WRITE_ATTRIBUTES, 7, nullptr, OPEN_EXISTING, 0, nullptr);
    SetFileTime(file, nullptr, nullptr, &moved);
    CloseHandle(file);
}

} // namespace

TEST_F(CompanionCommits, becomeThePartsNextVersion)
{
    const CompanionProgram companion(installation);
    const std::wstring work = sendPart(companion, L"bracket");
    const std::string first = *libraryBytes(L"bracket\\v1.mcam");
    const std::wstring index = indexText();
    const size_t linesBefore = companion.log().size();
    writeBytes(work, "changed");
    makePicture("BM picture");
    commit(companion, 17, work);
    ASSERT_TRUE(waitForVersion(companion, L"bracket", 2));
    Lines log = companion.log();
    log.erase(log.begin(), log.begin() + static_cast<std::ptrdiff_t>(linesBefore));
    EXPECT_EQ(log, (Lines{commitLine(companion, 17, work),
                          L"version name=\"bracket\" version=2 number=17 picture=yes"}));
    EXPECT_EQ(libraryBytes(L"bracket\\v2.mcam"), "changed");
    EXPECT_EQ(libraryBytes(L"bracket\\v2.bmp"), "BM picture");
    EXPECT_EQ(libraryBytes(L"bracket\\v1.mcam"), first);
    std::wstring expected = index;
    expected.replace(expected.find(bracketV1), bracketV1.size(), bracketV2);
    EXPECT_EQ(indexText(), expected);
}

TEST_F(CompanionCommits, areSentAgainAsTheirVersion)
{
    const CompanionProgram companion(installation);
    const std::wstring work = sendPart(companion, L"bracket");
    writeBytes(work, "changed");
    commit(companion, 17, work);
    ASSERT_TRUE(waitForVersion(companion, L"bracket", 2));
    DeleteFileW(work.c_str());
    EXPECT_EQ(sendPart(companion, L"bracket"), work);
    EXPECT_EQ(readBytes(work), "changed");
    EXPECT_EQ(companion.count(L"kept "), 0u);
}

TEST_F(CompanionCommits, areStoredBeforeTheNextSend)
{
    const CompanionProgram companion(installation);
    for (int version = 2; version <= 6; ++version) {
        const std::wstring work = sendPart(companion, L"bracket");
        const std::string bytes = "version " + std::to_string(version);
        writeBytes(work, bytes);
        commit(companion, 17, work);
        sendPart(companion, L"bracket");
        EXPECT_EQ(readBytes(work), bytes);
    }
    EXPECT_EQ(companion.count(L"version name"), 5u);
    EXPECT_EQ(companion.count(L"kept "), 0u);
}

TEST_F(CompanionCommits, blockSendingWhileTheyWait)
{
    const CompanionProgram companion(installation);
    const std::wstring work = sendPart(companion, L"bracket");
    const HeldFile held(installation.path(L"library\\library.txt"));
    writeBytes(work, "changed");
    commit(companion, 17, work);
    EXPECT_EQ(companion.run(L"--send bracket --host " + std::to_wstring(GetCurrentProcessId())),
              notCarriedOut);
    EXPECT_EQ(companion.log().back(), LR"(refused reason="a commit waits to be stored")");
    EXPECT_EQ(readBytes(work), "changed");
}

TEST_F(CompanionCommits, takeTheScreenPicture)
{
    const CompanionProgram companion(installation);
    const std::wstring work = sendPart(companion, L"bracket");
    makePicture(std::string("BM\0\r\n\x1A\xFF", 7) + std::string(100000, 'p'));
    const auto made = picture();
    commit(companion, 17, work);
    ASSERT_TRUE(waitForVersion(companion, L"bracket", 2));
    EXPECT_EQ(libraryBytes(L"bracket\\v2.bmp"), made);
    EXPECT_EQ(picture(), std::nullopt);
    commit(companion, 17, work);
    ASSERT_TRUE(waitForVersion(companion, L"bracket", 3));
    EXPECT_EQ(companion.lastLine(L"version name"),
              L"version name=\"bracket\" version=3 number=17 picture=no");
    EXPECT_EQ(libraryBytes(L"bracket\\v3.bmp"), std::nullopt);
}

TEST_F(CompanionCommits, leaveALaterPictureToTheNext)
{
    const CompanionProgram companion(installation);
    const std::wstring work = sendPart(companion, L"bracket");
    makePicture("BM next");
    setWriteTime(installation.path(L"commit\\screendump.bmp"), 3600);
    commit(companion, 17, work);
    ASSERT_TRUE(waitForVersion(companion, L"bracket", 2));
    EXPECT_EQ(companion.count(L"picture=no"), 1u);
    EXPECT_EQ(picture(), "BM next");
    setWriteTime(installation.path(L"commit\\screendump.bmp"), -3600);
    commit(companion, 17, work);
    ASSERT_TRUE(waitForVersion(companion, L"bracket", 3));
    EXPECT_EQ(libraryBytes(L"bracket\\v3.bmp"), "BM next");
    EXPECT_EQ(libraryBytes(L"bracket\\v2.bmp"), std::nullopt);
}

TEST_F(CompanionCommits, assignThePictureToTheLastOne)
{
    const std::wstring one = makePart(L"one.mcam", "1");
    const std::wstring two = makePart(L"two.mcam", "2");
    makePicture("BM two");
    appendCommit(commitFile(4242), formatCommitRecord(noId, one));
    appendCommit(commitFile(4242), formatCommitRecord(noId, two));
    const CompanionProgram companion(installation);
    ASSERT_TRUE(waitForVersion(companion, L"two", 1));
    EXPECT_EQ(libraryBytes(L"one\\v1.bmp"), std::nullopt);
    EXPECT_EQ(libraryBytes(L"two\\v1.bmp"), "BM two");
}

TEST_F(CompanionCommits, areFoundByFileWithoutAnId)
{
    const CompanionProgram companion(installation);
    const std::wstring work = sendPart(companion, L"clamp jaw", L" --id 107");
    commit(companion, noId, work);
    ASSERT_TRUE(waitForVersion(companion, L"clamp jaw", 2));
    commit(companion, 0, work);
    ASSERT_TRUE(waitForVersion(companion, L"clamp jaw", 3));
    commit(companion, 17, work); // the id of another part
    EXPECT_TRUE(waitForVersion(companion, L"clamp jaw", 4));
    EXPECT_EQ(companion.count(L"version name"), 3u);
}

TEST_F(CompanionCommits, areFoundByIdWhenSavedElsewhere)
{
    const std::wstring elsewhere = makePart(L"jaw copy.mcam", "saved elsewhere");
    {
        const CompanionProgram companion(installation);
        sendPart(companion, L"clamp jaw", L" --id 107");
        EXPECT_EQ(companion.run(L"--quit"), carriedOut);
    }
    const CompanionProgram companion(installation); // finds it by its file
    commit(companion, 107, elsewhere);
    ASSERT_TRUE(waitForVersion(companion, L"clamp jaw", 2));
    EXPECT_EQ(libraryBytes(L"clamp jaw\\v2.mcam"), "saved elsewhere");
}

TEST_F(CompanionCommits, makeANewPartOfAnUnknownFile)
{
    const CompanionProgram companion(installation);
    const std::wstring plate = makePart(L"plate \u4E2D.mcam", "first");
    commit(companion, noId, plate);
    ASSERT_TRUE(waitForVersion(companion, L"plate \u4E2D", 1));
    EXPECT_EQ(logAfterStart(companion),
              (Lines{commitLine(companion, noId, plate),
                     L"new-part number=43 name=\"plate \u4E2D\" file=\"" + plate + L"\"",
                     L"version name=\"plate \u4E2D\" version=1 number=43 picture=no"}));
    const std::wstring line = L"\n43 | plate \u4E2D | 1 | 0 |  | From " + plate + L"\n";
    const std::wstring index = indexText();
    EXPECT_EQ(index.substr(index.size() - line.size()), line);
    EXPECT_EQ(libraryBytes(L"plate \u4E2D\\v1.mcam"), "first");
}

TEST_F(CompanionCommits, recogniseANewPartLater)
{
    const std::wstring plate = makePart(L"plate.mcam", "first");
    {
        const CompanionProgram companion(installation);
        commit(companion, 5, plate);
        ASSERT_TRUE(waitForVersion(companion, L"plate", 1));
        writeBytes(plate, "second");
        commit(companion, 5, plate);
        ASSERT_TRUE(waitForVersion(companion, L"plate", 2));
        EXPECT_EQ(companion.run(L"--quit"), carriedOut);
    }
    const CompanionProgram companion(installation);
    writeBytes(plate, "third");
    commit(companion, noId, plate);
    ASSERT_TRUE(waitForVersion(companion, L"plate", 3));
    EXPECT_EQ(libraryBytes(L"plate\\v2.mcam"), "second");
    EXPECT_EQ(libraryBytes(L"plate\\v3.mcam"), "third");
    EXPECT_EQ(companion.count(L"new-part"), 1u);
}

TEST_F(CompanionCommits, makeANewPartAfterANewFileRequest)
{
    const CompanionProgram companion(installation);
    writeBytes(installation.commandFile(GetCurrentProcessId()), "");
    EXPECT_EQ(companion.run(L"--new-file --id 17 --host " + std::to_wstring(GetCurrentProcessId())),
              carriedOut);
    commit(companion, 17, makePart(L"plate.mcam", "new"));
    EXPECT_TRUE(waitForVersion(companion, L"plate", 1));
    EXPECT_EQ(libraryBytes(L"bracket\\v2.mcam"), std::nullopt);
}

TEST_F(CompanionCommits, overwriteNoVersion)
{
    writeBytes(installation.path(L"library\\bracket\\v2.mcam"), "by hand");
    writeBytes(installation.path(L"library\\bracket\\v3.bmp"), "by hand");
    const CompanionProgram companion(installation);
    commit(companion, 17, makePart(L"a.mcam", "committed"));
    ASSERT_TRUE(waitForVersion(companion, L"bracket", 4));
    EXPECT_EQ(libraryBytes(L"bracket\\v2.mcam"), "by hand");
    EXPECT_EQ(libraryBytes(L"bracket\\v3.bmp"), "by hand");
    EXPECT_EQ(libraryBytes(L"bracket\\v4.mcam"), "committed");
}

TEST_F(CompanionCommits, failAloneWithoutTheirFile)
{
    const CompanionProgram companion(installation);
    ASSERT_NE(companion.waitForWindow(), nullptr);
    const std::wstring index = indexText();
    const std::wstring gone = installation.path(L"tmp\\gone.mcam");
    makePicture("BM of the one that failed");
    commit(companion, 17, gone);
    ASSERT_TRUE(companion.waitForLog(L"picture-kept"));
    EXPECT_EQ(logAfterStart(companion),
              (Lines{commitLine(companion, 17, gone),
                     L"commit-failed file=\"" + gone + L"\" id=17 reason=\"there is no such file\"",
                     L"picture-kept file=\"" + installation.path(L"commit\\screendump.bmp.kept-1") +
                         L"\""}));
    EXPECT_EQ(indexText(), index);
    EXPECT_EQ(libraryBytes(L"bracket\\v2.mcam"), std::nullopt);
    commit(companion, 17, makePart(L"a.mcam", "there"));
    ASSERT_TRUE(waitForVersion(companion, L"bracket", 2));
    EXPECT_EQ(companion.count(L"picture=no"), 1u);
}

TEST_F(CompanionCommits, failWithoutAFullPath)
{
    const CompanionProgram companion(installation);
    const std::pair<const wchar_t*, const wchar_t*> names[] = {
        {L"", L"the request names no file"}, {L"library.txt", L"the request names no full path"}};
    for (const auto& [name, reason] : names) {
        commit(companion, 17, name);
        EXPECT_TRUE(companion.waitForLog(std::wstring(L"commit-failed file=\"") + name +
                                         L"\" id=17 reason=\"" + reason + L"\""));
    }
}

TEST_F(CompanionCommits, waitWhileTheIndexIsLocked)
{
    const CompanionProgram companion(installation);
    ASSERT_NE(companion.waitForWindow(), nullptr);
    const std::wstring index = indexText();
    {
        const HeldFile held(installation.path(L"library\\library.txt"));
        ASSERT_TRUE(held.isHeld());
        commit(companion, 17, makePart(L"one.mcam", "1"));
        commit(companion, 17, makePart(L"two.mcam", "2"));
        ASSERT_TRUE(companion.waitForLog(L"commit-waits"));
        EXPECT_NE(companion.lastLine(L"commit-waits").find(L"the library cannot be written"),
                  std::wstring::npos);
        EXPECT_EQ(companion.count(L"version name"), 0u);
        EXPECT_EQ(indexText(), index);
    }
    ASSERT_TRUE(waitForVersion(companion, L"bracket", 3));
    EXPECT_EQ(libraryBytes(L"bracket\\v2.mcam"), "1");
    EXPECT_EQ(libraryBytes(L"bracket\\v3.mcam"), "2");
    EXPECT_EQ(companion.count(L"commit-waits"), 1u);
}

TEST_F(CompanionCommits, waitForAWritableLibrary)
{
    const std::wstring index = installation.path(L"library\\library.txt");
    const std::wstring part = makePart(L"one.mcam", "1");
    {
        const CompanionProgram companion(installation);
        setWriteProtection(index, true);
        commit(companion, 17, part);
        ASSERT_TRUE(companion.waitForLog(L"commit-waits"));
        EXPECT_EQ(companion.run(L"--quit"), carriedOut);
        EXPECT_EQ(companion.count(L"version name"), 0u);
    }
    EXPECT_FALSE(commitFiles().empty());
    setWriteProtection(index, false);
    const CompanionProgram companion(installation);
    ASSERT_TRUE(waitForVersion(companion, L"bracket", 2));
    EXPECT_EQ(libraryBytes(L"bracket\\v2.mcam"), "1");
    EXPECT_TRUE(waitUntil([this] { return commitFiles().empty(); }));
    EXPECT_EQ(companion.count(L"version name"), 1u);
}

TEST_F(CompanionCommits, waitForABrieflyLockedFile)
{
    const CompanionProgram companion(installation);
    const std::wstring part = makePart(L"one.mcam", "1");
    {
        const HeldFile held(part, 0);
        ASSERT_TRUE(held.isHeld());
        commit(companion, 17, part);
        ASSERT_TRUE(companion.waitForLog(L"commit-waits file=\"" + part +
                                         L"\" id=17 reason=\"the file cannot be read\""));
    }
    ASSERT_TRUE(waitForVersion(companion, L"bracket", 2));
    EXPECT_EQ(libraryBytes(L"bracket\\v2.mcam"), "1");
}

TEST_F(CompanionCommits, giveUpWhenTheirFileStaysLocked)
{
    const CompanionProgram companion(installation);
    const std::wstring part = makePart(L"one.mcam", "1");
    {
        const HeldFile held(part, 0);
        commit(companion, noId, part);
        commit(companion, noId, makePart(L"two.mcam", "2"));
        EXPECT_TRUE(waitForVersion(companion, L"two", 1));
    }
    EXPECT_EQ(companion.count(L"commit-failed file=\"" + part +
                              L"\" id=4294967295 reason=\"the file cannot be read\""),
              1u);
    // The number it would have received is now used by another part.
    commit(companion, noId, part);
    EXPECT_TRUE(waitForVersion(companion, L"one", 1));
    EXPECT_EQ(companion.lastLine(L"new-part"),
              L"new-part number=44 name=\"one\" file=\"" + part + L"\"");
}

TEST_F(CompanionCommits, areStoredFromTheCommandLine)
{
    const CompanionProgram companion(installation);
    const std::wstring work = sendPart(companion, L"bracket");
    const size_t linesBefore = companion.log().size();
    makePicture("BM");
    EXPECT_EQ(companion.run(L"--commit " + quoted(work)), carriedOut);
    ASSERT_TRUE(waitForVersion(companion, L"bracket", 2));
    EXPECT_EQ(libraryBytes(L"bracket\\v2.bmp"), "BM");
    const std::wstring plate = makePart(L"plate.mcam", "plate");
    EXPECT_EQ(companion.run(L"--commit " + quoted(plate) + L" --id 4294967295"), carriedOut);
    ASSERT_TRUE(waitForVersion(companion, L"plate", 1));
    Lines log = companion.log();
    log.erase(log.begin(), log.begin() + static_cast<std::ptrdiff_t>(linesBefore));
    EXPECT_EQ(log, (Lines{L"command text=\"--commit " + quoted(work) + L"\"",
                          L"commit file=\"" + work + L"\"",
                          L"version name=\"bracket\" version=2 number=17 picture=yes",
                          L"command text=\"--commit " + quoted(plate) + L" --id 4294967295\"",
                          L"commit file=\"" + plate + L"\" id=4294967295",
                          L"new-part number=43 name=\"plate\" file=\"" + plate + L"\"",
                          L"version name=\"plate\" version=1 number=43 picture=no"}));
}

TEST_F(CompanionCommits, areStoredByAFirstStart)
{
    const std::wstring plate = makePart(L"plate.mcam", "plate");
    const CompanionProgram companion(installation, L"--commit " + quoted(plate));
    ASSERT_TRUE(waitForVersion(companion, L"plate", 1));
    EXPECT_EQ(libraryBytes(L"plate\\v1.mcam"), "plate");
    EXPECT_TRUE(IsWindowVisible(companion.waitForWindow()) != FALSE);
    EXPECT_TRUE(companion.process().isRunning());
}

TEST_F(CompanionCommits, areShownWithVersionAndPicture)
{
    const auto shows = [](HWND window, const std::wstring& text) {
        for (HWND child = nullptr;
             (child = FindWindowExW(window, child, L"STATIC", nullptr)) != nullptr;) {
            wchar_t shown[128] = L"";
            SendMessageW(child, WM_GETTEXT, std::size(shown), reinterpret_cast<LPARAM>(shown));
            if (text == shown)
                return true;
        }
        return false;
    };
    const CompanionProgram companion(installation);
    const HWND window = companion.waitForWindow();
    EXPECT_TRUE(waitUntil([&] { return shows(window, L"Versions of bracket"); }));
    EXPECT_TRUE(shows(window, L"Picture of version 1"));
    commit(companion, 17, makePart(L"a.mcam", "a"));
    EXPECT_TRUE(waitUntil([&] { return shows(window, L"Picture of version 2"); }));
}
