#include "incoming/load.h"

#include "incoming/catia_reader.h"
#include "incoming/document_name.h"
#include "incoming/machine_settings.h"
#include "host/document.h"
#include "outgoing/save.h"
#include "host/adapter.h"
#include "companion/debug_log.h"
#include "host/host_application.h"
#include "host/host_exceptions.h"
#include "host/message_box.h"
#include "shared_state.h"
#include "platform/text.h"
#include "outgoing/nc_commands.h"

#include <cwchar>
#include <iterator>

namespace torvapdm {

namespace {

void forgetCurrentFile()
{
    currentFilePath.clear();
    currentZemId = noZemId;
    captureOnClosePending = false;
    event37Seen = false;
    ncPathNumber = -1;
}

bool openInHost(const std::wstring& path)
{
    bool opened = false;
    bool escaped = false;
    callHost([&] { opened = DoFileOpen(path.c_str(), false, false, 1, true, &escaped, nullptr); });
    return opened;
}

void nameDocument(const std::wstring& path)
{
    std::wcsncpy(geo_filename, mcamName(path).c_str(), std::size(geo_filename));
}

void showNameInTitle()
{
    const HWND window = getMainFrameWindow();
    wchar_t title[1024]{};
    GetWindowTextW(window, title, static_cast<int>(std::size(title)));
    SetWindowTextW(window, titleForDocument(title, hostFileName()).c_str());
}

// Tells the host's application where the document lies and gives the window to save over, null when
// the host has none to give.
CWnd* introduceDocument(const std::wstring& path)
{
    CMastercamInterface* const application = hostApplication();
    if (!application)
        return nullptr;
    CWnd* parent = nullptr;
    callHost([&] { host::setDocumentPath(*application, path.c_str()); });
    callHost([&] { host::refreshDocumentView(*application); });
    callHost([&] { host::refreshApplication(*application); });
    callHost([&] { parent = host::parentWindow(*application); });
    return parent;
}

void saveUnderGivenPath(const std::wstring& path)
{
    CWnd* const parent = introduceDocument(path);
    callHost([&] { CFile_DoFileSave(path.c_str(), parent, false, false); });
    callHost([] { set_db_unchanged(); });
}

void finishCadFile()
{
    // Deliberate: the progress line #3 again, now with the kind behind it. One would expect a
    // number of its own; whoever reads the log tells files of a CAD system by the doubled line.
    debugLog("Loading File #3: %s\n", toNarrowAnsi(fileTypePrefix).c_str());
    saveThroughHost();
    saveFlow();
}

void finishPartFile(const std::wstring& path)
{
    const std::string logged = toNarrowAnsi(path);
    callHost([] { set_db_unchanged(); });
    debugLog("Loading File #4: %s\n", logged.c_str());
    debugLog("Loading File #5: %s\n", logged.c_str());
    renameNcFiles();
    debugLog("Loading File #6: %s\n", logged.c_str());
    debugLog("Loading File #7: %s\n", logged.c_str());
    wakeCatiaReaderIfWanted();
    showNameInTitle();
    saveUnderGivenPath(path);
}

} // namespace

bool loadFile(const std::wstring& path)
{
    const std::string logged = toNarrowAnsi(path);
    debugLog("Loading File #1: %s\n", logged.c_str());
    forgetCurrentFile();
    if (!openInHost(path))
        return false;
    nameDocument(path);
    debugLog("Loading File #2: %s\n", logged.c_str());
    transferMachineSettings();
    debugLog("Loading File #3: %s\n", logged.c_str());
    if (fileTypePrefix == L"CAD")
        finishCadFile();
    else
        finishPartFile(path);
    return true;
}

} // namespace torvapdm
