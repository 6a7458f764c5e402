// The stand-in Companion's program on its own: single instance, arguments, log and delivery of
// requests. The test acts as the host with the add-in.
#include "support/companion_program.h"
#include "zemlink/tool_run.h"

#include <gtest/gtest.h>

using namespace testing_support;

#define MARK "\xEF\xBB\xBF"

namespace {

constexpr wchar_t singletonName[] =
    L"Local\\https://torva.example/namespace/torvapdm/singleton-token";
constexpr wchar_t hostProperty[] = L"https://torva.example/namespace/torvapdm/mastercam-instance";
constexpr wchar_t companionKey[] = L"SOFTWARE\\TORVA AS\\ZEM";
constexpr wchar_t folderValue[] = L"installation folder";

bool semaphoreExists()
{
    const HANDLE semaphore = OpenSemaphoreW(SEMAPHORE_MODIFY_STATE, FALSE, singletonName);
    if (semaphore)
        CloseHandle(semaphore);
    return semaphore != nullptr;
}

std::wstring registeredFolder()
{
    wchar_t folder[MAX_PATH] = L"";
    DWORD size = sizeof folder;
    RegGetValueW(HKEY_CURRENT_USER, companionKey, folderValue,
                 RRF_RT_REG_SZ | RRF_SUBKEY_WOW6432KEY, nullptr, folder, &size);
    return folder;
}

class Companion : public ::testing::Test {
protected:
    Companion() { installCompanionWithLibrary(installation); }

    std::wstring workFile(const std::wstring& name) const
    {
        return installation.path(L"work\\" + name + L".mcam");
    }
    std::optional<std::string> libraryBytes(const std::wstring& file) const
    {
        return readBytes(installation.path(L"library\\" + file));
    }

    Installation installation{Registry::ofTheUser};
};

// Makes this process a host that the Companion finds by its command file.
class CompanionDelivery : public Companion {
protected:
    CompanionDelivery() { writeBytes(commandFile, ""); }

    std::wstring toThisHost() const { return L" --host " + self; }
    std::string openRequest(int id, const std::wstring& name) const
    {
        return MARK + std::to_string(id) + " " + toUtf8(workFile(name)) + "\n";
    }
    // Receives the next request as the add-in does: reads the command file, deletes it and creates
    // it again.
    std::string takeRequest() const
    {
        waitUntil([this] { return readBytes(commandFile).value_or("") != ""; });
        const std::string request = readBytes(commandFile).value_or("");
        DeleteFileW(commandFile.c_str());
        writeBytes(commandFile, "");
        return request;
    }
    // `sent id=17 host=4711 file="…"` for this host.
    std::wstring event(const std::wstring& word, int id, const std::wstring& rest) const
    {
        return word + L" id=" + std::to_wstring(id) + L" host=" + self + rest;
    }

    // The log events for this host except `command`, each cut off before ` after=`.
    Lines deliveryEvents(const CompanionProgram& companion) const
    {
        Lines found;
        for (const std::wstring& line : companion.log()) {
            const std::wstring head = line.substr(0, line.find(L" after="));
            if (head.find(L" host=" + self) != head.npos && head.rfind(L"command ", 0) != 0)
                found.push_back(head);
        }
        return found;
    }

    const std::wstring self = std::to_wstring(GetCurrentProcessId());
    const std::wstring commandFile = installation.commandFile(GetCurrentProcessId());
    const std::string mill = "C:\\Machines\\Mill 3-axis.mcam-mmd";
};

} // namespace

TEST_F(Companion, marksItselfAsRunning)
{
    EXPECT_FALSE(semaphoreExists());
    const CompanionProgram companion(installation);
    const HWND window = companion.waitForWindow();
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(semaphoreExists());
    EXPECT_TRUE(waitUntil([&] { return IsWindowVisible(window) != FALSE; }));
}

TEST_F(Companion, logsItsStartAndItsLibrary)
{
    const CompanionProgram companion(installation);
    ASSERT_NE(companion.waitForWindow(), nullptr);
    EXPECT_EQ(companion.log(), (Lines{L"started folder=\"" + installation.root() + L"\" pid=" +
                                          std::to_wstring(companion.process().id()),
                                      L"library items=4"}));
    const std::string bytes = readBytes(installation.path(L"sys\\companion.log")).value_or("");
    EXPECT_EQ(bytes[4], '-');
    EXPECT_EQ(bytes[10], ' ');
    EXPECT_EQ(bytes[13], ':');
    EXPECT_EQ(bytes.substr(19, 1), ".");
    EXPECT_EQ(bytes.substr(23, 9), " started ");
    EXPECT_EQ(bytes.find('\r'), bytes.npos);
}

