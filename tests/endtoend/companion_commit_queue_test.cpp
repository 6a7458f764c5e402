// The stand-in Companion's commit file with concurrent writers, crashes and invalid data: no record
// is lost, stored twice or stored out of order.
#include "endtoend/companion_commit_fixture.h"

#include <filesystem>
#include <thread>

using namespace testing_support;

namespace {

constexpr DWORD endedProcess = 4242; // not a valid process id: not a multiple of 4

class CommitQueue : public CommitFixture {
protected:
    // A different part file for each number; committing it creates a part with the same name.
    std::wstring numberedPart(int number) const
    {
        const std::wstring name = partName(number);
        return makePart(name + L".mcam", "part file " + std::to_string(number));
    }
    static std::wstring partName(int number) { return L"part " + std::to_wstring(1000 + number); }

    // The parts added to the library's initial four, in the order of its index.
    Lines newParts() const
    {
        Lines names;
        for (const std::wstring& line : linesOf(indexText())) {
            const size_t name = line.find(L"| part ");
            if (name != line.npos)
                names.push_back(line.substr(name + 2, 9));
        }
        return names;
    }
    static Lines partNames(int count)
    {
        Lines names;
        for (int number = 1; number <= count; ++number)
            names.push_back(partName(number));
        return names;
    }
    // Expects each part exactly once, in order, with its own content and one version.
    void expectParts(int count) const
    {
        EXPECT_EQ(newParts(), partNames(count));
        for (int number = 1; number <= count; ++number) {
            const std::wstring folder = partName(number);
            EXPECT_EQ(libraryBytes(folder + L"\\v1.mcam"), "part file " + std::to_string(number));
            EXPECT_EQ(libraryBytes(folder + L"\\v2.mcam"), std::nullopt) << folder;
        }
    }
    // Waits until the Companion has read its commit file again. It does so after each `--commit`,
    // here of a file that does not exist.
    void waitForALook(const CompanionProgram& companion) const
    {
        const size_t failed = companion.count(L"commit-failed");
        for (size_t i = 1; i <= 2; ++i) {
            EXPECT_EQ(companion.run(L"--commit C:\\no.mcam"), carriedOut);
            EXPECT_TRUE(companion.waitForLog(L"commit-failed", failed + i));
        }
    }
    // Content of the n-th file of skipped bytes.
    std::optional<std::string> skippedBytes(int number) const
    {
        return readBytes(
            installation.path(L"sys\\skipped-commit-" + std::to_wstring(number) + L".dat"));
    }
    std::wstring nextTo(DWORD process, const wchar_t* extension) const
    {
        return installation.path(L"temp\\torvapdm-" + std::to_wstring(process) + extension);
    }
};

} // namespace

TEST_F(CommitQueue, storesTwoInARow)
{
    const CompanionProgram companion(installation);
    commit(companion, noId, numberedPart(1));
    commit(companion, noId, numberedPart(2));
    ASSERT_TRUE(waitForVersion(companion, partName(2), 1));
    expectParts(2);
}

TEST_F(CommitQueue, stores200ThatArriveWhileItReads)
{
    const CompanionProgram companion(installation);
    constexpr int all = 200;
    for (int number = 1; number <= all; ++number)
        commit(companion, noId, numberedPart(number));
    ASSERT_TRUE(companion.waitForLog(L"version name", all));
    ASSERT_TRUE(waitForVersion(companion, partName(all), 1));
    expectParts(all);
    EXPECT_EQ(companion.count(L"version name"), static_cast<size_t>(all));
    EXPECT_EQ(companion.count(L"commit-skipped"), 0u);
}

TEST_F(CommitQueue, stores200VersionsOfOnePart)
{
    const CompanionProgram companion(installation);
    const std::wstring part = makePart(L"a.mcam", "a");
    for (int i = 0; i < 200; ++i)
        commit(companion, 17, part);
    ASSERT_TRUE(companion.waitForLog(L"version name", 200));
    ASSERT_TRUE(waitForVersion(companion, L"bracket", 201));
    EXPECT_EQ(companion.count(L"version name"), 200u);
    EXPECT_EQ(libraryBytes(L"bracket\\v201.mcam"), "a");
    EXPECT_EQ(libraryBytes(L"bracket\\v202.mcam"), std::nullopt);
}

