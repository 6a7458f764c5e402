#include "faults/scenario.h"

#include "addin/exports.h"
#include "incoming/listener.h"
#include "incoming/message_window.h"
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

using namespace torvapdm;

namespace testing_support {

namespace {

using Replaced = std::vector<std::wstring>;
using World = FaultWorld;

const Replaced nothing{};
const Replaced thePart = {L"a.mcam"};
const Replaced loaded = {L"a.mcam", L"mcsettings-17.txt"};
const Replaced commandFile = {L"PID.dat"};

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

void chooseWith(FaultWorld& world, const wchar_t* item)
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

void asLoaded(FaultWorld&) {}

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

void drawOneTool(FaultWorld&)
{
    DrawTool(30, 60, 10, 10, 2, 0, 20, 30, 60, 8, 4);
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

const std::vector<Scenario>& scenarios()
{
    constexpr Callers here = Callers::thisThread;
    constexpr Callers listener = Callers::listener;
    constexpr bool again = true;
    constexpr bool once = false;
    static const std::vector<Scenario> all = {
        {"m_open", here, once, asLoaded, [](World& world) { world.openAddIn(); }, nothing},
        {"m_close", here, once, opened, [](World&) { m_close(0); }, commandFile},
        {"m_notify 5", here, again, withCompanion, [](World&) { m_notify(5); }, thePart},
        {"m_main, Open TORVA ZEM", here, again,
         [](World& world) { chooseWith(world, L"Open TORVA ZEM"); }, [](World&) { m_main(0); },
         nothing},
        {"m_main, Website", here, again, [](World& world) { chooseWith(world, L"Website"); },
         [](World&) { m_main(0); }, nothing},
        {"m_main, Tools", here, again, [](World& world) { chooseWith(world, L"Tools"); },
         [](World&) { m_main(0); }, nothing},
        {"m_about", here, again, withCompanion, [](World&) { m_about(0); }, nothing},
        {"m_tools", here, again, withCompanion, [](World&) { m_tools(0); }, nothing},
        {"m_load", here, again, withCompanion, [](World&) { m_load(0); }, nothing},
        {"m_save", here, again, withCompanion, [](World&) { m_save(0); }, thePart},
        {"m_save, Companion not running", here, again, withoutCompanion, [](World&) { m_save(0); },
         thePart},
        {"m_save, unknown document", here, again, withUnknownDocument, [](World&) { m_save(0); },
         thePart},
        {"m_save, untitled document",
         here,
         again,
         withUntitledDocument,
         saveUntitled,
         {L"a.mcam", L"\\b"}},
        {"importNCqueue", here, again, withCompanion, [](World&) { importNCqueue(); }, nothing},
        {"DrawTool", here, again, withCompanion, drawOneTool, nothing},
        {"TestFunction", here, again, withCompanion, [](World&) { TestFunction(); }, nothing},
        {"tool data export", here, again, withCompanion, [](World&) { exportToolData(); }, nothing},
        {"open message", here, again, withOpenRequest, deliverOpenMessage, loaded},
        {"open message, reader wanted", here, again, withReaderWanted, deliverOpenMessage, loaded},
        {"open message, CAD file", here, again, withCadFile, deliverOpenMessage, loaded},
        {"network thread", here, again, asLoaded, [](World&) { networkThread(nullptr); }, nothing},
        {"listener, no request", listener, again, opened, [](World&) { waitForCycles(2); },
         nothing},
        {"listener, open request", listener, again, opened,
         [](World& world) { sendRequest(world, openRequest(5, toUtf8(world.part()))); },
         commandFile},
        {"listener, new file", listener, again, opened,
         [](World& world) { sendRequest(world, openRequest(5, "")); }, commandFile},
        {"listener, check-in", listener, again, opened,
         [](World& world) { sendRequest(world, "CHECKIN"); }, commandFile},
    };
    return all;
}

} // namespace testing_support
