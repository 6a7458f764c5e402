#include "incoming/load.h"

#include "incoming/open_file.h"
#include "host/host.h"
#include "host/message_box.h"
#include "support/add_in_state.h"
#include "support/companion_double.h"
#include "support/host_fixture.h"
#include "support/message_boxes.h"
#include "host/document.h"
#include "incoming/incoming_state.h"
#include "formats/wire_constants.h"
#include "support/system_calls.h"

#include <algorithm>
#include <cstdio>
#include <cwchar>

using namespace torvapdm;
using namespace testing_support;

namespace {

constexpr wchar_t notThere[] = LR"(ui message-box("TORVA ZEM", "The file does not exist."))";

class Load : public HostFixture {
protected:
    Load() { installation.endStandardInput(); }

    std::wstring opened(const std::wstring& path, const wchar_t* result = L"-> true")
    {
        return L"ui DoFileOpen(\"" + path + L"\", false, false, 1, true, *, null) " + result;
    }
    std::wstring saved(const std::wstring& path, const wchar_t* window = L"main",
                       const wchar_t* result = L"-> true")
    {
        return L"ui CFile_DoFileSave(\"" + path + L"\", " + window + L", false, false) " + result;
    }
    std::wstring introduced(const std::wstring& path)
    {
        return L"ui CMastercamInterface.position1(\"" + path + L"\")";
    }
    // The host calls of a complete load.
    Lines wholeLoad(const std::wstring& path)
    {
        return {opened(path),  unchanged,   introduced(path), viewRefreshed,
                hostRefreshed, saved(path), unchanged};
    }
    std::string logged(std::initializer_list<int> numbers, const std::wstring& path)
    {
        std::string text;
        for (const int number : numbers)
            text += "Loading File #" + std::to_string(number) + ": " + toUtf8(path) + "\r\n";
        return text;
    }
    void setSettings(std::string_view bytes)
    {
        writeBytes(installation.path(L"cfg\\settings.ini"), bytes);
    }

    const std::wstring unchanged = L"ui set_db_unchanged()";
    const std::wstring viewRefreshed = L"ui CMastercamView.position0()";
    const std::wstring hostRefreshed = L"ui CMastercamInterface.position3()";
};

// What is noted at each step: the number of log lines, the ZEM id and the document's name.
std::wstring watchedLog;

void noteLoadStep(const std::wstring& call)
{
    const std::string log = readBytes(watchedLog).value_or("");
    standin::trace(call + L' ' + std::to_wstring(std::ranges::count(log, '\n')) + L' ' +
                   std::to_wstring(static_cast<int>(AddInState::zemId())) + L' ' + hostFileName());
}

bool notedOpen(const wchar_t*, bool, bool, short, bool, bool* escaped, FileMergeOptions*)
{
    noteLoadStep(*escaped ? L"open, escaped" : L"open");
    return true;
}

bool notedActivate(const wchar_t*)
{
    noteLoadStep(L"machine");
    std::wcscpy(geo_filename, L"C:\\by the host.mcam");
    return true;
}

void notedUnchangedInLoad()
{
    noteLoadStep(L"unchanged");
}

bool notedSave(const wchar_t*, CWnd*, bool, bool)
{
    noteLoadStep(L"save");
    return true;
}

// Traces the calls of its members, and has no view and no window.
class TracedInterface final : public CMastercamInterface {
public:
    CString position0(const int*) override { return L""; }
    void position1(const CString&) override { standin::trace(L"path"); }
    CMastercamView* position2() override
    {
        standin::trace(L"view");
        return nullptr;
    }
    void position3() override { standin::trace(L"application"); }
    CWnd* position4() override
    {
        standin::trace(L"parent");
        return nullptr;
    }
    bool position5() override { return false; }
};

CMastercamInterface* tracedInterface()
{
    static TracedInterface application;
    return &application;
}

HMODULE WINAPI notedLoadLibrary(LPCWSTR path)
{
    noteLoadStep(path == programFolder() + L"chooks\\catread5x.dll" ? L"reader"
                                                                    : L"another reader");
    return nullptr;
}

BOOL WINAPI notedSetTitle(HWND window, LPCWSTR title)
{
    noteLoadStep(std::wstring(L"title ") + title);
    return systems(&SetWindowTextW, "SetWindowTextW", L"user32.dll")(window, title);
}

int raisingNotify(int)
{
    standin::raiseNext("has_db_changed");
    return has_db_changed();
}

FARPROC WINAPI raisingReader(HMODULE, LPCSTR)
{
    return reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&raisingNotify));
}

