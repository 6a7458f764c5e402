// Start-up and shut-down of the add-in, and its application object. UI thread.
#pragma once

#include "framework/framework.h"

// The application object. Its one instance lives from the library's load to its unload.
class CtorvapdmApp : public CWinApp {
public:
    CtorvapdmApp() = default;
    BOOL InitInstance() override;

    DECLARE_MESSAGE_MAP()
};

namespace torvapdm {

// Registers the messages, creates the message window, starts the network thread and the listener
// with its command file, and sets the property by which the Companion finds the host. A failed step
// does not stop the next one. Returns 0.
int openAddIn();

// Stops all of that but the network thread. Returns 0.
int closeAddIn();

} // namespace torvapdm