TEST_F(CommitQueue, keepsTheFileWhileTheProgramRuns)
{
    const CompanionProgram companion(installation);
    const std::wstring one = numberedPart(1);
    commit(companion, noId, one);
    ASSERT_TRUE(waitForVersion(companion, partName(1), 1));
    EXPECT_EQ(readBytes(commitFile(companion.process().id())), formatCommitRecord(noId, one));
}

// A writer that pauses after seeking to the end is not affected when a reader consumes all records
// before that position.
TEST_F(CommitQueue, doesNotMoveTheEndUnderAWriter)
{
    const CompanionProgram companion(installation);
    commit(companion, noId, numberedPart(1));
    CommitAppend slow(commitFile(companion.process().id()));
    ASSERT_TRUE(waitForVersion(companion, partName(1), 1));
    const std::string record = formatCommitRecord(noId, numberedPart(2));
    EXPECT_TRUE(slow.lock(record.size()));
    EXPECT_TRUE(slow.write(record));
    slow.unlock();
    ASSERT_TRUE(waitForVersion(companion, partName(2), 1));
    expectParts(2);
}

TEST_F(CommitQueue, waitsForAWriterThatIsHalfThrough)
{
    const CompanionProgram companion(installation);
    ASSERT_NE(companion.waitForWindow(), nullptr);
    const std::string record = formatCommitRecord(noId, numberedPart(1));
    CommitAppend slow(commitFile(companion.process().id()));
    EXPECT_TRUE(slow.lock(record.size()));
    for (const char byte : record)
        EXPECT_TRUE(slow.write(std::string(1, byte)));
    // The record is complete but still locked by the writer.
    waitForALook(companion);
    EXPECT_EQ(companion.count(partName(1)), 0u);
    slow.unlock();
    ASSERT_TRUE(waitForVersion(companion, partName(1), 1));
    expectParts(1);
}

TEST_F(CommitQueue, waitsForTheRestOfHalfARecord)
{
    const CompanionProgram companion(installation);
    ASSERT_NE(companion.waitForWindow(), nullptr);
    const std::wstring file = commitFile(companion.process().id());
    const std::string record = formatCommitRecord(noId, numberedPart(1));
    appendCommit(file, record.substr(0, 5));
    waitForALook(companion);
    appendCommit(file, record.substr(5, 15));
    waitForALook(companion);
    EXPECT_EQ(companion.count(partName(1)), 0u);
    appendCommit(file, record.substr(20));
    ASSERT_TRUE(waitForVersion(companion, partName(1), 1));
    expectParts(1);
    EXPECT_EQ(companion.count(L"commit-skipped"), 0u);
}

TEST_F(CommitQueue, skipsHalfARecordBeforeAnother)
{
    const CompanionProgram companion(installation);
    ASSERT_NE(companion.waitForWindow(), nullptr);
    const std::wstring file = commitFile(companion.process().id());
    const std::string record = formatCommitRecord(noId, numberedPart(1));
    const std::string half = formatCommitRecord(17, L"C:\\never finished.mcam").substr(0, 31);
    appendCommit(file, half);
    appendCommit(file, record);
    ASSERT_TRUE(waitForVersion(companion, partName(1), 1));
    EXPECT_EQ(companion.lastLine(L"commit-skipped"),
              L"commit-skipped from=torvapdm-" + std::to_wstring(companion.process().id()) +
                  L".dat offset=0 bytes=31 file=\"" +
                  installation.path(L"sys\\skipped-commit-1.dat") + L"\"");
    EXPECT_EQ(skippedBytes(1), half);
    expectParts(1);
}

