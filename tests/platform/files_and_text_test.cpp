#include "dormant/dormant.h"
#include "companion/debug_log.h"
#include "platform/files.h"
#include "platform/narrow_text.h"
#include "support/bytes.h"
#include "support/installation.h"
#include "support/system_calls.h"
#include "host/message_box.h"

#include <gtest/gtest.h>
#include <windows.h>

using namespace torvapdm;
using namespace testing_support;

namespace {

// For each closed stream, whether it was null.
std::vector<bool> closedStreams;

int __cdecl notedCloseStream(FILE* stream)
{
    closedStreams.push_back(!stream);
    return systems(&fclose, "fclose", cLibrary)(stream);
}

// Refuses flags for the code pages that have every character, as Windows does. Wine lacks one of
// them.
int WINAPI convertAsWindowsDoes(UINT codePage, DWORD flags, LPCWCH text, int length, LPSTR bytes,
                                int size, LPCCH unknown, LPBOOL hasUnknown)
{
    auto* const convert = systems(&WideCharToMultiByte, "WideCharToMultiByte");
    if (flags != 0 && (codePage == CP_UTF8 || codePage == 54936))
        return 0;
    return convert(codePage == 54936 ? 1252 : codePage, flags, text, length, bytes, size, unknown,
                   hasUnknown);
}

} // namespace

TEST(Paths, distinguishFilesFromFolders)
{
    const Installation installation;
    const std::wstring file = installation.path(L"file.txt");
    writeBytes(file, "12345");
    EXPECT_TRUE(fileExists(file));
    EXPECT_TRUE(pathExists(file));
    EXPECT_FALSE(fileExists(installation.path(L"temp")));
    EXPECT_TRUE(pathExists(installation.path(L"temp")));
    EXPECT_FALSE(fileExists(installation.path(L"none")));
    EXPECT_FALSE(pathExists(installation.path(L"none")));
    EXPECT_FALSE(fileExists(L""));
}

TEST(GetFileSize, returnsTheSize)
{
    const Installation installation;
    writeBytes(installation.path(L"file.txt"), std::string(70000, 'x'));
    EXPECT_EQ(getFileSize(installation.path(L"file.txt")), 70000);
    EXPECT_EQ(getFileSize(installation.path(L"none.txt")), 0);
}

TEST(DebugLog, appendsOnlyTheFormattedText)
{
    const Installation installation;
    debugLog("Loading File #%d: %s\n", 1, "C:\\a.mcam");
    debugLog("%s", "no line end");
    debugLog("\xC4\n");
    EXPECT_EQ(readBytes(installation.path(L"sys\\mcxlog.txt")),
              "Loading File #1: C:\\a.mcam\r\nno line end\xC4\r\n");
}

TEST(DebugLog, survivesAFileThatCannotBeOpened)
{
    const Installation installation;
    removeFolder(installation.path(L"sys"));
    debugLog("lost %d\n", 1);
    EXPECT_FALSE(pathExists(installation.path(L"sys")));
}

TEST(DebugLog, isNotWrittenUnderATruncatedPath)
{
    const Installation installation;
    const std::wstring other = installation.path(L"precious.txt");
    writeBytes(other, "precious");
    registerInstallation(other + L'\u0100'); // becomes a NUL
    debugLog("lost\n");
    EXPECT_EQ(readBytes(other), "precious");
}

TEST(DebugLog, closesItsStreamOnce)
{
    const Installation installation;
    redirectCalls(&fclose, "fclose", &notedCloseStream, cLibrary);
    debugLog("written\n");
    removeFolder(installation.path(L"sys"));
    debugLog("lost\n");
    EXPECT_EQ(closedStreams, (std::vector<bool>{false, true}));
}

