#include "host/document.h"

#include "addin/exports.h"
#include "host/host.h"
#include "incoming/message_window.h"
#include "host/message_box.h"
#include "incoming/pending_request.h"
#include "support/add_in_state.h"
#include "support/companion_double.h"
#include "support/host_fixture.h"
#include "support/sockets.h"
#include "support/system_calls.h"
#include "support/message_boxes.h"
#include "incoming/incoming_state.h"
#include "formats/wire_constants.h"

#include <utility>

using namespace torvapdm;
using namespace testing_support;

namespace {

const std::wstring asked = LR"(ui NCPrefix(null) -> "")";
const std::wstring viewRefreshed = L"ui CMastercamView.position0()";
const std::wstring hostRefreshed = L"ui CMastercamInterface.position3()";
const std::wstring sheet = L"ui RunSetupSheetOnSelectedOpsWithoutUI(*)";

class Save : public HostFixture {
protected:
    Save()
    {
        installation.endStandardInput();
        standin::setState("nc_prefix", L"");
        standin::setState("geo_filename", name);
        AddInState::setRequestId(17);
    }
    void runCompanion()
    {
        companion.holdSemaphore();
        companion.showWindow();
    }
    void knowDocument() { AddInState::setZemId(5); }
    void setSettings(const char* text)
    {
        writeBytes(installation.path(L"cfg\\settings.ini"), text);
    }

    std::wstring saved(const std::wstring& result = L"-> true") const
    {
        return L"ui CFile_DoFileSave(\"" + name + L"\", main, false, true) " + result;
    }
    static Lines savedAndRefreshed(const std::wstring& document)
    {
        return {L"ui CFile_DoFileSave(\"" + document + L"\", main, false, true) -> true",
                viewRefreshed, hostRefreshed};
    }
    std::wstring captured(const std::wstring& result = L"-> true") const
    {
        return L"ui screen_to_bitmap_file(\"" + installation.path(L"commit\\screendump.bmp") +
               L"\", false) " + result;
    }
    Lines knownSave() const { return {asked, saved(), viewRefreshed, hostRefreshed, captured()}; }
    // Every commit is a record of the document for request 17.
    size_t commits() const
    {
        const std::string records = readBytes(commitFile).value_or("");
        std::string record("\x11\0\0\0", 4);
        record += {static_cast<char>(name.size()), '\0', '\0', '\0'};
        for (const wchar_t unit : name)
            record += {static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8)};
        std::string expected;
        while (expected.size() < records.size())
            expected += record;
        EXPECT_EQ(records, expected);
        return expected.size() / record.size();
    }
    void expectNothingCommitted() const
    {
        EXPECT_EQ(commits(), 0u);
        EXPECT_FALSE(readBytes(installation.path(L"commit\\screendump.bmp")).has_value());
    }

    CompanionDouble companion;
    const std::wstring name = installation.path(L"a.mcam");
    const std::wstring commitFile =
        installation.path(L"temp\\torvapdm-" + std::to_wstring(GetCurrentProcessId()) + L".dat");
};

class SaveUntitled : public Save {
protected:
    // The tests use names of up to three characters, because documents with longer names are not
    // committed here.
    SaveUntitled()
    {
        SetCurrentDirectoryW(installation.path(L"tmp").c_str());
        standin::setState("geo_filename", L"");
        standin::setEventSink(m_notify);
        runCompanion();
    }
    ~SaveUntitled() override { SetCurrentDirectoryW(programFolder().c_str()); }
    bool hasCommitFile() const { return readBytes(commitFile).has_value(); }
};

// An untitled document, and an open request that arrives while the host's save command runs.
class SaveInterrupted : public SaveUntitled {
protected:
    SaveInterrupted()
    {
        standin::setEventSink(nullptr);
        registerMessages();
        AddInState::setMessageWindow(createMessageWindow());
        writeBytes(name, "");
    }
    ~SaveInterrupted() override { DestroyWindow(AddInState::messageWindow()); }
    Lines loaded() const
    {
        const std::wstring part = L"\"" + name + L'"';
        return {L"ui DoFileOpen(" + part + L", false, false, 1, true, *, null) -> true",
                L"ui set_db_unchanged()",
                L"ui CMastercamInterface.position1(" + part + L')',
                viewRefreshed,
                hostRefreshed,
                L"ui CFile_DoFileSave(" + part + L", main, false, false) -> true",
                L"ui set_db_unchanged()"};
    }
};