TEST_F(CommitQueue, skipsGarbageBeforeARecord)
{
    const CompanionProgram companion(installation);
    ASSERT_NE(companion.waitForWindow(), nullptr);
    const std::wstring file = commitFile(companion.process().id());
    const std::string garbage[] = {"this is no record, it is far too long to be one",
                                   std::string(100, '\0'), std::string(60, '\xFF')};
    int number = 0;
    for (const std::string& bytes : garbage) {
        appendCommit(file, bytes);
        appendCommit(file, formatCommitRecord(noId, numberedPart(++number)));
        ASSERT_TRUE(waitForVersion(companion, partName(number), 1)) << number;
        EXPECT_EQ(skippedBytes(number), bytes);
    }
    expectParts(3);
    EXPECT_EQ(companion.count(L"commit-skipped"), 3u);
}

TEST_F(CommitQueue, findsRecordsAfterMuchGarbage)
{
    constexpr size_t oneLook = 4 * (8 + 2 * 32767); // bytes; one read ends inside the record
    const std::string garbage(oneLook - 5, '\xEE');
    appendCommit(commitFile(endedProcess), garbage);
    appendCommit(commitFile(endedProcess), formatCommitRecord(noId, numberedPart(1)));
    const CompanionProgram companion(installation);
    ASSERT_TRUE(waitForVersion(companion, partName(1), 1));
    std::string skipped;
    for (int number = 1; skippedBytes(number); ++number)
        skipped += *skippedBytes(number);
    EXPECT_TRUE(skipped == garbage) << skipped.size();
    expectParts(1);
}

TEST_F(CommitQueue, processesTheFileOfAnEndedProcess)
{
    appendCommit(commitFile(endedProcess), formatCommitRecord(noId, numberedPart(1)));
    appendCommit(commitFile(endedProcess), formatCommitRecord(noId, numberedPart(2)));
    const auto size = std::filesystem::file_size(commitFile(endedProcess));
    const CompanionProgram companion(installation);
    ASSERT_TRUE(waitForVersion(companion, partName(2), 1));
    expectParts(2);
    EXPECT_EQ(
        companion.count(L"commits-left from=torvapdm-4242.dat bytes=" + std::to_wstring(size)), 1u);
    EXPECT_TRUE(waitUntil([this] { return commitFiles().empty(); }));
}

TEST_F(CommitQueue, processesTheFilesOfItsReusedProcessId)
{
    const CompanionProgram companion(installation, L"", true);
    const DWORD process = companion.process().id();
    writeBytes(nextTo(process, L".closed"), formatCommitRecord(noId, numberedPart(1)));
    appendCommit(commitFile(process), formatCommitRecord(noId, numberedPart(2)));
    companion.process().resume();
    commit(companion, noId, numberedPart(3));
    ASSERT_TRUE(waitForVersion(companion, partName(3), 1));
    expectParts(3);
}

TEST_F(CommitQueue, logsTheFileOfItsReusedProcessId)
{
    const CompanionProgram companion(installation, L"", true);
    const std::wstring file = commitFile(companion.process().id());
    appendCommit(file, formatCommitRecord(noId, numberedPart(1)));
    companion.process().resume();
    ASSERT_TRUE(waitForVersion(companion, partName(1), 1));
    EXPECT_EQ(companion.count(L"commits-left from=torvapdm-"), 1u);
    EXPECT_TRUE(waitUntil([this] { return commitFiles().empty(); }));
    expectParts(1);
}

TEST_F(CommitQueue, startsWithTheOldest)
{
    appendCommit(commitFile(endedProcess), formatCommitRecord(noId, numberedPart(1)));
    const CompanionProgram companion(installation, L"--commit " + quoted(numberedPart(2)));
    commit(companion, noId, numberedPart(3));
    ASSERT_TRUE(waitForVersion(companion, partName(3), 1));
    expectParts(3);
}