TEST_F(Companion, makesTheFoldersOfTheExchanges)
{
    for (const wchar_t* folder : {L"cfg", L"sys", L"temp", L"tmp", L"commit"})
        removeFolder(installation.path(folder));
    const CompanionProgram companion(installation);
    ASSERT_NE(companion.waitForWindow(), nullptr);
    for (const wchar_t* folder : {L"cfg", L"sys", L"temp", L"tmp", L"commit"})
        EXPECT_TRUE(CreateDirectoryW(installation.path(folder).c_str(), nullptr) == FALSE)
            << folder;
}

TEST_F(Companion, executesTheArgumentsOfASecondStart)
{
    const CompanionProgram companion(installation);
    EXPECT_EQ(companion.run(LR"(--checkout "C:\a b\")"), carriedOut);
    EXPECT_EQ(companion.run(LR"(--commit "C:\a b.mcam" --id 4294967295)"), carriedOut);
    ASSERT_TRUE(companion.waitForLog(L"commit-failed "));
    EXPECT_EQ(companion.run(LR"(--commit "C:\a.mcam")"), carriedOut);
    ASSERT_TRUE(companion.waitForLog(L"commit-failed ", 2));
    EXPECT_EQ(companion.run(L""), carriedOut);
    Lines log = companion.log();
    log.erase(log.begin(), log.begin() + 2);
    const std::wstring none = L" id=4294967295 reason=\"there is no such file\"";
    EXPECT_EQ(log, (Lines{LR"(command text="--checkout "C:\a b\"")", LR"(check-out file="C:\a b\")",
                          LR"(command text="--commit "C:\a b.mcam" --id 4294967295")",
                          LR"(commit file="C:\a b.mcam" id=4294967295)",
                          LR"(commit-failed file="C:\a b.mcam")" + none,
                          LR"(command text="--commit "C:\a.mcam"")", LR"(commit file="C:\a.mcam")",
                          LR"(commit-failed file="C:\a.mcam")" + none, LR"(command text="")"}));
}

TEST_F(Companion, reportsRefusedArgumentsToASecondStart)
{
    const CompanionProgram companion(installation);
    const std::pair<const wchar_t*, const wchar_t*> refused[] = {
        {L"--jump \u4E2D", L"not-understood text=\"--jump \u4E2D\""},
        {L"--send nothing", LR"(refused reason="the library has no item nothing")"},
        {L"--send bracket", LR"(refused reason="no host is running")"},
        {L"--new-file", LR"(refused reason="no host is running")"},
        {L"--check-in --host 4294967295", LR"(refused reason="host 4294967295 is not running")"}};
    for (const auto& [arguments, line] : refused) {
        EXPECT_EQ(companion.run(arguments), notCarriedOut) << arguments;
        EXPECT_EQ(companion.log().back(), line);
    }
    EXPECT_EQ(companion.count(L"started"), 1u);
}

TEST_F(Companion, executesTheArgumentsOfItsOwnStart)
{
    const CompanionProgram companion(installation, LR"(--checkout "C:\a.mcam")");
    EXPECT_TRUE(companion.waitForLog(LR"(check-out file="C:\a.mcam")"));
    EXPECT_EQ(companion.log().front().rfind(L"started ", 0), 0u);
    EXPECT_TRUE(companion.process().isRunning());
}

TEST_F(Companion, showsAboutOverTheAskingWindow)
{
    const HWND asking = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 600, 400, 400, 300, nullptr,
                                        nullptr, nullptr, nullptr);
    const auto number = std::to_wstring(static_cast<DWORD>(reinterpret_cast<UINT_PTR>(asking)));
    const CompanionProgram companion(installation);
    EXPECT_EQ(companion.run(L"--about --parentwindow " + number), carriedOut);
    EXPECT_TRUE(companion.waitForLog(L"about parent=" + number));
    const HWND about = FindWindowW(nullptr, L"About TORVA ZEM");
    ASSERT_NE(about, nullptr);
    RECT area{};
    GetWindowRect(about, &area);
    EXPECT_NEAR((area.left + area.right) / 2, 800, 1);
    EXPECT_NEAR((area.top + area.bottom) / 2, 550, 1);
    DestroyWindow(asking);
}