void append(Lines& lines, const Lines& more)
{
    lines.insert(lines.end(), more.begin(), more.end());
}

// Runs the call once from the message loop, as soon as the condition is true.
template <class Condition, class Call>
void callFromLoop(Condition, Call)
{
    SetTimer(
        nullptr, 0, 1,
        [](HWND, UINT, UINT_PTR timer, DWORD) {
            if (!Condition()())
                return;
            KillTimer(nullptr, timer);
            Call()();
        });
}

// The host's original functions while the add-in's calls are redirected.
decltype(&CFile_DoFileSave) hostsSave = nullptr;
decltype(&GetMastercamApp) hostsInterface = nullptr;

// Sends the save event to the add-in before the first save returns.
bool reportingSave(const wchar_t* path, CWnd* parent, bool browse, bool prompt)
{
    static bool isReported = false;
    const bool saved = hostsSave(path, parent, browse, prompt);
    if (!std::exchange(isReported, true))
        m_notify(5);
    return saved;
}

void reportTheNextSave()
{
    hostsSave = &CFile_DoFileSave;
    standin::redirectImports(GetModuleHandleW(nullptr), hostsSave, &reportingSave);
}

// The calls that start the host's save command, in order.
std::vector<std::string> commandCalls;

CMastercamInterface* notedInterface()
{
    commandCalls.push_back("interface");
    return hostsInterface();
}

LRESULT WINAPI notedSend(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    const bool isMain = window == getMainFrameWindow();
    commandCalls.push_back((isMain ? "main " : "another ") + std::to_string(message) + ' ' +
                           std::to_string(wParam) + ' ' + std::to_string(lParam));
    return systems(&SendMessageW, "SendMessageW", L"user32.dll")(window, message, wParam, lParam);
}

void noteCommandCalls()
{
    hostsInterface = &GetMastercamApp;
    standin::redirectImports(GetModuleHandleW(nullptr), hostsInterface, &notedInterface);
    redirectCalls(&SendMessageW, "SendMessageW", &notedSend, L"user32.dll");
}

int listsBefore = 0;
int listsAtPrefix = 0;

CString notedPrefix(TpGroup*)
{
    listsAtPrefix = standin::callsOf("GetMainGrpList") - listsBefore;
    return L"";
}

std::string drained;

// Takes one character of standard input, and ends the request.
bool checkingInSheet(CStringArray&)
{
    drained += static_cast<char>(std::getchar());
    AddInState::setRequestId(0);
    return true;
}

std::uint32_t idAtCapture = 0;

bool notedCapture(const wchar_t*, bool)
{
    idAtCapture = AddInState::zemId();
    return true;
}

} // namespace

TEST_F(Save, asksForThePrefixBeforeTheGroupList)
{
    runCompanion();
    listsBefore = standin::callsOf("GetMainGrpList");
    standin::raiseNext("NCPrefix");
    m_save(0);
    EXPECT_EQ(standin::callsOf("GetMainGrpList"), listsBefore + 1); // also when that raised
    listsAtPrefix = -1;
    listsBefore = standin::callsOf("GetMainGrpList");
    standin::redirectImports(GetModuleHandleW(nullptr), &NCPrefix, &notedPrefix);
    m_save(0);
    EXPECT_EQ(listsAtPrefix, 0);
    EXPECT_EQ(standin::callsOf("GetMainGrpList"), listsBefore + 1);
}

TEST_F(Save, readsTheRequestIdForEachSettingsLine)
{
    setSettings("AlwaysSaveTools=y\nAlwaysSaveTools=y\n");
    installation.feedStandardInput("1a\n2b\n3\n");
    standin::redirectImports(GetModuleHandleW(nullptr), &RunSetupSheetOnSelectedOpsWithoutUI,
                             &checkingInSheet);
    m_save(0);
    EXPECT_EQ(drained, "1"); // once, and before the line's drain
    EXPECT_EQ(std::getchar(), '3');
}

TEST_F(Save, takesTheRequestsIdAfterTheCapture)
{
    runCompanion();
    knowDocument();
    standin::redirectImports(GetModuleHandleW(nullptr), &screen_to_bitmap_file, &notedCapture);
    m_save(7);
    EXPECT_EQ(idAtCapture, 5u);
    EXPECT_EQ(commits(), 1u);
}

