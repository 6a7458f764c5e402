// The host's application and its open document: main window, whether the host is ready, the
// document's name and whether it has changed. UI thread.
#pragma once

#include "framework/framework.h"

#include <string>

class CMastercamInterface;

namespace torvapdm {

// The host's main window, cached once there is one; null until then.
HWND getMainFrameWindow();

// The host's application interface, owned by the host; null when it has none or raises.
CMastercamInterface* findHostApplication();

// True when the host can open a file: its main window is enabled (no modal dialog is open) and no
// backplot runs. A host that raises is not ready.
bool isHostReady();

// The document's name as the host holds it, at most 260 characters.
std::wstring hostFileName();

// Whether the document has unsaved changes; true also when the host raises, so that a document that
// may be unsaved is not treated as saved.
bool hasDocumentChanged();

} // namespace torvapdm