TEST_F(Companion, endsWhenAskedToAndLogsItLast)
{
    const CompanionProgram companion(installation);
    EXPECT_EQ(companion.run(L"--quit"), carriedOut);
    EXPECT_EQ(companion.process().waitForExit(), 0u);
    EXPECT_EQ(companion.log().back(), L"stopped");
    EXPECT_FALSE(semaphoreExists());
}

TEST_F(Companion, isNotStartedByAQuitRequest)
{
    EXPECT_EQ(startCompanion(installation, L"--quit"), carriedOut);
    EXPECT_FALSE(readBytes(installation.path(L"sys\\companion.log")).has_value());
}

TEST_F(Companion, endsWithItsWindow)
{
    const CompanionProgram companion(installation);
    PostMessageW(companion.waitForWindow(), WM_CLOSE, 0, 0);
    EXPECT_EQ(companion.process().waitForExit(), 0u);
    EXPECT_EQ(companion.log().back(), L"stopped");
}

TEST_F(Companion, registersItsFolder)
{
    RegDeleteKeyExW(HKEY_CURRENT_USER, companionKey, KEY_WOW64_32KEY, 0);
    ASSERT_EQ(registeredFolder(), L"");
    EXPECT_EQ(startCompanion(installation, L"--register"), carriedOut);
    EXPECT_EQ(registeredFolder(), installation.root());
    EXPECT_FALSE(semaphoreExists());
}

TEST_F(Companion, logsBadLinesOfAChangedLibrary)
{
    const CompanionProgram companion(installation);
    ASSERT_TRUE(companion.waitForLog(L"library items=4"));
    writeBytes(installation.path(L"library\\library.txt"), "# none\nbad\n");
    EXPECT_TRUE(companion.waitForLog(L"library-line-bad line=2"));
    EXPECT_EQ(companion.count(L"library items=0"), 1u);
}

TEST_F(CompanionDelivery, writesAnOpenRequestAndSettings)
{
    const CompanionProgram companion(installation);
    EXPECT_EQ(companion.run(L"--send bracket" + toThisHost()), carriedOut);
    ASSERT_TRUE(companion.waitForLog(L"sent "));
    const std::wstring settings = installation.path(L"temp\\mcsettings-17.txt");
    EXPECT_EQ(readBytes(settings), "17|3|0|" + mill + "\r\n");
    EXPECT_EQ(readBytes(workFile(L"bracket")), libraryBytes(L"bracket\\v1.mcam"));
    EXPECT_EQ(takeRequest(), openRequest(17, L"bracket"));
    ASSERT_TRUE(companion.waitForLog(L"taken "));
    Lines log = companion.log();
    const std::wstring taken = log.back();
    log.pop_back();
    log.erase(log.begin(), log.begin() + 3);
    EXPECT_EQ(log, (Lines{event(L"settings", 17, L" file=\"" + settings + L"\""),
                          event(L"sent", 17, L" file=\"" + workFile(L"bracket") + L"\"")}));
    EXPECT_EQ(taken.rfind(event(L"taken", 17, L" after="), 0), 0u) << toUtf8(taken);
    EXPECT_EQ(taken.substr(taken.size() - 15), L"ms request=open");
}

TEST_F(CompanionDelivery, usesTheGivenIdMachineAndNcPath)
{
    const CompanionProgram companion(installation);
    EXPECT_EQ(companion.run(LR"(--send "CLAMP JAW" --id -7 --ncpath 9 --machine "C:\M \a.mmd")" +
                            toThisHost()),
              carriedOut);
    EXPECT_EQ(takeRequest(), openRequest(-7, L"clamp jaw"));
    EXPECT_EQ(readBytes(installation.path(L"temp\\mcsettings--7.txt")), "-7|9|0|C:\\M \\a.mmd\r\n");
}

TEST_F(CompanionDelivery, removesSettingsWithoutAMachine)
{
    const std::wstring settings = installation.path(L"temp\\mcsettings-23.txt");
    writeBytes(settings, "23|1|0|left over\r\n");
    const CompanionProgram companion(installation);
    EXPECT_EQ(companion.run(L"--send 23 --machine \"\"" + toThisHost()), carriedOut);
    EXPECT_EQ(takeRequest(), openRequest(23, L"flange"));
    EXPECT_FALSE(readBytes(settings).has_value());
    EXPECT_EQ(companion.count(L"settings "), 0u);
}

TEST_F(CompanionDelivery, refusesABarInTheMachinePath)
{
    const CompanionProgram companion(installation);
    EXPECT_EQ(companion.run(L"--send 23 --machine \"a|b\"" + toThisHost()), notCarriedOut);
    EXPECT_EQ(companion.lastLine(L"refused"),
              LR"(refused reason="the path of the machine definition cannot be passed on")");
    EXPECT_EQ(readBytes(commandFile), "");
}