TEST_F(SaveUntitled, hasUpToTwoCharacters)
{
    for (const wchar_t* untitled : {L"a", L"ab"}) {
        AddInState::setZemId(noZemId);
        AddInState::setSaveUnreported(true);
        standin::setState("geo_filename", untitled);
        standin::saveDialogNext(L"abc");
        EXPECT_EQ(m_save(0), 0);
        EXPECT_EQ(newTrace(), (Lines{L"ui m_notify(5) -> 0", asked, captured()})) << untitled;
    }
}

TEST_F(SaveUntitled, processesNoMessageOnceItIsSaved)
{
    standin::saveDialogNext(L"abc");
    const int before = standin::callsOf("CMastercamInterface.position5");
    m_save(0);
    EXPECT_EQ(standin::callsOf("CMastercamInterface.position5"), before);
}

TEST_F(Save, savesCapturesAndCommits)
{
    runCompanion();
    knowDocument();
    const LineReceiver listener;
    EXPECT_EQ(m_save(0), 0);
    EXPECT_EQ(newTrace(), knownSave());
    EXPECT_EQ(commits(), 1u);
    EXPECT_EQ(listener.nextConnection(), "ZEMID=17|" + toUtf8(name) + "\n");
    EXPECT_EQ(AddInState::zemId(), 17u);
    EXPECT_TRUE(AddInState::isSaveUnreported());
}

TEST_F(Save, commitsAnUnchangedUnknownDocument)
{
    runCompanion();
    EXPECT_EQ(m_save(0), 0);
    EXPECT_EQ(newTrace(), (Lines{asked, captured()}));
    EXPECT_EQ(commits(), 1u);
    EXPECT_EQ(AddInState::zemId(), 17u);
}

TEST_F(Save, refusesAnUnknownChangedDocument)
{
    runCompanion();
    standin::setState("db_changed", L"true");
    EXPECT_EQ(m_save(0), 0);
    EXPECT_EQ(newTrace(), (Lines{asked, notSaved}));
    expectNothingCommitted();
    EXPECT_EQ(AddInState::zemId(), noZemId);
}

TEST_F(Save, refusesAShortNamedChange)
{
    runCompanion();
    AddInState::setSaveUnreported(false);
    standin::setState("geo_filename", L"abc");
    EXPECT_EQ(m_save(0), 0);
    EXPECT_EQ(newTrace(), (Lines{asked, captured()})); // an unchanged document is not refused
    AddInState::setZemId(noZemId);
    standin::setState("db_changed", L"true");
    EXPECT_EQ(m_save(0), 0);
    EXPECT_EQ(newTrace(), (Lines{asked, notSaved}));
}

TEST_F(Save, endsWhenTheHostCannotSave)
{
    runCompanion();
    knowDocument();
    standin::failNext("CFile_DoFileSave");
    EXPECT_EQ(m_save(0), 0);
    Lines expected = knownSave();
    expected[1] = saved(L"-> false");
    expected.back() = notSaved;
    EXPECT_EQ(newTrace(), expected);
    expectNothingCommitted();
    EXPECT_EQ(AddInState::zemId(), 5u);
}

TEST_F(Save, endsWhenTheCompanionCannotBeStarted)
{
    knowDocument();
    EXPECT_EQ(m_save(0), 0);
    EXPECT_EQ(newTrace(), (Lines{asked, notStarted}));
    expectNothingCommitted();
    EXPECT_EQ(AddInState::zemId(), 5u);
}

TEST_F(Save, commitsAlsoWithoutAPicture)
{
    runCompanion();
    knowDocument();
    removeFolder(installation.path(L"commit"));
    EXPECT_EQ(m_save(0), 0);
    Lines expected = knownSave();
    expected.back() = captured(L"-> false");
    EXPECT_EQ(newTrace(), expected);
    EXPECT_EQ(commits(), 1u);
}

TEST_F(Save, keepsTheLastPictureForEveryCommit)
{
    runCompanion();
    knowDocument();
    m_save(0);
    const auto first = readBytes(installation.path(L"commit\\screendump.bmp"));
    standin::putPart(programFolder() + L"shipped\\host\\example\\bracket.mcam");
    standin::setState("geo_filename", name);
    m_save(0);
    EXPECT_EQ(commits(), 2u);
    EXPECT_NE(readBytes(installation.path(L"commit\\screendump.bmp")), first);
}