TEST_F(CommitQueue, processesLateRecordsOfAnEndedProcess)
{
    const CompanionProgram companion(installation);
    ASSERT_NE(companion.waitForWindow(), nullptr);
    appendCommit(commitFile(endedProcess), formatCommitRecord(noId, numberedPart(1)));
    ASSERT_TRUE(waitForVersion(companion, partName(1), 1));
    EXPECT_TRUE(waitUntil([this] { return commitFiles().empty(); }));
    appendCommit(commitFile(endedProcess), formatCommitRecord(noId, numberedPart(2)));
    ASSERT_TRUE(waitForVersion(companion, partName(2), 1));
    expectParts(2);
}

// A host gets process id 0 if it queries a window that has just been destroyed.
TEST_F(CommitQueue, processesTheFileOfProcess0)
{
    const CompanionProgram companion(installation);
    ASSERT_NE(companion.waitForWindow(), nullptr);
    appendCommit(commitFile(0), formatCommitRecord(noId, numberedPart(1)));
    ASSERT_TRUE(waitForVersion(companion, partName(1), 1));
    EXPECT_EQ(companion.count(L" from=torvapdm-0.dat"), 2u); // commits-left and commit
    expectParts(1);
}

TEST_F(CommitQueue, ignoresTheFileOfARunningProcess)
{
    std::filesystem::create_directories(installation.path(L"other"));
    std::filesystem::copy_file(programFolder() + L"desktop_keeper.exe",
                               installation.path(L"other\\TORVA-ZEM.exe"));
    Process other(quoted(installation.path(L"other\\TORVA-ZEM.exe")));
    const std::string record = formatCommitRecord(noId, numberedPart(1));
    appendCommit(commitFile(other.id()), record);
    const CompanionProgram companion(installation);
    commit(companion, noId, numberedPart(2));
    ASSERT_TRUE(waitForVersion(companion, partName(2), 1));
    EXPECT_EQ(readBytes(commitFile(other.id())), record);
    EXPECT_EQ(newParts(), Lines{partName(2)});
    other.end();
    ASSERT_TRUE(waitForVersion(companion, partName(1), 1));
}

TEST_F(CommitQueue, continuesAfterAnEndedBookmark)
{
    const std::string first = formatCommitRecord(noId, numberedPart(7));
    appendCommit(commitFile(endedProcess), first);
    appendCommit(commitFile(endedProcess), formatCommitRecord(noId, numberedPart(1)));
    writeBytes(nextTo(endedProcess, L".taken"), "taken " + std::to_string(first.size()) + "\n");
    const CompanionProgram companion(installation);
    ASSERT_TRUE(waitForVersion(companion, partName(1), 1));
    EXPECT_TRUE(waitUntil([this] { return commitFiles().empty(); }));
    expectParts(1);
}

// The process ended after it wrote the index and before it wrote the bookmark.
TEST_F(CommitQueue, doesNotStoreAnIndexedVersionAgain)
{
    appendCommit(commitFile(endedProcess), formatCommitRecord(17, numberedPart(7)));
    appendCommit(commitFile(endedProcess), formatCommitRecord(noId, numberedPart(1)));
    writeBytes(nextTo(endedProcess, L".taken"), "taken 0\nstoring 17 1 bracket\n");
    const CompanionProgram companion(installation);
    ASSERT_TRUE(waitForVersion(companion, partName(1), 1));
    EXPECT_EQ(companion.count(L"commit-known name=\"bracket\" version=1 number=17 picture=no"), 1u);
    EXPECT_EQ(libraryBytes(L"bracket\\v2.mcam"), std::nullopt);
    expectParts(1);
}

// The same for a part created by the commit: it is found by its file.
TEST_F(CommitQueue, recognisesAnIndexedPartByItsFile)
{
    const std::wstring part = numberedPart(1);
    appendCommit(commitFile(endedProcess), formatCommitRecord(noId, part));
    writeBytes(nextTo(endedProcess, L".taken"), "taken 0\nstoring 43 1 part 1001\n");
    writeBytes(installation.path(L"library\\library.txt"),
               toUtf8(indexText()) + "43 | part 1001 | 1 | 0 |  | \n");
    const CompanionProgram companion(installation);
    ASSERT_TRUE(companion.waitForLog(L"commit-known name=\"part 1001\" version=1 number=43"));
    commit(companion, noId, part);
    EXPECT_TRUE(waitForVersion(companion, partName(1), 2));
    EXPECT_EQ(newParts(), partNames(1));
}

