#include "peer/commit_record.h"

#include <gtest/gtest.h>

using namespace peer;
using namespace std::string_literals;

namespace {

// Id 42, length 9, `C:\a.mcam`.
const std::string record42 = "\x2A\0\0\0\x09\0\0\0C\0:\0\\\0a\0.\0m\0c\0a\0m\0"s;
// Id 4294967295, length 3, `C:\`.
const std::string recordWithoutId = "\xFF\xFF\xFF\xFF\x03\0\0\0C\0:\0\\\0"s;

void expectRecord(const std::string& bytes, std::uint32_t id, const std::wstring& file, size_t size)
{
    const Piece piece = parsePiece(bytes);
    ASSERT_EQ(piece.kind, PieceKind::record);
    EXPECT_EQ(piece.size, size);
    EXPECT_EQ(piece.record.id, id);
    EXPECT_EQ(piece.record.file, file);
}

void expectIncomplete(const std::string& bytes)
{
    const Piece piece = parsePiece(bytes);
    EXPECT_EQ(piece.kind, PieceKind::incomplete) << bytes.size();
    EXPECT_EQ(piece.size, bytes.size());
}

void expectForeign(const std::string& bytes, size_t size)
{
    const Piece piece = parsePiece(bytes);
    EXPECT_EQ(piece.kind, PieceKind::foreign);
    EXPECT_EQ(piece.size, size);
}

// A record's first eight bytes.
std::string head(const std::string& length)
{
    return "\x11\0\0\0"s + length;
}

} // namespace

TEST(PeerCommitRecord, isIdLengthAndName)
{
    expectRecord(record42, 42, L"C:\\a.mcam", 26);
    expectRecord(recordWithoutId, 4294967295, L"C:\\", 14);
    expectRecord("\x04\x03\x02\x81\x01\0\0\0x\0"s, 0x81020304, L"x", 10);
}

TEST(PeerCommitRecord, endsWhereTheNextStarts)
{
    expectRecord(record42 + recordWithoutId, 42, L"C:\\a.mcam", 26);
    expectRecord(record42 + "\x07", 42, L"C:\\a.mcam", 26);
}

TEST(PeerCommitRecord, keepsEveryUnitOfTheName)
{
    expectRecord(head("\x04\0\0\0"s) + "\x3D\xD8\x00\xDE\x2D\x4E\xFF\xFF"s, 17,
                 L"\xD83D\xDE00\x4E2D\xFFFF", 16);
    expectRecord(head("\x01\0\0\0"s) + "\x00\xDC"s, 17, L"\xDC00", 10); // an unpaired surrogate
    expectRecord(head("\x01\0\0\0"s) + " \0"s, 17, L" ", 10);
}

TEST(PeerCommitRecord, mayNameNoFile)
{
    expectRecord(head("\0\0\0\0"s), 17, L"", 8);
    expectRecord("\xFF\xFF\xFF\xFF\0\0\0\0"s, 4294967295, L"", 8);
}

TEST(PeerCommitRecord, nameIsAtMost32767Units)
{
    std::string longest = head("\xFF\x7F\0\0"s);
    for (int i = 0; i < 32767; ++i)
        longest += "a\0"s;
    expectRecord(longest, 17, std::wstring(32767, L'a'), longestCommitRecord);
    expectForeign(head("\0\x80\0\0"s) + "a\0"s, 10);
    expectForeign(head("\xFF\xFF\xFF\xFF"s), 8);
}

TEST(PeerCommitRecord, isIncompleteUntilItsLastByte)
{
    for (size_t size = 0; size < record42.size(); ++size)
        expectIncomplete(record42.substr(0, size));
}

TEST(PeerForeignBytes, endAtARecordWithAFullPath)
{
    expectForeign("garbage, and more of it" + record42 + recordWithoutId, 23);
    expectForeign("garbage, and more of it", 23);
    expectForeign("garbage, and more of it" + record42.substr(0, 14), 23);
    const std::string share = head("\x04\0\0\0"s) + "\\\0\\\0a\0b\0"s;
    expectForeign("garbage!" + share, 8);
}

TEST(PeerForeignBytes, includeZeroBytes)
{
    expectForeign(std::string(8, '\0'), 8);
    for (const size_t size : {8u, 9u, 26u, 27u, 1000u})
        expectForeign(std::string(size, '\0') + record42, size);
}

TEST(PeerForeignBytes, includeUnfinishedRecords)
{
    for (size_t size = 1; size < record42.size(); ++size)
        expectForeign(record42.substr(0, size) + recordWithoutId, size);
}

TEST(PeerForeignBytes, includeATooLargeLength)
{
    expectForeign(head("\xFF\x7F\0\0"s) + "a\0b\0"s + record42, 12);
}

TEST(PeerCommitRecord, isFormatted)
{
    EXPECT_EQ(formatCommitRecord({42, L"C:\\a.mcam"}), record42);
    EXPECT_EQ(formatCommitRecord({4294967295, L"C:\\"}), recordWithoutId);
    EXPECT_EQ(formatCommitRecord({0, L"\xD83D\x4E2D"}), "\0\0\0\0\x02\0\0\0\x3D\xD8\x2D\x4E"s);
}

TEST(PeerFullPath, startsWithADriveOrAShare)
{
    for (const wchar_t* path : {L"C:\\", L"z:\\a b", L"C:/a", L"\\\\server\\a", L"\\\\?\\C:\\a"})
        EXPECT_TRUE(isFullPath(path)) << path;
    for (const wchar_t* path : {L"", L"C:", L"C:a", L"1:\\", L"\\a\\b", L"a.mcam", L"\\\\"})
        EXPECT_FALSE(isFullPath(path)) << path;
}