TEST(Text, becomesNarrowWithoutATerminator)
{
    EXPECT_EQ(toNarrow(L"a\u00C4\u20AC", 1252), "a\xC4\x80");
    EXPECT_EQ(toNarrow(L"a\u00C4", CP_UTF8), "a\xC3\x84");
    EXPECT_EQ(toNarrow(L"\u4E00", 1252), "?");
    EXPECT_EQ(toNarrow(L"\u0100", 1252), "A"); // a similar character
    EXPECT_EQ(toNarrow(L"\u0100", 1252, WC_NO_BEST_FIT_CHARS), "?");
    EXPECT_EQ(toNarrow(L"", 1252), "");
    EXPECT_EQ(toNarrow(std::wstring(L"a\0b", 3), 1252), std::string("a\0b", 3));
}

TEST(Text, becomesUtf8WithoutFlags)
{
    redirectCalls(&WideCharToMultiByte, "WideCharToMultiByte", &convertAsWindowsDoes);
    EXPECT_EQ(toNarrow(L"a\u00C4", CP_UTF8, WC_NO_BEST_FIT_CHARS), "a\xC3\x84");
    EXPECT_EQ(toNarrow(L"a", 54936, WC_NO_BEST_FIT_CHARS), "a");
    EXPECT_EQ(toNarrow(L"\u0100", 1252, WC_NO_BEST_FIT_CHARS), "?");
}

TEST(Text, becomesWideUpToItsFirstNul)
{
    EXPECT_EQ(toWide("a\xC4\x80", 1252), L"a\u00C4\u20AC");
    EXPECT_EQ(toWide("a\xC3\x84", CP_UTF8), L"a\u00C4");
    EXPECT_EQ(toWide("", 1252), L"");
    EXPECT_EQ(toWide("a\xFF", CP_UTF8), L"a\uFFFD"); // invalid bytes are replaced
    EXPECT_EQ(toWide(std::string("a\0b", 3), 1252), L"a");
}

TEST(Text, usesTheSystemsCodePage)
{
    const std::wstring text = L"C:\\Parts \u00C4";
    EXPECT_EQ(toNarrowAnsi(text), toNarrow(text, GetACP()));
    EXPECT_EQ(toWideAnsi("C:\\Parts \xC4"), toWide("C:\\Parts \xC4", GetACP()));
}

TEST(Text, isNarrowedWithinTheLocale)
{
    EXPECT_EQ(toNarrowByRuntime(L"C:\\TORVA"), "C:\\TORVA");
    EXPECT_EQ(toNarrowByRuntime(L"C:\\\u4E00"), "");
    EXPECT_EQ(toNarrowByRuntime(L""), "");
}

TEST(Text, isCutToItsLowBytes)
{
    EXPECT_EQ(truncateToBytes(L"a\u00C4\u4E41"), "a\xC4"
                                                 "A");
}

TEST(Text, isTranslatedToItself)
{
    EXPECT_EQ(translateText(0, L"The file does not exist."), L"The file does not exist.");
    EXPECT_EQ(translateText(7, L""), L"");
}

TEST(WholeText, isReadAsUtf8)
{
    const Installation installation;
    writeBytes(installation.path(L"t.txt"), "\xEF\xBB\xBF"
                                            "a\xC3\x84\r\nb");
    EXPECT_EQ(readWholeText(installation.path(L"t.txt")), L"a\u00C4\nb");
    EXPECT_TRUE(DeleteFileW(installation.path(L"t.txt").c_str())); // closed again
    writeBytes(installation.path(L"t.txt"), "no mark \xC3\x84");
    EXPECT_EQ(readWholeText(installation.path(L"t.txt")), L"no mark \u00C4");
}

TEST(WholeText, goesOnAfterU0000AndUffff)
{
    const Installation installation;
    writeBytes(installation.path(L"t.txt"), std::string("a\0b\n", 4) + "\xEF\xBF\xBF" + "c");
    EXPECT_EQ(readWholeText(installation.path(L"t.txt")), std::wstring(L"a\0b\n\xFFFF", 5) + L"c");
}

TEST(WholeText, reportsOnStandardOutput)
{
    const Installation installation;
    writeBytes(installation.path(L"t.txt"), "a");
    testing::internal::CaptureStdout();
    readWholeText(installation.path(L"t.txt"));
    EXPECT_EQ(readWholeText(installation.path(L"none.txt")), L"");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "File Open Success\nFile Open Error\n");
}
