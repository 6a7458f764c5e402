// The entry points used by the host or the Companion, each in a setting in which it works.
#pragma once

#include "addin/exports.h"
#include "companion/installation.h"
#include "companion/network_thread.h"
#include "faults/platform_calls.h"
#include "formats/wire_constants.h"
#include "host/host.h"
#include "host/message_box.h"
#include "incoming/incoming_state.h"
#include "incoming/listener.h"
#include "incoming/message_window.h"
#include "incoming/pending_request.h"
#include "outgoing/tool_export.h"
#include "support/add_in_state.h"
#include "support/companion_double.h"
#include "support/host_fixture.h"
#include "support/sockets.h"

#include <algorithm>
#include <filesystem>
#include <ostream>
#include <vector>

namespace testing_support {

inline constexpr char wholePart[] = "mastercam part 1\n\n"
                                    "[plane]\nid = 1\nname = Top\n\n"
                                    "[group]\nid = 1\nname = Machine\n\n"
                                    "[group]\nid = 2\nparent = 1\nname = First side\n\n"
                                    "[tool]\nnumber = 3\n\n"
                                    "[operation]\nid = 10\ngroup = 2\ntool-plane = 1\n"
                                    "construction-plane = 1\nnci-name = C:\\NCI\\SIDE 1.NCI\n"
                                    "tool.number = 3\n";

// The add-in's environment, reused for all scenarios.
class FaultWorld {
public:
    explicit FaultWorld(const Installation& installation) : installation_(installation)
    {
        CreateDirectoryW(path(L"parts").c_str(), nullptr);
        CreateDirectoryW(path(L"user temp").c_str(), nullptr);
        SetEnvironmentVariableW(L"TMP", path(L"user temp").c_str());
        installation.installCompanion(programFolder() + L"start_recorder.exe");
        // Uses a small picture of the view, because each run reads it.
        SetWindowPos(get_MainFrame()->GetSafeHwnd(), nullptr, 0, 0, 200, 150, SWP_NOZORDER);
    }
    ~FaultWorld()
    {
        if (isOpen_)
            m_close(0);
        const HWND window = AddInState::messageWindow();
        AddInState::setMessageWindow(nullptr);
        if (window)
            DestroyWindow(window);
    }

    std::wstring path(const std::wstring& below) const { return installation_.path(below); }
    std::wstring commandFile() const { return installation_.commandFile(GetCurrentProcessId()); }
    void runCompanion()
    {
        if (isCompanionRunning_)
            return;
        isCompanionRunning_ = true;
        companion_.holdSemaphore();
        companion_.showWindow();
    }

    void openMessageWindow()
    {
        if (AddInState::messageWindow())
            return;
        torvapdm::registerMessages();
        AddInState::setMessageWindow(torvapdm::createMessageWindow());
    }

    void openAddIn()
    {
        if (isOpen_)
            return;
        isOpen_ = true;
        const int pauses = pausesOfOtherThreads();
        m_open(0);
        // Waits until the listener, if it is running, has polled for its file.
        waitUntil(
            [pauses] { return !AddInState::listenerThread() || pausesOfOtherThreads() > pauses; },
            2000);
    }

    // The path of the open part.
    std::wstring part() const { return path(L"parts\\a.mcam"); }
    // Resets everything: the part with its operations, tools and groups, a known document of the
    // Companion's, and the add-in's variables as after a check-out. Removes files of earlier runs.
    void reset()
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
        writeBytes(path(L"cfg\\settings.ini"),
                   "AlwaysSaveTools=y\r\nUseFtpServer=n\r\nMCXCATIA=n\r\n");
        installation_.endStandardInput();
        EXPECT_TRUE(standin::putPart(part()));
        standin::setState("db_changed", L"true");
        standin::setState("nc_prefix", path(L"tmp\\"));
        standin::setState("nc_suffix", L".NC");
        standin::setState("setup_sheet_files", path(L"tmp\\sheet.xml"));
        torvapdm::clearPendingRequest();
        AddInState::reset();
        AddInState::setRequestId(17);
        AddInState::setZemId(5);
        torvapdm::getInstallationFolder(); // cached once per process, here or by the first m_open
    }

private:
    const Installation& installation_;
    CompanionDouble companion_;
    LineReceiver receiver_;
    bool isCompanionRunning_ = false;
    bool isOpen_ = false;
};

struct Scenario {
    std::string name;
    void (*prepare)(FaultWorld& world);
    void (*act)(FaultWorld& world);
    // Files it may rewrite or remove, as suffixes of the names in an outcome.
    std::vector<std::wstring> replaces{};
    Callers callers = Callers::thisThread;
    bool repeats = true; // can run more than once in a process
};

// ---- Settings ----------------------------------------------------------------------------------

inline void withCompanion(FaultWorld& world)
{
    world.reset();
    world.runCompanion();
}

inline void withMenuChoice(FaultWorld& world, const wchar_t* item)
{
    withCompanion(world);
    standin::chooseNext(item);
}

inline void withUnknownDocument(FaultWorld& world)
{
    withCompanion(world);
    AddInState::setZemId(torvapdm::noZemId);
}