void noteEntries(const wchar_t* call)
{
    standin::trace(call + (L' ' + std::to_wstring(AddInState::recentFiles().size())));
}

BOOL WINAPI notedIsIconic(HWND)
{
    noteEntries(L"iconic");
    return TRUE;
}

BOOL WINAPI notedShow(HWND, int command)
{
    noteEntries((L"show " + std::to_wstring(command)).c_str());
    return TRUE;
}

HWND WINAPI notedActivateWindow(HWND)
{
    noteEntries(L"activate");
    return nullptr;
}

BOOL WINAPI notedAttributes(LPCWSTR, GET_FILEEX_INFO_LEVELS, LPVOID)
{
    noteEntries(L"exists");
    return FALSE;
}

} // namespace

// At each step: the number of log lines, the ZEM id (-1 for none) and the document's name.
TEST_F(Load, performsItsStepsInOrder)
{
    watchedLog = installation.path(L"sys\\mcxlog.txt");
    setSettings("MCXCATIA=y\n");
    writeBytes(installation.path(L"temp\\mcsettings-0.txt"), "C:\\M\n");
    standin::setState("title", L"Host");
    standin::setState("geo_filename", L"C:\\old.mcam");
    AddInState::setZemId(5);
    const HMODULE self = GetModuleHandleW(nullptr);
    standin::redirectImports(self, &DoFileOpen, &notedOpen);
    standin::redirectImports(self, &SetActiveMachine, &notedActivate);
    standin::redirectImports(self, &set_db_unchanged, &notedUnchangedInLoad);
    redirectCalls(&LoadLibraryW, "LoadLibraryW", &notedLoadLibrary);
    redirectCalls(&SetWindowTextW, "SetWindowTextW", &notedSetTitle, L"user32.dll");
    const std::wstring path = installation.path(L"new.emcam");
    const std::wstring byHost = L"C:\\by the host.mcam";
    EXPECT_TRUE(loadFile(path));
    EXPECT_EQ(
        newTrace(),
        (Lines{L"ui open 1 -1 C:\\old.mcam", L"ui machine 2 -1 " + installation.path(L"new.mcam"),
               L"ui unchanged 3 -1 " + byHost, L"ui reader 7 -1 " + byHost,
               L"ui title Host  C:\\BY THE HOST.MCAM 7 -1 " + byHost, introduced(path),
               viewRefreshed, hostRefreshed, saved(path), L"ui unchanged 7 -1 " + byHost}));
}

// Before the save, the log has four lines.
TEST_F(Load, logsACadFilesTypeBeforeItsSave)
{
    watchedLog = installation.path(L"sys\\mcxlog.txt");
    AddInState::setFileTypePrefix(L"CAD");
    standin::redirectImports(GetModuleHandleW(nullptr), &CFile_DoFileSave, &notedSave);
    const std::wstring path = makePart();
    EXPECT_TRUE(loadFile(path));
    EXPECT_EQ(newTrace().at(1), L"ui save 4 -1 " + path);
}

TEST_F(Load, asksForTheParentAfterTheRefresh)
{
    standin::redirectImports(GetModuleHandleW(nullptr), &GetMastercamApp, &tracedInterface);
    const std::wstring path = makePart();
    EXPECT_TRUE(loadFile(path));
    EXPECT_EQ(newTrace(), (Lines{opened(path), unchanged, L"ui path", L"ui view", L"ui application",
                                 L"ui parent", saved(path, L"null"), unchanged}));
}