TEST_F(Save, survivesAHostThatRaises)
{
    struct Case {
        const char* operation;
        size_t line;
        size_t commits;
    };
    const Case cases[] = {{"NCPrefix", 0, 1},
                          {"CMastercamView.position0", 2, 1},
                          {"CMastercamInterface.position3", 3, 1},
                          {"screen_to_bitmap_file", 4, 1}};
    runCompanion();
    size_t committed = 0;
    for (const Case& c : cases) {
        knowDocument();
        Lines expected = knownSave();
        std::wstring& line = expected[c.line];
        line = line.substr(0, line.find(L" -> ")) + L" raised";
        ASSERT_TRUE(standin::raiseNext(c.operation)) << c.operation;
        EXPECT_EQ(m_save(0), 0) << c.operation;
        EXPECT_EQ(newTrace(), expected) << c.operation;
        EXPECT_EQ(commits(), ++committed) << c.operation;
        EXPECT_EQ(standin::undeletedExceptions(), 0) << c.operation;
    }
}

TEST_F(Save, treatsARaisingSaveAsAFailedOne)
{
    runCompanion();
    knowDocument();
    standin::raiseNext("CFile_DoFileSave");
    EXPECT_EQ(m_save(0), 0);
    EXPECT_EQ(newTrace().back(), notSaved);
    expectNothingCommitted();
    EXPECT_EQ(standin::undeletedExceptions(), 0);
}

TEST_F(Save, sendsASetupSheetPerSettingsLine)
{
    runCompanion();
    knowDocument();
    setSettings("AlwaysSaveTools=y\nUseFtpServer=n\n;XAlwaysSaveTools=yes\nAlwaysSaveTools=Y\n");
    standin::setState("setup_sheet_files", L"C:\\one.xml;C:\\two.xml");
    const LineReceiver listener;
    EXPECT_EQ(m_save(0), 0);
    Lines expected = knownSave();
    expected.insert(expected.begin() + 1, 2, sheet);
    Lines seen = newTrace();
    for (std::wstring& line : seen)
        if (line.rfind(sheet, 0) == 0)
            line = sheet;
    EXPECT_EQ(seen, expected);
    const std::string notice = "MCAMXMLIMPORTDATAID=17;C:\\one.xml\n";
    EXPECT_EQ(listener.nextConnection(), notice);
    EXPECT_EQ(listener.nextConnection(), notice);
    EXPECT_EQ(listener.nextConnection(), "ZEMID=17|" + toUtf8(name) + "\n");
}

TEST_F(Save, sendsNoSetupSheetOtherwise)
{
    runCompanion();
    knowDocument();
    setSettings("AlwaysSaveTools=Y\n");
    EXPECT_EQ(m_save(0), 0);
    EXPECT_EQ(newTrace(), knownSave());
    knowDocument();
    AddInState::setRequestId(0);
    setSettings("AlwaysSaveTools=y\n");
    EXPECT_EQ(m_save(0), 0);
    EXPECT_EQ(newTrace(), knownSave());
    EXPECT_EQ(AddInState::zemId(), 0u);
}

TEST_F(Save, drainsStandardInputPerSettingsLine)
{
    runCompanion();
    knowDocument();
    setSettings("a\nb\n");
    installation.feedStandardInput("1\n2\n3\n");
    EXPECT_EQ(m_save(0), 0);
    // The document is inside the folder, so the commit does not read the settings.
    EXPECT_EQ(std::getchar(), '3');
}

TEST_F(Save, reportsThatASheetExceptionEndedIt)
{
    runCompanion();
    knowDocument();
    setSettings("AlwaysSaveTools=y\n");
    standin::raiseNext("RunSetupSheetOnSelectedOpsWithoutUI");
    EXPECT_EQ(m_save(0), 0);
    EXPECT_EQ(newTrace(), (Lines{asked, sheet + L" raised", notSaved}));
    expectNothingCommitted();
    EXPECT_EQ(standin::undeletedExceptions(), 0);
    EXPECT_TRUE(DeleteFileW(installation.path(L"cfg\\settings.ini").c_str())); // not left open
}

TEST_F(Save, sendsTheSheetWithoutACompanion)
{
    knowDocument();
    setSettings("AlwaysSaveTools=y\n");
    EXPECT_EQ(m_save(0), 0);
    const Lines seen = newTrace();
    ASSERT_EQ(seen.size(), 3u);
    EXPECT_EQ(seen[0], asked);
    EXPECT_EQ(seen[1].rfind(sheet, 0), 0u);
    EXPECT_EQ(seen[2], notStarted);
}

TEST_F(Save, sendsTheSheetForANegativeId)
{
    knowDocument();
    AddInState::setRequestId(-3);
    setSettings("AlwaysSaveTools=y\n");
    EXPECT_EQ(m_save(0), 0);
    EXPECT_EQ(newTrace().at(1).rfind(sheet, 0), 0u);
}