inline void withUntitledDocument(FaultWorld& world)
{
    withUnknownDocument(world);
    SetCurrentDirectoryW(world.path(L"parts").c_str());
    standin::setState("geo_filename", L"");
    standin::setEventSink(m_notify);
    // With more than three characters, a saved document would never be committed.
    standin::saveDialogNext(L"b");
}

inline void withOpenRequest(FaultWorld& world)
{
    world.openMessageWindow();
    pumpMessages(); // messages from an earlier run
    world.reset();
    writeBytes(world.path(L"temp\\mcsettings-17.txt"), "17|3|0|C:\\Machines\\Mill.mcam-mmd\r\n");
    AddInState::postRequest({5, world.part()});
}

inline void withReaderWanted(FaultWorld& world)
{
    withOpenRequest(world);
    writeBytes(world.path(L"cfg\\settings.ini"), "MCXCATIA=y\r\n");
}

inline void withCadFile(FaultWorld& world)
{
    world.runCompanion();
    withOpenRequest(world);
    AddInState::setFileTypePrefix(L"CAD");
}

// Waits for this many pauses: after the second one, the listener has polled once completely.
inline void waitForCycles(int cycles)
{
    const int pauses = pausesOfOtherThreads();
    waitUntil([pauses, cycles] {
        return pausesOfOtherThreads() >= pauses + cycles || !torvapdm::isListenerRunning();
    });
}

// Waits until the listener, if it is running, has handled earlier requests and polls an empty file.
inline void opened(FaultWorld& world)
{
    world.openAddIn();
    waitUntil(
        [&] { return readBytes(world.commandFile()) == "" || !torvapdm::isListenerRunning(); });
    waitForCycles(1);
    world.reset();
}

// ---- Acts --------------------------------------------------------------------------------------

inline void deliverOpenMessage(FaultWorld&)
{
    torvapdm::messageWindowProc(AddInState::messageWindow(), AddInState::openMessage(), 0, 0);
}

// If the host's save command does nothing, the add-in waits until the user saves.
inline void saveUntitled(FaultWorld&)
{
    const UINT_PTR timer = SetTimer(nullptr, 0, 1, [](HWND, UINT, UINT_PTR, DWORD) {
        if (AddInState::zemId() == torvapdm::noZemId && AddInState::isSaveUnreported())
            m_notify(5);
    });
    m_save(0);
    KillTimer(nullptr, timer);
}

// Messages posted to the message window are recorded and not processed.
inline void sendRequest(const FaultWorld& world, const std::string& request)
{
    const WatchedMessageWindow window;
    writeRequest(world.commandFile(), request);
    waitForCycles(3); // the one that is running, the one that takes the request, and the next
    const auto& arrived = window.arrived();
    if (std::ranges::find(arrived, AddInState::openMessage()) != arrived.end())
        standin::trace(L"open message posted");
}

inline const std::vector<Scenario>& scenarios()
{
    using World = FaultWorld;
    constexpr auto asLoaded = [](World&) {};
    constexpr auto openAddIn = [](World& world) { world.openAddIn(); };
    constexpr auto requestOpening = [](World& world) {
        sendRequest(world, openRequest(5, toUtf8(world.part())));
    };
    constexpr auto requestNewFile = [](World& world) { sendRequest(world, openRequest(5, "")); };
    constexpr auto requestCheckIn = [](World& world) { sendRequest(world, "CHECKIN"); };
    const std::vector<std::wstring> loaded = {L"a.mcam", L"mcsettings-17.txt"};
    constexpr auto listener = Callers::listener;
    static const std::vector<Scenario> all = {
        {"m_open", asLoaded, openAddIn, {}, Callers::thisThread, false},
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
        {"m_save, Companion not running",
         [](World& world) { world.reset(); },
         [](World&) { m_save(0); },
         {L"a.mcam"}},
        {"m_save, unknown document", withUnknownDocument, [](World&) { m_save(0); }, {L"a.mcam"}},
        {"m_save, untitled document", withUntitledDocument, saveUntitled, {L"a.mcam", L"\\b"}},
        {"importNCqueue", withCompanion, [](World&) { importNCqueue(); }},
        {"DrawTool", withCompanion,
         [](World&) { DrawTool(30, 60, 10, 10, 2, 0, 20, 30, 60, 8, 4); }},
        {"TestFunction", withCompanion, [](World&) { TestFunction(); }},
        {"tool data export", withCompanion, [](World&) { torvapdm::exportToolData(); }},
        {"open message", withOpenRequest, deliverOpenMessage, loaded},
        {"open message, reader wanted", withReaderWanted, deliverOpenMessage, loaded},
        {"open message, CAD file", withCadFile, deliverOpenMessage, loaded},
        {"network thread", asLoaded, [](World&) { torvapdm::networkThread(nullptr); }},
        {"listener, no request", opened, [](World&) { waitForCycles(2); }, {}, listener},
        {"listener, open request", opened, requestOpening, {L"PID.dat"}, listener},
        {"listener, new file", opened, requestNewFile, {L"PID.dat"}, listener},
        {"listener, check-in", opened, requestCheckIn, {L"PID.dat"}, listener},
    };
    return all;
}

// Used by GoogleTest.
inline void PrintTo(const Scenario& scenario, std::ostream* stream)
{
    *stream << scenario.name;
}

} // namespace testing_support