TEST_F(Load, survivesAReaderThatRaises)
{
    const std::wstring path = makePart();
    setSettings("MCXCATIA=y\n");
    redirectCalls(&GetProcAddress, "GetProcAddress", &raisingReader);
    EXPECT_TRUE(loadFile(path));
    EXPECT_EQ(newTrace(), wholeLoad(path));
    EXPECT_EQ(standin::undeletedExceptions(), 0);
}

TEST_F(Load, looksForTheReaderUpToTwice)
{
    const std::wstring path = makePart();
    for (const char* setting : {"MCXCATIA=y\n", "MCXCATIA=Y\n"}) {
        setSettings(setting);
        installation.feedStandardInput("1\n2\n3\n");
        loadFile(path);
        EXPECT_EQ(std::getchar(), setting[9] == 'y' ? '2' : '3'); // a line for each look-up
    }
}

TEST_F(Load, succeedsWhenTheHostRaisesLater)
{
    const std::wstring path = makePart();
    standin::raiseNext("CMastercamInterface.position4");
    EXPECT_TRUE(loadFile(path));
    Lines expected = wholeLoad(path);
    expected[5] = saved(path, L"null");
    EXPECT_EQ(newTrace(), expected);
    standin::raiseAt("set_db_unchanged", 2);
    EXPECT_TRUE(loadFile(path));
    expected = wholeLoad(path);
    expected[6] += L" raised";
    EXPECT_EQ(newTrace(), expected);
    EXPECT_EQ(standin::undeletedExceptions(), 0);
}

// At each step, the number of recent files.
TEST_F(Load, addsTheRecentFileBeforeCheckingIt)
{
    redirectCalls(&IsIconic, "IsIconic", &notedIsIconic, L"user32.dll");
    redirectCalls(&ShowWindow, "ShowWindow", &notedShow, L"user32.dll");
    redirectCalls(&SetActiveWindow, "SetActiveWindow", &notedActivateWindow, L"user32.dll");
    redirectCalls(&GetFileAttributesExW, "GetFileAttributesExW", &notedAttributes);
    EXPECT_FALSE(openFile({1, L"C:\\a.mcam"}));
    EXPECT_EQ(newTrace(),
              (Lines{L"ui iconic 0", L"ui show 1 0", L"ui activate 0", L"ui exists 1", notThere}));
}

TEST_F(Load, opensNamesAndSavesAPart)
{
    const std::wstring path = makePart(L"new part.emcam");
    EXPECT_TRUE(loadFile(path));
    EXPECT_EQ(newTrace(), wholeLoad(path));
    EXPECT_EQ(standin::state("geo_filename"), installation.path(L"new part.mcam"));
    EXPECT_EQ(standin::state("db_changed"), L"false");
    EXPECT_EQ(debugLogText(), logged({1, 2, 3, 4, 5, 6, 7}, path));
}

TEST_F(Load, logsItsPathInTheSystemsCodePage)
{
    const std::wstring path = installation.path(L"missing \u00C4\u4E00.mcam");
    EXPECT_FALSE(loadFile(path));
    EXPECT_EQ(debugLogText(),
              "Loading File #1: " + toUtf8(installation.path(L"missing ")) + "\xC4?.mcam\r\n");
}

TEST_F(Load, forgetsTheCurrentFileFirst)
{
    AddInState::setZemId(5);
    AddInState::setFilePath(L"C:\\old.mcam");
    AddInState::setCaptureOnClosePending(true);
    AddInState::setEvent37Seen(true);
    AddInState::setNcPathNumber(3);
    EXPECT_FALSE(loadFile(installation.path(L"missing.mcam")));
    EXPECT_EQ(AddInState::zemId(), noZemId);
    EXPECT_EQ(AddInState::filePath(), L"");
    EXPECT_FALSE(AddInState::captureOnClosePending());
    EXPECT_FALSE(AddInState::event37Seen());
    EXPECT_EQ(AddInState::ncPathNumber(), -1);
}