TEST_F(Save, asksTheHostForItsGroupList)
{
    runCompanion();
    knowDocument();
    standin::raiseNext("GetMainGrpList");
    EXPECT_EQ(m_save(0), 0);
    EXPECT_NO_THROW(TpMainGrpMgr.GetMainGrpList()); // the exception was raised in m_save
    EXPECT_EQ(standin::undeletedExceptions(), 0);
    EXPECT_EQ(newTrace(), knownSave());
    EXPECT_EQ(commits(), 1u);
}

TEST_F(Save, survivesAMissingViewOrParent)
{
    runCompanion();
    knowDocument();
    Lines expected = knownSave();
    expected.erase(expected.begin() + 2); // the refresh of the view
    standin::raiseNext("CMastercamInterface.position2");
    EXPECT_EQ(m_save(0), 0);
    EXPECT_EQ(newTrace(), expected);
    expected = knownSave();
    expected[1] = L"ui CFile_DoFileSave(\"" + name + L"\", null, false, true) -> true";
    standin::raiseNext("CMastercamInterface.position4");
    EXPECT_EQ(m_save(0), 0);
    EXPECT_EQ(newTrace(), expected);
    EXPECT_EQ(commits(), 2u);
    EXPECT_EQ(standin::undeletedExceptions(), 0);
}

TEST_F(Save, treatsAnExceptionAsChanged)
{
    runCompanion();
    standin::setState("db_changed", L"false");
    standin::raiseNext("has_db_changed");
    EXPECT_EQ(m_save(0), 0);
    EXPECT_EQ(newTrace(), (Lines{asked, notSaved}));
    expectNothingCommitted();
    EXPECT_EQ(standin::undeletedExceptions(), 0);
}

TEST_F(Save, keepsTheRequestsIdWhenTheCommitFails)
{
    runCompanion();
    knowDocument();
    CreateDirectoryW(commitFile.c_str(), nullptr);
    EXPECT_EQ(m_save(0), 0);
    Lines expected = knownSave();
    expected.push_back(notCommitted);
    EXPECT_EQ(newTrace(), expected);
    EXPECT_EQ(AddInState::zemId(), 17u);
}

TEST_F(Save, doesNotNameAThreeCharacterDocument)
{
    runCompanion();
    standin::setState("geo_filename", L"a:b");
    standin::saveDialogNext(L""); // would make the host quit
    EXPECT_EQ(m_save(0), 0);
    EXPECT_EQ(newTrace(), (Lines{asked, captured()}));
}

TEST_F(Save, treatsAKnownDocumentAsNamed)
{
    runCompanion();
    knowDocument();
    standin::setState("geo_filename", L"");
    standin::saveDialogNext(L""); // would make the host quit
    EXPECT_EQ(m_save(0), 0);
    EXPECT_EQ(newTrace().at(0), asked);
}

TEST_F(Save, commitsAfterTheHostsOwnSave)
{
    runCompanion();
    knowDocument();
    EXPECT_EQ(m_notify(5), 0);
    Lines expected = knownSave();
    const Lines save(expected.begin() + 1, expected.begin() + 4);
    expected.insert(expected.begin(), save.begin(), save.end());
    EXPECT_EQ(newTrace(), expected);
    EXPECT_EQ(commits(), 1u);
}

TEST_F(SaveUntitled, isNamedByTheHostsSaveCommand)
{
    standin::saveDialogNext(L"abc");
    EXPECT_EQ(m_save(0), 0);
    EXPECT_EQ(newTrace(), (Lines{L"ui m_notify(5) -> 0", asked, captured()}));
    EXPECT_TRUE(hasCommitFile());
    EXPECT_EQ(hostFileName(), L"abc");
}

TEST_F(SaveUntitled, keepsTheHostResponsive)
{
    standin::setEventSink(nullptr);
    standin::saveDialogNext(L"abc");
    SetTimer(nullptr, 0, 1, [](HWND, UINT, UINT_PTR timer, DWORD) {
        KillTimer(nullptr, timer);
        standin::trace(L"timer");
        m_notify(5);
    });
    EXPECT_EQ(m_save(0), 0);
    EXPECT_EQ(newTrace(), (Lines{L"ui timer", asked, captured()}));
    EXPECT_TRUE(hasCommitFile());
}

