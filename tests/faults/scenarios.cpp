#include "faults/scenario.h"

#include "addin/exports.h"
#include "companion/installation.h"
#include "incoming/listener.h"
#include "incoming/message_window.h"
#include "host/host.h"
#include "host/message_box.h"
#include "companion/network_thread.h"
#include "incoming/pending_request.h"
#include "support/add_in_state.h"
#include "support/companion_double.h"
#include "support/windows.h"
#include "outgoing/tool_export.h"
#include "incoming/incoming_state.h"
#include "formats/wire_constants.h"

#include <algorithm>
#include <filesystem>

using namespace torvapdm;

namespace testing_support {

namespace {

constexpr char wholePart[] = "mastercam part 1\n\n"
                             "[plane]\nid = 1\nname = Top\n\n"
                             "[group]\nid = 1\nname = Machine\n\n"
                             "[group]\nid = 2\nparent = 1\nname = First side\n\n"
                             "[tool]\nnumber = 3\n\n"
                             "[operation]\nid = 10\ngroup = 2\ntool-plane = 1\n"
                             "construction-plane = 1\nnci-name = C:\\NCI\\SIDE 1.NCI\n"
                             "tool.number = 3\n";

// ---- Settings ----------------------------------------------------------------------------------

void withCompanion(FaultWorld& world)
{
    world.reset();
    world.runCompanion();
}

void withoutCompanion(FaultWorld& world)
{
    world.reset();
}

void withMenuChoice(FaultWorld& world, const wchar_t* item)
{
    withCompanion(world);
    standin::chooseNext(item);
}

void withUnknownDocument(FaultWorld& world)
{
    withCompanion(world);
    AddInState::setZemId(noZemId);
}

void withUntitledDocument(FaultWorld& world)
{
    withUnknownDocument(world);
    SetCurrentDirectoryW(world.path(L"parts").c_str());
    standin::setState("geo_filename", L"");
    standin::setEventSink(m_notify);
    // With more than three characters, a saved document would never be committed.
    standin::saveDialogNext(L"b");
}

void withOpenRequest(FaultWorld& world)
{
    world.openMessageWindow();
    pumpMessages(); // messages from an earlier run
    world.reset();
    writeBytes(world.path(L"temp\\mcsettings-17.txt"), "17|3|0|C:\\Machines\\Mill.mcam-mmd\r\n");
    postOpenRequest({5, world.part()});
}

void withReaderWanted(FaultWorld& world)
{
    withOpenRequest(world);
    writeBytes(world.path(L"cfg\\settings.ini"), "MCXCATIA=y\r\n");
}

void withCadFile(FaultWorld& world)
{
    world.runCompanion();
    withOpenRequest(world);
    AddInState::setFileTypePrefix(L"CAD");
}

// Waits for this many pauses: after the second one, the listener has polled once completely.
void waitForCycles(int cycles)
{
    const int pauses = pausesOfOtherThreads();
    waitUntil([pauses, cycles] {
        return pausesOfOtherThreads() >= pauses + cycles || !isListenerRunning();
    });
}

// Waits until the listener, if it is running, has handled earlier requests and polls an empty file.
void opened(FaultWorld& world)
{
    world.openAddIn();
    waitUntil([&] { return readBytes(world.commandFile()) == "" || !isListenerRunning(); });
    waitForCycles(1);
    world.reset();
}

// ---- Acts --------------------------------------------------------------------------------------

void deliverOpenMessage(FaultWorld&)
{
    messageWindowProc(AddInState::messageWindow(), AddInState::openMessage(), 0, 0);
}

// If the host's save command does nothing, the add-in waits until the user saves.
void saveUntitled(FaultWorld&)
{
    const UINT_PTR timer = SetTimer(nullptr, 0, 1, [](HWND, UINT, UINT_PTR, DWORD) {
        if (AddInState::zemId() == noZemId && AddInState::isSaveUnreported())
            m_notify(5);
    });
    m_save(0);
    KillTimer(nullptr, timer);
}

// Messages posted to the message window are recorded and not processed.
void sendRequest(const FaultWorld& world, const std::string& request)
{
    const WatchedMessageWindow window;
    writeRequest(world.commandFile(), request);
    waitForCycles(2);
    const auto& arrived = window.arrived();
    if (std::ranges::find(arrived, AddInState::openMessage()) != arrived.end())
        standin::trace(L"open message posted");
}

} // namespace

FaultWorld::FaultWorld(const Installation& installation) : installation_(installation)
{
    CreateDirectoryW(path(L"parts").c_str(), nullptr);
    CreateDirectoryW(path(L"user temp").c_str(), nullptr);
    SetEnvironmentVariableW(L"TMP", path(L"user temp").c_str());
    installation.installCompanion(programFolder() + L"start_recorder.exe");
    // Uses a small picture of the view, because each run reads it.
    SetWindowPos(get_MainFrame()->GetSafeHwnd(), nullptr, 0, 0, 200, 150, SWP_NOZORDER);
}

FaultWorld::~FaultWorld()
{
    if (isOpen_)
        m_close(0);
    const HWND window = AddInState::messageWindow();
    AddInState::setMessageWindow(nullptr);
    if (window)
        DestroyWindow(window);
}

void FaultWorld::runCompanion()
{
    if (isCompanionRunning_)
        return;
    isCompanionRunning_ = true;
    companion_.holdSemaphore();
    companion_.showWindow();
}

void FaultWorld::openMessageWindow()
{
    if (AddInState::messageWindow())
        return;
    registerMessages();
    AddInState::setMessageWindow(createMessageWindow());
}

void FaultWorld::openAddIn()
{
    if (isOpen_)
        return;
    isOpen_ = true;
    const int pauses = pausesOfOtherThreads();
    m_open(0);
    // Waits until the listener, if it is running, has polled for its file.
    waitUntil([pauses] { return !AddInState::listenerThread() || pausesOfOtherThreads() > pauses; },
              2000);
}

void FaultWorld::reset()
{
    _fcloseall(); // some streams are left open on purpose, and their files could not be removed
    for (const wchar_t* folder : {L"temp", L"commit", L"user temp"})
        for (const auto& entry : std::filesystem::directory_iterator(path(folder)))
            if (entry.path() != commandFile())
                DeleteFileW(entry.path().c_str());
    DeleteFileW(path(L"sys\\mcxlog.txt").c_str());
    DeleteFileW(path(L"parts\\b").c_str());
    while (!receiver_.isIdle()) // a full backlog would make the add-in wait
        receiver_.hangUpOnNext();
    writeBytes(part(), wholePart);
    writeBytes(path(L"tmp\\SIDE 1.NC"), "%\nO1\nM30\n%\n");
    writeBytes(path(L"cfg\\settings.ini"), "AlwaysSaveTools=y\r\nUseFtpServer=n\r\nMCXCATIA=n\r\n");
    installation_.endStandardInput();
    EXPECT_TRUE(standin::putPart(part()));
    standin::setState("db_changed", L"true");
    standin::setState("nc_prefix", path(L"tmp\\"));
    standin::setState("nc_suffix", L".NC");
    standin::setState("setup_sheet_files", path(L"tmp\\sheet.xml"));
    clearPendingRequest();
    AddInState::reset();
    AddInState::setRequestId(17);
    AddInState::setZemId(5);
    getInstallationFolder(); // cached once per process, here or by the first m_open
}

const std::vector<Scenario>& scenarios()
{
    using World = FaultWorld;
    constexpr auto asLoaded = [](World&) {};
    const std::vector<std::wstring> loaded = {L"a.mcam", L"mcsettings-17.txt"};
    constexpr auto listener = Callers::listener;
    static const std::vector<Scenario> all = {
        {"m_open",
         asLoaded,
         [](World& world) { world.openAddIn(); },
         {},
         Callers::thisThread,
         false},
        {"m_close", opened, [](World&) { m_close(0); }, {L"PID.dat"}, Callers::thisThread, false},
        {"m_notify 5", withCompanion, [](World&) { m_notify(5); }, {L"a.mcam"}},
        {"m_main, Open TORVA ZEM", [](World& world) { withMenuChoice(world, L"Open TORVA ZEM"); },
         [](World&) { m_main(0); }},
        {"m_main, Website", [](World& world) { withMenuChoice(world, L"Website"); },
         [](World&) { m_main(0); }},
        {"m_main, Tools", [](World& world) { withMenuChoice(world, L"Tools"); },
         [](World&) { m_main(0); }},
        {"m_about", withCompanion, [](World&) { m_about(0); }},
        {"m_tools", withCompanion, [](World&) { m_tools(0); }},
        {"m_load", withCompanion, [](World&) { m_load(0); }},
        {"m_save", withCompanion, [](World&) { m_save(0); }, {L"a.mcam"}},
        {"m_save, Companion not running", withoutCompanion, [](World&) { m_save(0); }, {L"a.mcam"}},
        {"m_save, unknown document", withUnknownDocument, [](World&) { m_save(0); }, {L"a.mcam"}},
        {"m_save, untitled document", withUntitledDocument, saveUntitled, {L"a.mcam", L"\\b"}},
        {"importNCqueue", withCompanion, [](World&) { importNCqueue(); }},
        {"DrawTool", withCompanion,
         [](World&) { DrawTool(30, 60, 10, 10, 2, 0, 20, 30, 60, 8, 4); }},
        {"TestFunction", withCompanion, [](World&) { TestFunction(); }},
        {"tool data export", withCompanion, [](World&) { exportToolData(); }},
        {"open message", withOpenRequest, deliverOpenMessage, loaded},
        {"open message, reader wanted", withReaderWanted, deliverOpenMessage, loaded},
        {"open message, CAD file", withCadFile, deliverOpenMessage, loaded},
        {"network thread", asLoaded, [](World&) { networkThread(nullptr); }},
        {"listener, no request", opened, [](World&) { waitForCycles(2); }, {}, listener},
        {"listener, open request",
         opened,
         [](World& world) { sendRequest(world, openRequest(5, toUtf8(world.part()))); },
         {L"PID.dat"},
         listener},
        {"listener, new file",
         opened,
         [](World& world) { sendRequest(world, openRequest(5, "")); },
         {L"PID.dat"},
         listener},
        {"listener, check-in",
         opened,
         [](World& world) { sendRequest(world, "CHECKIN"); },
         {L"PID.dat"},
         listener},
    };
    return all;
}

} // namespace testing_support