TEST_F(Load, endsSilentlyWhenOpeningFails)
{
    const std::wstring path = makePart();
    standin::failNext("DoFileOpen");
    EXPECT_FALSE(loadFile(path));
    EXPECT_EQ(newTrace(), Lines{opened(path, L"-> false")});
    EXPECT_EQ(debugLogText(), logged({1}, path));
}

TEST_F(Load, treatsAnExceptionAsAFailedOpening)
{
    const std::wstring path = makePart();
    standin::raiseNext("DoFileOpen");
    EXPECT_FALSE(loadFile(path));
    EXPECT_EQ(newTrace(), Lines{opened(path, L"raised")});
    EXPECT_EQ(standin::undeletedExceptions(), 0);
}

TEST_F(Load, cutsTheNameAtThePathsLastDot)
{
    CreateDirectoryW(installation.path(L"a.b").c_str(), nullptr);
    const std::wstring path = makePart(L"a.b\\part");
    EXPECT_TRUE(loadFile(path));
    EXPECT_EQ(standin::state("geo_filename"), installation.path(L"a.mcam"));
}

TEST_F(Load, cutsADocumentNameAt260Characters)
{
    std::wstring folder = installation.root();
    while (folder.size() < 255) {
        folder += L"\\" + std::wstring(std::min<size_t>(100, 259 - folder.size()), L'f');
        CreateDirectoryW((L"\\\\?\\" + folder).c_str(), nullptr);
    }
    const std::wstring path = L"\\\\?\\" + folder + L"\\part.mcam";
    writeBytes(path, "");
    ASSERT_GT(path.size(), 260u);
    EXPECT_TRUE(loadFile(path));
    EXPECT_EQ(std::wstring(geo_filename, 260), path.substr(0, 260));
}

TEST_F(Load, showsTheDocumentInTheTitle)
{
    const std::wstring path = makePart(L"new.mcam");
    std::wstring raised = path;
    CharUpperBuffW(raised.data(), static_cast<DWORD>(raised.size()));
    standin::setState("title", L"Host - part  C:\\OLD.MCAM");
    EXPECT_TRUE(loadFile(path));
    EXPECT_EQ(standin::state("title"), L"Host - part  " + raised);
    standin::setState("title", L"Host - part");
    EXPECT_TRUE(loadFile(path));
    EXPECT_EQ(standin::state("title"), L"Host - part  " + raised);
}

TEST_F(Load, reads1023CharactersOfTheTitle)
{
    const std::wstring path = makePart(L"n.mcam");
    standin::setState("title", std::wstring(1100, L't'));
    EXPECT_TRUE(loadFile(path));
    EXPECT_EQ(standin::state("title").substr(0, 1025), std::wstring(1023, L't') + L"  ");
}

TEST_F(Load, appliesTheRequestsMachine)
{
    const std::wstring path = makePart();
    const std::wstring settings = installation.path(L"temp\\mcsettings-17.txt");
    writeBytes(settings, "17|3|4|C:\\Machines\\Mill 3-axis.mcam-mmd\n");
    AddInState::setRequestId(17);
    EXPECT_TRUE(loadFile(path));
    Lines expected = wholeLoad(path);
    expected.insert(expected.begin() + 1,
                    LR"(ui SetActiveMachine("C:\Machines\Mill 3-axis.mcam-mmd") -> true)");
    EXPECT_EQ(newTrace(), expected);
    EXPECT_EQ(AddInState::ncPathNumber(), 3);
    EXPECT_EQ(AddInState::secondSettingsNumber(), 4);
    EXPECT_FALSE(readBytes(settings).has_value());
    EXPECT_TRUE(loadFile(path)); // without a settings file the machine is unchanged
    EXPECT_EQ(newTrace(), wholeLoad(path));
    EXPECT_EQ(AddInState::ncPathNumber(), -1);
    EXPECT_EQ(AddInState::secondSettingsNumber(), 4);
}

