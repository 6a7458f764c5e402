#include "incoming/load.h"

#include "companion/debug_log.h"
#include "companion/settings.h"
#include "host/adapter.h"
#include "host/barriers.h"
#include "host/document.h"
#include "incoming/document_name.h"
#include "incoming/incoming_state.h"
#include "incoming/machine_activation.h"
#include "outgoing/nc_queue.h"
#include "outgoing/save.h"
#include "outgoing/save_through_host.h"
#include "platform/narrow_text.h"

#include <cwchar>
#include <iterator>

namespace torvapdm {

namespace {

void clearDocumentState()
{
    currentFilePath.clear();
    currentZemId = noZemId;
    captureOnClosePending = false;
    event37Seen = false;
    ncPathNumber = -1;
}

bool openInHost(const std::wstring& path)
{
    bool escaped = false;
    return askHost(
        false, [&] { return DoFileOpen(path.c_str(), false, false, 1, true, &escaped, nullptr); });
}

void setDocumentName(const std::wstring& path)
{
    std::wcsncpy(geo_filename, mcamNameOf(path).c_str(), std::size(geo_filename));
}

// ---- The CATIA reader --------------------------------------------------------------------------

std::wstring catiaReaderPath()
{
    return askHost(
        std::wstring(),
        [] {
            CMastercamInterface* const application = GetApp();
            if (!application)
                return std::wstring();
            return std::wstring(host::folder(*application, host::programFolder)) +
                   L"chooks\\catread5x.dll";
        });
}

// Loads the host's CATIA reader, for the life of the process, and sends it the event that wakes it.
// A reader that cannot be loaded is ignored.
void wakeCatiaReader()
{
    constexpr int wakeUpEvent = 6;
    using Notify = int (*)(int);
    const std::wstring path = catiaReaderPath();
    const HMODULE reader = path.empty() ? nullptr : LoadLibraryW(path.c_str());
    if (!reader)
        return;
    const auto notify =
        reinterpret_cast<Notify>(reinterpret_cast<void*>(GetProcAddress(reader, "m_notify")));
    if (notify)
        callHost([&] { notify(wakeUpEvent); });
}

// ---- The end of a load -------------------------------------------------------------------------

void showNameInTitle()
{
    const HWND window = getMainFrameWindow();
    wchar_t title[1024]{};
    GetWindowTextW(window, title, static_cast<int>(std::size(title)));
    SetWindowTextW(window, titleForDocument(title, hostFileName()).c_str());
}

void setDocumentPathAndRefresh(CMastercamInterface& application, const std::wstring& path)
{
    callHost([&] { host::setDocumentPath(application, path.c_str()); });
    callHost([&] { host::refreshDocumentView(application); });
    callHost([&] { host::refreshApplication(application); });
}

// The window to save with, or null.
CWnd* findParentWindow(CMastercamInterface& application)
{
    return askHost<CWnd*>(
        nullptr, [&] { return host::parentWindow(application); });
}

void saveUnder(const std::wstring& path)
{
    CWnd* parent = nullptr;
    if (CMastercamInterface* const application = findHostApplication()) {
        setDocumentPathAndRefresh(*application, path);
        parent = findParentWindow(*application);
    }
    callHost([&] { CFile_DoFileSave(path.c_str(), parent, false, false); });
    callHost([] { set_db_unchanged(); });
}

void finishCadFile()
{
    // Quirk Q42: line #3 for the second time, with the type prefix.
    debugLog("Loading File #3: %s\n", toNarrowAnsi(fileTypePrefix).c_str());
    saveThroughHost();
    saveToCompanion();
}

void finishPartFile(const std::wstring& path)
{
    const std::string loggedPath = toNarrowAnsi(path);
    callHost([] { set_db_unchanged(); });
    debugLog("Loading File #4: %s\n", loggedPath.c_str());
    debugLog("Loading File #5: %s\n", loggedPath.c_str());
    renameNcFiles();
    debugLog("Loading File #6: %s\n", loggedPath.c_str());
    debugLog("Loading File #7: %s\n", loggedPath.c_str());
    if (isSettingOn("MCXCATIA"))
        wakeCatiaReader();
    showNameInTitle();
    saveUnder(path);
}

} // namespace

bool loadFile(const std::wstring& path)
{
    const std::string loggedPath = toNarrowAnsi(path);
    debugLog("Loading File #1: %s\n", loggedPath.c_str());
    clearDocumentState();
    if (!openInHost(path))
        return false;
    setDocumentName(path);
    debugLog("Loading File #2: %s\n", loggedPath.c_str());
    transferMachineSettings(); // activates the machine, for a file of a CAD system twice
    debugLog("Loading File #3: %s\n", loggedPath.c_str());
    if (isCadFile())
        finishCadFile();
    else
        finishPartFile(path);
    return true;
}

} // namespace torvapdm
