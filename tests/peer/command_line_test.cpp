#include "peer/command_line.h"

#include <gtest/gtest.h>

using namespace peer;

namespace peer {

bool operator==(const Command& a, const Command& b)
{
    return a.word == b.word && a.value == b.value && a.host == b.host &&
           a.parentWindow == b.parentWindow && a.id == b.id && a.ncPath == b.ncPath &&
           a.machine == b.machine;
}

} // namespace peer

namespace {

struct CommandLineCase {
    const wchar_t* arguments;
    Command expected;
};

void expectEach(const std::vector<CommandLineCase>& cases)
{
    for (const CommandLineCase& c : cases)
        EXPECT_TRUE(parseCommandLine(c.arguments) == c.expected) << "arguments: " << c.arguments;
}

void expectNoneUnderstood(const std::vector<const wchar_t*>& all)
{
    const Command notUnderstood{.word = Word::notUnderstood};
    for (const wchar_t* arguments : all)
        EXPECT_TRUE(parseCommandLine(arguments) == notUnderstood) << "arguments: " << arguments;
}

} // namespace

TEST(PeerCommandLine, mayBeEmpty)
{
    expectEach({{L"", {}}, {L"  \t ", {}}});
}

TEST(PeerCommandLine, parsesTheAddInsArguments)
{
    expectEach({
        {LR"(--checkout "")", {.word = Word::checkOut}},
        {LR"(--checkout "C:\a b.mcam")", {.word = Word::checkOut, .value = L"C:\\a b.mcam"}},
        {LR"(--commit "C:\a b.mcam")", {.word = Word::commit, .value = L"C:\\a b.mcam"}},
        {LR"(--commit "C:\a.mcam" --id 4294967295)",
         {.word = Word::commit, .value = L"C:\\a.mcam", .id = 4294967295}},
        {L"--about --parentwindow 4294967295", {.word = Word::about, .parentWindow = 4294967295}},
    });
}

TEST(PeerCommandLine, parsesTheArgumentsOfScripts)
{
    expectEach({
        {L"--about", {.word = Word::about}},
        {L"--send bracket", {.word = Word::send, .value = L"bracket"}},
        {LR"(--send "clamp jaw" --ncpath -1 --id -2147483648 --host 8 --machine "C:\M\a b.mmd")",
         {.word = Word::send,
          .value = L"clamp jaw",
          .host = 8,
          .id = -2147483648LL,
          .ncPath = -1,
          .machine = L"C:\\M\\a b.mmd"}},
        {LR"(--send 17 --machine "")", {.word = Word::send, .value = L"17", .machine = L""}},
        {L"--new-file", {.word = Word::newFile}},
        {L"--new-file --host 300 --id 0", {.word = Word::newFile, .host = 300, .id = 0}},
        {L"--check-in", {.word = Word::checkIn}},
        {L"--check-in --host 4294967295", {.word = Word::checkIn, .host = 4294967295}},
        {L"--quit", {.word = Word::quit}},
        {L"--register", {.word = Word::registerFolder}},
        {L"--help", {.word = Word::help}},
    });
}

TEST(PeerCommandLine, doesNotEscapeWithBackslash)
{
    expectEach({{LR"(--checkout "C:\temp\")", {.word = Word::checkOut, .value = L"C:\\temp\\"}}});
}

TEST(PeerCommandLine, splitsAtSpacesOutsideQuotes)
{
    expectEach({{L"  --send\t \tbracket  ", {.word = Word::send, .value = L"bracket"}},
                {L"--send bra\"ck et\"s", {.word = Word::send, .value = L"brack ets"}}});
}

TEST(PeerCommandLine, rejectsMissingValues)
{
    expectNoneUnderstood({L"--checkout", L"--commit", L"--send", L"--send bracket --host",
                          L"--commit a --id", L"--about --parentwindow"});
}

TEST(PeerCommandLine, rejectsNumbersOutOfRange)
{
    expectNoneUnderstood(
        {L"--commit a --id 4294967296", L"--commit a --id -1", L"--send a --id 2147483648",
         L"--send a --id -2147483649", L"--send a --host -1", L"--send a --host 4294967296",
         L"--send a --ncpath 2147483648", L"--send a --id 1x", L"--send a --id \"\"",
         L"--send a --id +1", L"--about --parentwindow -1"});
}

TEST(PeerCommandLine, rejectsRepeatedOptions)
{
    expectNoneUnderstood({L"--send a --host 1 --host 1", L"--send a --machine b --machine b",
                          L"--send a --ncpath 1 --ncpath 1", L"--new-file --id 1 --id 1",
                          L"--about --parentwindow 1 --parentwindow 1"});
}

TEST(PeerCommandLine, rejectsOptionsOfOtherCommands)
{
    expectNoneUnderstood({L"--checkout a --id 1", L"--commit a --host 1", L"--about --id 1",
                          L"--new-file --machine a", L"--check-in --id 1", L"--quit --id 1",
                          L"--register now", L"--send a --parentwindow 1"});
}

TEST(PeerCommandLine, rejectsUnknownCommands)
{
    expectNoneUnderstood({L"bracket", L"--SEND a", L"--sen a", L"--", L"\"\"", L"--host 1",
                          L"--send a b c", L"--send a --machine"});
}

TEST(PeerProgramName, isSkippedWithSpacesAfterIt)
{
    EXPECT_EQ(skipProgramName(L"\"C:\\T V\\zem.exe\" --send \"a b\""), L"--send \"a b\"");
    EXPECT_EQ(skipProgramName(L"zem.exe \t --quit "), L"--quit ");
    EXPECT_EQ(skipProgramName(L"\"zem.exe\"--quit"), L"--quit");
}

TEST(PeerProgramName, mayBeTheWholeLine)
{
    for (const wchar_t* line : {L"", L"zem.exe", L"zem.exe  ", L"\"C:\\T V\\zem.exe\"",
                                L"\"C:\\T V\\zem.exe\" \t", L"\"unfinished"})
        EXPECT_EQ(skipProgramName(line), L"") << line;
}

TEST(PeerCommandLine, helpListsEveryWordWithItsOptions)
{
    const std::wstring help = commandLineHelp();
    for (const wchar_t* line :
         {L"  --checkout FILE\n", L"  --commit FILE [--id N]\n", L"  --about [--parentwindow N]\n",
          L"  --send NAME [--host PID] [--id N] [--machine PATH] [--ncpath N]\n",
          L"  --new-file [--host PID] [--id N]\n", L"  --check-in [--host PID]\n", L"  --quit\n",
          L"  --register\n", L"  --help\n", L"\n  --host PID: "})
        EXPECT_NE(help.find(line), help.npos) << line;
}