// The process ended after it copied the part file and before it wrote the index: the copy has the
// content that was committed.
TEST_F(CommitQueue, finishesAVersionMissingFromTheIndex)
{
    const std::wstring changedSince = numberedPart(7);
    appendCommit(commitFile(endedProcess), formatCommitRecord(17, changedSince));
    writeBytes(nextTo(endedProcess, L".taken"), "taken 0\nstoring 17 2 bracket\n");
    writeBytes(installation.path(L"library\\bracket\\v2.mcam"), "as it was");
    writeBytes(installation.path(L"library\\bracket\\v2.bmp"), "BM as it was");
    const CompanionProgram companion(installation);
    ASSERT_TRUE(waitForVersion(companion, L"bracket", 2));
    EXPECT_EQ(libraryBytes(L"bracket\\v2.mcam"), "as it was");
    EXPECT_EQ(companion.lastLine(L"version name"),
              L"version name=\"bracket\" version=2 number=17 picture=yes");
    EXPECT_NE(indexText().find(L"17 | bracket    | 2 |"), std::wstring::npos);
}

// The process ended while it copied the part file.
TEST_F(CommitQueue, repeatsAnInterruptedCopy)
{
    appendCommit(commitFile(endedProcess), formatCommitRecord(17, numberedPart(7)));
    writeBytes(nextTo(endedProcess, L".taken"), "taken 0\nstoring 17 2 bracket\n");
    writeBytes(installation.path(L"library\\bracket\\v2.mcam.new"), "part f");
    const CompanionProgram companion(installation);
    ASSERT_TRUE(waitForVersion(companion, L"bracket", 2));
    EXPECT_EQ(libraryBytes(L"bracket\\v2.mcam"), "part file 7");
    EXPECT_EQ(libraryBytes(L"bracket\\v2.mcam.new"), std::nullopt);
    EXPECT_EQ(libraryBytes(L"bracket\\v3.mcam"), std::nullopt);
}

// The process ended while it removed an earlier commit file of the same process id; since then, a
// host has created a new one.
TEST_F(CommitQueue, ignoresABookmarkOfAnEarlierFile)
{
    writeBytes(nextTo(endedProcess, L".taken"), "finished\n");
    appendCommit(commitFile(endedProcess), formatCommitRecord(noId, numberedPart(1)));
    const CompanionProgram companion(installation);
    ASSERT_TRUE(waitForVersion(companion, partName(1), 1));
    expectParts(1);
    EXPECT_TRUE(waitUntil([this] { return commitFiles().empty(); }));
}

TEST_F(CommitQueue, removesAFinishedFileUnread)
{
    writeBytes(nextTo(endedProcess, L".taken"), "finished\n");
    writeBytes(nextTo(endedProcess, L".closed"), formatCommitRecord(noId, numberedPart(1)));
    const CompanionProgram companion(installation);
    ASSERT_NE(companion.waitForWindow(), nullptr);
    EXPECT_TRUE(waitUntil([this] { return commitFiles().empty(); }));
    EXPECT_EQ(companion.count(L"commit"), 0u);
}

TEST_F(CommitQueue, survivesRepeatedKills)
{
    constexpr int all = 60;
    for (int number = 1; number <= all; ++number)
        appendCommit(commitFile(endedProcess), formatCommitRecord(noId, numberedPart(number)));
    for (size_t stored = 1; stored < all; stored += 6) {
        CompanionProgram companion(installation);
        EXPECT_TRUE(companion.waitForLog(L"version name", stored));
    } // the destructor terminates the process
    const CompanionProgram companion(installation);
    EXPECT_TRUE(waitUntil([this] { return commitFiles().empty(); }));
    expectParts(all);
}