TEST_F(SaveUntitled, endsWhenTheHostQuits)
{
    standin::saveDialogNext(L"");
    EXPECT_EQ(m_save(0), 0);
    EXPECT_EQ(newTrace(), Lines{});
    expectNothingCommitted();
}

TEST_F(SaveUntitled, failsWithoutAnInterface)
{
    standin::failNext("GetMastercamApp");
    EXPECT_EQ(m_save(0), 0);
    EXPECT_EQ(newTrace(), Lines{notSaved});
    standin::raiseNext("GetMastercamApp");
    EXPECT_EQ(m_save(0), 0);
    EXPECT_EQ(newTrace(), Lines{notSaved});
    expectNothingCommitted();
    EXPECT_EQ(standin::undeletedExceptions(), 0);
}

TEST_F(SaveUntitled, waitsOnAfterAMessageLoopException)
{
    standin::setEventSink(nullptr);
    standin::saveDialogNext(L"abc");
    standin::raiseNext("CMastercamInterface.position5", 3);
    callFromLoop([] { return true; }, [] { m_notify(5); });
    EXPECT_EQ(m_save(0), 0);
    EXPECT_EQ(newTrace(), (Lines{asked, captured()}));
    EXPECT_TRUE(hasCommitFile());
    EXPECT_EQ(standin::undeletedExceptions(), 0);
}

TEST_F(SaveUntitled, needsNoCommandAfterAReportedSave)
{
    AddInState::setSaveUnreported(false);
    standin::saveDialogNext(L"abc"); // not used
    EXPECT_EQ(m_save(0), 0);
    EXPECT_EQ(newTrace(), (Lines{asked, captured()}));
    EXPECT_EQ(hostFileName(), L"");
}

TEST_F(Save, restartsInsideAReportedSave)
{
    runCompanion();
    knowDocument();
    reportTheNextSave();
    EXPECT_EQ(m_save(0), 0);
    Lines expected = {asked, saved()};
    append(expected, savedAndRefreshed(name)); // the save with the event, then the event's flow
    append(expected, knownSave());
    append(expected, {viewRefreshed, hostRefreshed, captured()});
    EXPECT_EQ(newTrace(), expected);
    EXPECT_EQ(commits(), 2u);
    EXPECT_EQ(AddInState::zemId(), 17u);
    EXPECT_FALSE(AddInState::isSaveUnreported());
}

TEST_F(SaveUntitled, asksForTheInterfaceFirst)
{
    standin::saveDialogNext(L"abc");
    noteCommandCalls();
    EXPECT_EQ(m_save(0), 0);
    EXPECT_EQ(commandCalls, (std::vector<std::string>{"interface", "main 273 41111 0"}));
}

TEST_F(SaveInterrupted, savesADocumentOpenedMeanwhile)
{
    AddInState::postRequest({12, name});
    reportTheNextSave(); // the save at the end of the load, before the id is set
    EXPECT_EQ(m_save(0), 0);
    Lines expected = loaded();
    append(expected, knownSave());
    EXPECT_EQ(newTrace(), expected);
    EXPECT_EQ(commits(), 1u);
    EXPECT_EQ(AddInState::zemId(), 17u);
}

TEST_F(SaveInterrupted, commitsAnOpenedDocumentTwice)
{
    AddInState::postRequest({12, name});
    callFromLoop([] { return AddInState::zemId() != noZemId; }, [] { m_notify(5); });
    EXPECT_EQ(m_save(0), 0);
    Lines expected = loaded();
    append(expected, savedAndRefreshed(name));
    append(expected, knownSave()); // from the event
    append(expected, knownSave()); // from the first m_save
    EXPECT_EQ(newTrace(), expected);
    EXPECT_EQ(commits(), 2u);
    EXPECT_EQ(AddInState::zemId(), 17u);
}

TEST_F(SaveUntitled, savesAfterANestedCommit)
{
    // The first save dialog is cancelled; the second one returns a name.
    callFromLoop([] { return true; },
                 [] {
                     standin::saveDialogNext(L"abc");
                     standin::trace(L"second");
                     m_save(0);
                 });
    EXPECT_EQ(m_save(0), 0);
    Lines expected = {L"ui second", L"ui m_notify(5) -> 0", asked, captured(), asked};
    append(expected, savedAndRefreshed(L"abc"));
    expected.push_back(captured());
    EXPECT_EQ(newTrace(), expected);
    EXPECT_EQ(readBytes(commitFile).value_or("").size(), 2u * (8 + 2 * 3));
    EXPECT_EQ(AddInState::zemId(), 17u);
}