TEST_F(CompanionDelivery, writesNewFileAndCheckIn)
{
    const CompanionProgram companion(installation);
    EXPECT_EQ(companion.run(L"--new-file --id 5" + toThisHost()), carriedOut);
    EXPECT_EQ(takeRequest(), MARK "5 \n");
    EXPECT_EQ(companion.run(L"--check-in" + toThisHost()), carriedOut);
    EXPECT_EQ(takeRequest(), "CHECKIN ");
    EXPECT_EQ(companion.run(L"--send 31" + toThisHost()), carriedOut);
    EXPECT_EQ(takeRequest(), openRequest(31, L"pump cover"));
    EXPECT_EQ(companion.run(L"--check-in" + toThisHost()), carriedOut);
    EXPECT_EQ(takeRequest(), "CHECKIN pump cover.mcam");
    ASSERT_TRUE(companion.waitForLog(L"taken ", 4));
    EXPECT_EQ(companion.lastLine(L"new-file id"), event(L"new-file", 5, L""));
    EXPECT_EQ(companion.lastLine(L"check-in id"),
              event(L"check-in", 0, L" name=\"pump cover.mcam\""));
    EXPECT_EQ(companion.count(L"request=check-in"), 2u);
    EXPECT_EQ(companion.count(L"request=new-file"), 1u);
}

TEST_F(CompanionDelivery, sendsTheCurrentVersion)
{
    const CompanionProgram companion(installation);
    ASSERT_NE(companion.waitForWindow(), nullptr); // it has already read the index
    writeBytes(installation.path(L"library\\bracket\\v2.mcam"), "second version");
    writeBytes(installation.path(L"library\\library.txt"), "17|bracket|2|3||changed\n"
                                                           "18|gone|1|3||no file\n");
    EXPECT_EQ(companion.run(L"--send 17" + toThisHost()), carriedOut);
    EXPECT_EQ(takeRequest(), openRequest(17, L"bracket"));
    EXPECT_EQ(readBytes(workFile(L"bracket")), "second version");
    EXPECT_EQ(companion.run(L"--send gone" + toThisHost()), notCarriedOut);
    EXPECT_EQ(companion.lastLine(L"refused"), L"refused reason=\"there is no file " +
                                                  installation.path(L"library\\gone\\v1.mcam") +
                                                  L"\"");
}

TEST_F(CompanionDelivery, keepsRequestsInOrder)
{
    constexpr int requests = 5; // few: an unread request times out after ten seconds
    const CompanionProgram companion(installation);
    for (int id = 1; id <= requests; ++id)
        ASSERT_EQ(companion.run(L"--new-file --id " + std::to_wstring(id) + toThisHost()),
                  carriedOut);
    for (int id = 1; id <= requests; ++id)
        ASSERT_EQ(takeRequest(), MARK + std::to_string(id) + " \n");
    EXPECT_TRUE(companion.waitForLog(L"taken ", requests));
    EXPECT_EQ(companion.count(L"not-"), 0u);
    Lines expected;
    for (int id = 1; id <= requests; ++id) {
        expected.push_back(event(L"new-file", id, L""));
        expected.push_back(event(L"taken", id, L""));
    }
    EXPECT_EQ(deliveryEvents(companion), expected);
}

TEST_F(CompanionDelivery, servesAHostWhileAnotherHangs)
{
    const std::wstring otherFile = installation.commandFile(4294967295);
    writeBytes(otherFile, "");
    const CompanionProgram companion(installation);
    EXPECT_EQ(companion.run(L"--new-file --id 1" + toThisHost()), carriedOut);
    EXPECT_EQ(companion.run(L"--new-file --id 2" + toThisHost()), carriedOut);
    EXPECT_EQ(companion.run(L"--new-file --id 3 --host 4294967295"), carriedOut);
    EXPECT_TRUE(waitUntil([&] { return readBytes(otherFile) == MARK "3 \n"; }));
    EXPECT_EQ(readBytes(commandFile), MARK "1 \n");
}