TEST_F(Load, savesAndCommitsACadFile)
{
    const std::wstring path = makePart(L"model.catpart");
    const std::wstring named = installation.path(L"model.mcam");
    CompanionDouble companion;
    companion.holdSemaphore();
    recordCompanionStarts(installation);
    standin::setState("title", L"Host");
    writeBytes(installation.path(L"temp\\mcsettings-17.txt"), "0|1|2|C:\\M.mcam-mmd\n");
    AddInState::setRequestId(17);
    AddInState::setFileTypePrefix(L"CAD");
    AddInState::setEvent37Seen(true);
    EXPECT_TRUE(loadFile(path));
    EXPECT_EQ(newTrace(),
              (Lines{opened(path), LR"(ui SetActiveMachine("C:\M.mcam-mmd") -> true)",
                     LR"(ui SetActiveMachine("C:\M.mcam-mmd") -> true)",
                     L"ui CFile_DoFileSave(\"" + named + L"\", main, false, true) -> true",
                     viewRefreshed, hostRefreshed, LR"(ui NCPrefix(null) -> "C:\NC\")",
                     L"ui screen_to_bitmap_file(\"" + installation.path(L"commit\\screendump.bmp") +
                         L"\", false) -> true"}));
    EXPECT_EQ(companionStarts(installation, 1), Lines{L"0 --commit \"" + named + L'"'});
    EXPECT_EQ(AddInState::zemId(), 17u);
    EXPECT_EQ(standin::state("title"), L"Host");
    EXPECT_EQ(debugLogText(), logged({1, 2, 3}, path) + logged({3}, L"CAD"));
}

TEST_F(Load, loadsACadFileDespiteASheetException)
{
    const std::wstring path = makePart(L"model.catpart");
    setSettings("AlwaysSaveTools=y\n");
    AddInState::setRequestId(17);
    AddInState::setFileTypePrefix(L"CAD");
    ASSERT_TRUE(standin::raiseNext("RunSetupSheetOnSelectedOpsWithoutUI"));
    EXPECT_TRUE(openFile({17, path}));
    const Lines seen = newTrace();
    EXPECT_EQ(seen.at(seen.size() - 2), L"ui RunSetupSheetOnSelectedOpsWithoutUI(*) raised");
    EXPECT_EQ(seen.back(), LR"(ui message-box("TORVA ZEM", "Failed to save file."))");
    EXPECT_EQ(AddInState::zemId(), 17u);
    EXPECT_EQ(AddInState::filePath(), path);
    EXPECT_EQ(standin::undeletedExceptions(), 0);
}

TEST_F(Load, neverReturnsForACadFileAfterASave)
{
    static std::wstring path;
    path = makePart(L"model.catpart");
    CompanionDouble companion;
    companion.holdSemaphore();
    AddInState::setFileTypePrefix(L"CAD");
    AddInState::setSaveUnreported(false);
    const int questions = standin::callsOf("has_db_changed");
    const HANDLE load = CreateThread(
        nullptr, 0, [](LPVOID) -> DWORD { return loadFile(path); }, nullptr, 0, nullptr);
    ASSERT_TRUE(standin::waitForTrace(L"NCPrefix(null)"));
    EXPECT_EQ(WaitForSingleObject(load, 1000), static_cast<DWORD>(WAIT_TIMEOUT));
    EXPECT_EQ(newTrace().back(), LR"(other NCPrefix(null) -> "C:\NC\")");
    EXPECT_EQ(standin::callsOf("has_db_changed"), questions);
    // Nothing else ends the thread, which can hold the heap's lock.
    removeFolder(installation.root());
    TerminateProcess(GetCurrentProcess(), HasFailure() ? 1 : 0);
}

