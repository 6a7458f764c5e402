#include "faults/scenario.h"

#include "addin/exports.h"
#include "host/host.h"
#include "companion/installation.h"
#include "incoming/message_window.h"
#include "incoming/pending_request.h"
#include "support/add_in_state.h"
#include "incoming/incoming_state.h"

#include <cstdio>
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

} // namespace testing_support