TEST_F(CompanionDelivery, givesUpDeliveriesAtItsEnd)
{
    const CompanionProgram companion(installation);
    EXPECT_EQ(companion.run(L"--send bracket" + toThisHost()), carriedOut);
    ASSERT_TRUE(companion.waitForLog(L"sent "));
    EXPECT_EQ(companion.run(L"--new-file --id 2" + toThisHost()), carriedOut);
    EXPECT_EQ(companion.run(L"--quit"), carriedOut);
    Lines log = companion.log();
    ASSERT_GE(log.size(), 3u);
    EXPECT_EQ(log.back(), L"stopped");
    EXPECT_EQ(log[log.size() - 2],
              event(L"not-sent", 2, LR"( reason="the program ends" request=new-file)"));
    EXPECT_EQ(log[log.size() - 3].rfind(event(L"not-taken", 17, L" after="), 0), 0u);
}

TEST_F(CompanionDelivery, givesUpWithoutACommandFile)
{
    const HWND window = CreateWindowExW(0, L"STATIC", L"Host \u4E2D", WS_POPUP, 0, 0, 9, 9, nullptr,
                                        nullptr, nullptr, nullptr);
    SetPropW(window, hostProperty, reinterpret_cast<HANDLE>(INT_PTR{1}));
    DeleteFileW(commandFile.c_str());
    const CompanionProgram companion(installation);
    EXPECT_TRUE(companion.waitForLog(L"host-found host=" + self + L" title=\"Host \u4E2D\""));
    EXPECT_EQ(companion.run(L"--new-file"), carriedOut); // to the first running host
    EXPECT_TRUE(companion.waitForLog(
        event(L"not-sent", 0, LR"( reason="the host has no command file" request=new-file)")));
    DestroyWindow(window);
    EXPECT_TRUE(companion.waitForLog(L"host-gone host=" + self));
}

TEST_F(CompanionDelivery, offersItsCommandsAsButtons)
{
    const HWND window = CreateWindowExW(0, L"STATIC", L"Host", WS_POPUP, 0, 0, 9, 9, nullptr,
                                        nullptr, nullptr, nullptr);
    SetPropW(window, hostProperty, reinterpret_cast<HANDLE>(INT_PTR{1}));
    const CompanionProgram companion(installation);
    const HWND main = companion.waitForWindow();
    const std::pair<const wchar_t*, std::string> buttons[] = {
        {L"New file", MARK "0 \n"},
        {L"Send to host", openRequest(17, L"bracket")}, // the first part and the first host
        {L"Check in", "CHECKIN bracket.mcam"}};
    for (const auto& [text, request] : buttons) {
        const HWND button = FindWindowExW(main, nullptr, L"BUTTON", text);
        ASSERT_NE(button, nullptr) << text;
        ASSERT_TRUE(waitUntil([&] { return IsWindowEnabled(button) != FALSE; })) << text;
        PostMessageW(button, BM_CLICK, 0, 0);
        EXPECT_EQ(takeRequest(), request) << text;
    }
    DestroyWindow(window);
}

TEST_F(Companion, statusLineShowsTheOutcome)
{
    const CompanionProgram companion(installation);
    ASSERT_NE(companion.waitForWindow(), nullptr);
    const auto statusLine = [&] {
        constexpr int statusId = 107;
        wchar_t text[200] = L"";
        SendMessageW(GetDlgItem(companion.waitForWindow(), statusId), WM_GETTEXT, 200,
                     reinterpret_cast<LPARAM>(text));
        return std::wstring(text);
    };
    EXPECT_EQ(companion.run(L"--send nothing"), notCarriedOut);
    EXPECT_TRUE(
        waitUntil([&] { return statusLine() == L"Refused: the library has no item nothing."; }));
}

TEST_F(Companion, printsItsCommandsAndItsErrors)
{
    const auto run = [&](const std::wstring& arguments) {
        const ToolRun started(installation, arguments, L"second",
                              installation.path(L"TORVA-ZEM.exe"));
        const DWORD code = started.waitForExit().value_or(STILL_ACTIVE);
        return ToolResult{code, started.output(), started.errors()};
    };
    const ToolResult help = run(L"--help");
    EXPECT_EQ(help.exitCode, 0u);
    EXPECT_NE(help.output.find("\n  --send NAME [--host PID]"), help.output.npos) << help.output;
    EXPECT_EQ(help.errors, "");
    EXPECT_FALSE(readBytes(installation.path(L"sys\\companion.log")).has_value());

    const CompanionProgram companion(installation);
    ASSERT_NE(companion.waitForWindow(), nullptr);
    EXPECT_EQ(run(L"--jump").errors,
              "Not understood: --jump. TORVA-ZEM.exe --help lists the commands.\n");
    EXPECT_EQ(run(L"--send nothing").errors,
              "Not carried out; the window and sys\\companion.log show why.\n");
}