TEST_F(CommitQueue, isRemovedBeforeTheProgramEnds)
{
    const CompanionProgram companion(installation);
    for (int number = 1; number <= 20; ++number)
        commit(companion, noId, numberedPart(number));
    EXPECT_EQ(companion.run(L"--quit"), carriedOut);
    expectParts(20);
    EXPECT_EQ(commitFiles(), Lines{});
    EXPECT_EQ(companion.log().back(), L"stopped");
}

TEST_F(CommitQueue, keepsARecordWrittenDuringTheEnd)
{
    std::string record = formatCommitRecord(noId, numberedPart(1));
    {
        const CompanionProgram companion(installation);
        ASSERT_NE(companion.waitForWindow(), nullptr);
        CommitAppend late(commitFile(companion.process().id()));
        EXPECT_EQ(companion.run(L"--quit"), carriedOut);
        EXPECT_TRUE(late.lock(record.size()));
        EXPECT_TRUE(late.write(record));
        late.unlock();
        EXPECT_EQ(companion.count(L"commit"), 0u);
    }
    const CompanionProgram companion(installation);
    ASSERT_TRUE(waitForVersion(companion, partName(1), 1));
    expectParts(1);
    EXPECT_TRUE(waitUntil([this] { return commitFiles().empty(); }));
}

// Two hosts that append alternately: each seeks to the end only after the other has finished.
TEST_F(CommitQueue, processesRecordsOfTwoWritersInTurn)
{
    const CompanionProgram companion(installation);
    ASSERT_NE(companion.waitForWindow(), nullptr);
    const std::wstring file = commitFile(companion.process().id());
    constexpr int each = 50;
    std::vector<std::string> records(1);
    for (int number = 1; number <= 2 * each; ++number)
        records.push_back(formatCommitRecord(noId, numberedPart(number)));
    std::mutex turn;
    const auto write = [&](int first) {
        for (int number = first; number <= 2 * each; number += 2) {
            const std::lock_guard mine(turn);
            appendCommit(file, records[static_cast<size_t>(number)]);
        }
    };
    std::thread odd(write, 1);
    std::thread even(write, 2);
    odd.join();
    even.join();
    ASSERT_TRUE(companion.waitForLog(L"version name", 2 * each));
    Lines odds, evens, expectedOdds, expectedEvens;
    for (const std::wstring& name : newParts())
        (std::stoi(name.substr(5)) % 2 == 1 ? odds : evens).push_back(name);
    for (int number = 1; number <= 2 * each; ++number)
        (number % 2 == 1 ? expectedOdds : expectedEvens).push_back(partName(number));
    EXPECT_EQ(odds, expectedOdds);
    EXPECT_EQ(evens, expectedEvens);
}

// Two hosts that append at the same time: one host's record may overwrite the other's, but nothing
// else is lost. Each stored record is one that was written, stored once, and later records are
// found.
TEST_F(CommitQueue, survivesTwoWritersAtOneEnd)
{
    const CompanionProgram companion(installation);
    ASSERT_NE(companion.waitForWindow(), nullptr);
    const std::wstring file = commitFile(companion.process().id());
    const std::string one = formatCommitRecord(noId, numberedPart(1));
    const std::string two = formatCommitRecord(noId, makePart(partName(2) + L", longer.mcam", "2"));
    {
        CommitAppend first(file);
        CommitAppend second(file);
        EXPECT_TRUE(first.lock(one.size()));
        EXPECT_FALSE(second.lock(two.size()));
        first.write(one);
        second.write(two);
        first.unlock();
    }
    appendCommit(file, formatCommitRecord(noId, numberedPart(3)));
    ASSERT_TRUE(waitForVersion(companion, partName(3), 1));
    const Lines names = newParts();
    EXPECT_EQ(std::count(names.begin(), names.end(), partName(3)), 1);
    EXPECT_EQ(names.size(), 2u);
}