TEST_F(Load, needsTheExactPrefixOfACadFile)
{
    const std::wstring path = makePart();
    for (const wchar_t* prefix : {L"cad", L"CA", L""}) {
        AddInState::setFileTypePrefix(prefix);
        EXPECT_TRUE(loadFile(path));
        EXPECT_EQ(newTrace(), wholeLoad(path)) << prefix;
    }
}

TEST_F(Load, savesWithoutAnInterface)
{
    const std::wstring path = makePart();
    standin::failNext("GetMastercamApp");
    EXPECT_TRUE(loadFile(path));
    EXPECT_EQ(newTrace(), (Lines{opened(path), unchanged, saved(path, L"null"), unchanged}));
}

TEST_F(Load, continuesWhenALaterStepFails)
{
    const std::wstring path = makePart();
    standin::failNext("CFile_DoFileSave");
    EXPECT_TRUE(loadFile(path));
    Lines expected = wholeLoad(path);
    expected[5] = saved(path, L"main", L"-> false");
    EXPECT_EQ(newTrace(), expected);
}

TEST_F(Load, continuesWhenTheMachineIsRejected)
{
    const std::wstring path = makePart();
    writeBytes(installation.path(L"temp\\mcsettings-0.txt"), "C:\\M.mcam-mmd");
    standin::failNext("SetActiveMachine");
    EXPECT_TRUE(loadFile(path));
    EXPECT_EQ(newTrace()[1], LR"(ui SetActiveMachine("C:\M.mcam-mmd") -> false)");
    EXPECT_FALSE(readBytes(installation.path(L"temp\\mcsettings-0.txt")).has_value());
}

TEST_F(Load, survivesAnExceptionAtEachHostCall)
{
    struct Case {
        const char* operation;
        size_t line; // index of the raised call in the trace
    };
    const Case cases[] = {{"SetActiveMachine", 1},
                          {"set_db_unchanged", 2},
                          {"CMastercamInterface.position1", 3},
                          {"CMastercamView.position0", 4},
                          {"CMastercamInterface.position3", 5},
                          {"CFile_DoFileSave", 6}};
    const std::wstring path = makePart();
    const std::wstring machine = LR"(ui SetActiveMachine("C:\M.mcam-mmd") -> true)";
    for (const Case& c : cases) {
        writeBytes(installation.path(L"temp\\mcsettings-0.txt"), "C:\\M.mcam-mmd\n");
        Lines expected = wholeLoad(path);
        expected.insert(expected.begin() + 1, machine);
        std::wstring& line = expected[c.line];
        line = line.substr(0, line.find(L" -> ")) + L" raised";
        ASSERT_TRUE(standin::raiseNext(c.operation)) << c.operation;
        EXPECT_TRUE(loadFile(path)) << c.operation;
        EXPECT_EQ(newTrace(), expected) << c.operation;
        EXPECT_EQ(standin::undeletedExceptions(), 0) << c.operation;
    }
}

TEST_F(Load, wakesTheCatiaReaderIfEnabled)
{
    const std::wstring path = makePart();
    const std::wstring woken = L"ui catread5x.m_notify(6) -> 0";
    for (const char* settings : {"MCXCATIA=y\n", "MCXCATIA=Y\n"}) {
        setSettings(settings);
        EXPECT_TRUE(loadFile(path));
        EXPECT_EQ(newTrace()[2], woken) << settings;
    }
    EXPECT_NE(GetModuleHandleW(L"catread5x.dll"), nullptr); // stays loaded
}

TEST_F(Load, leavesTheCatiaReaderAsleepOtherwise)
{
    const std::wstring path = makePart();
    for (const char* settings : {"MCXCATIA=yes\n", "MCXCATIA=n\n", "MCXCATIA= y\n", "MCXCATIA=y"}) {
        setSettings(settings);
        EXPECT_TRUE(loadFile(path));
        EXPECT_EQ(newTrace(), wholeLoad(path)) << settings;
    }
}

