#include "outgoing/save_through_host.h"

#include "companion/installation.h"
#include "companion/settings.h"
#include "host/adapter.h"
#include "host/barriers.h"
#include "host/document.h"
#include "shared_state.h"

namespace torvapdm {

namespace {

// Quirk Q46: the base folder is empty, and an empty text is always found, so nothing is redirected.
std::wstring redirected(const std::wstring& name)
{
    const std::wstring baseFolder;
    if (name.find(baseFolder) != std::wstring::npos || !isSettingOn("UseFtpServer"))
        return name;
    return ftpPath(baseFolder, name);
}

bool saveAs(const std::wstring& name, CMastercamInterface* application)
{
    CWnd* parent = nullptr;
    if (application)
        parent = askHost(
            parent, [&] { return host::parentWindow(*application); });
    return askHost(false, [&] { return CFile_DoFileSave(name.c_str(), parent, false, true); });
}

void refreshHost(CMastercamInterface* application)
{
    if (!application)
        return;
    callHost([&] { host::refreshDocumentView(*application); });
    callHost([&] { host::refreshApplication(*application); });
}

} // namespace

bool saveThroughHost()
{
    event37Seen = false;
    const std::wstring name = redirected(hostFileName());
    CMastercamInterface* const application = findHostApplication();
    const bool isSaved = saveAs(name, application);
    if (!isSaved)
        OutputDebugStringW((std::wstring(50, L'-') + L" !status\n").c_str());
    refreshHost(application);
    return isSaved;
}

} // namespace torvapdm