TEST_F(Load, ignoresAnUnreachableCatiaReader)
{
    const std::wstring path = makePart();
    setSettings("MCXCATIA=y\n");
    standin::failNext("GetApp");
    EXPECT_TRUE(loadFile(path));
    EXPECT_EQ(newTrace(), wholeLoad(path));
    standin::raiseNext("GetApp");
    EXPECT_TRUE(loadFile(path));
    EXPECT_EQ(newTrace(), wholeLoad(path));
}

TEST_F(Load, makesTheOpenedFileTheCurrentOne)
{
    const std::wstring path = makePart();
    EXPECT_TRUE(openFile({12, path}));
    EXPECT_EQ(AddInState::zemId(), 12u);
    EXPECT_EQ(AddInState::filePath(), path);
    ASSERT_EQ(AddInState::recentFiles().size(), 1u);
    EXPECT_EQ(AddInState::recentFiles()[0].id, 12);
    EXPECT_EQ(AddInState::recentFiles()[0].path, path);
}

TEST_F(Load, keepsANegativeIdAsUnsigned)
{
    EXPECT_TRUE(openFile({-2, makePart()}));
    EXPECT_EQ(AddInState::zemId(), 0xFFFFFFFEu);
}

TEST_F(Load, restoresTheHostsWindow)
{
    const HWND window = getMainFrameWindow();
    ShowWindow(window, SW_MINIMIZE);
    ASSERT_TRUE(IsIconic(window));
    EXPECT_TRUE(openFile({1, makePart()}));
    EXPECT_FALSE(IsIconic(window));
    EXPECT_EQ(GetActiveWindow(), window);
}

TEST_F(Load, activatesTheHostsWindow)
{
    const HWND window = getMainFrameWindow();
    CompanionDouble companion;
    const HWND other = companion.showWindow();
    for (const int size : {SW_SHOWNORMAL, SW_SHOWMAXIMIZED}) {
        ShowWindow(window, size);
        SetActiveWindow(other);
        ASSERT_EQ(GetActiveWindow(), other);
        EXPECT_TRUE(openFile({1, makePart()}));
        EXPECT_EQ(GetActiveWindow(), window);
        EXPECT_EQ(IsZoomed(window) != FALSE, size == SW_SHOWMAXIMIZED);
    }
}

TEST_F(Load, isRefusedWhileTheHostIsBusy)
{
    standin::setState("backplot", L"true");
    redirectCalls(&SetActiveWindow, "SetActiveWindow", &notedActivateWindow, L"user32.dll");
    EXPECT_FALSE(openFile({1, makePart()}));
    EXPECT_EQ(newTrace(), Lines{});
    EXPECT_TRUE(AddInState::recentFiles().empty());
}

TEST_F(Load, reportsAndRemembersAMissingFile)
{
    EXPECT_FALSE(openFile({1, installation.path(L"missing.mcam")}));
    EXPECT_EQ(newTrace(), Lines{notThere});
    EXPECT_EQ(AddInState::recentFiles().size(), 1u);
    EXPECT_FALSE(openFile({2, installation.path(L"temp")})); // a folder
    EXPECT_EQ(newTrace(), Lines{notThere});
}

TEST_F(Load, reportsAFailureAndForgetsTheFile)
{
    const std::wstring path = makePart();
    AddInState::setZemId(5);
    AddInState::setFilePath(L"C:\\old.mcam");
    standin::failNext("DoFileOpen");
    EXPECT_FALSE(openFile({1, path}));
    EXPECT_EQ(newTrace(), (Lines{opened(path, L"-> false"), loadFailed}));
    EXPECT_EQ(AddInState::zemId(), noZemId);
    EXPECT_EQ(AddInState::filePath(), L"");
}
