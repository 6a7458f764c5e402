// Which system calls of the add-in the host sees.
#include "application/imports.h"
#include "application/observed_calls.h"
#include "control.h"

namespace standin {

void observeModule(HMODULE module)
{
    leadImports(module, &MessageBoxW, &observedMessageBox);
    leadImports(module, &TrackPopupMenu, &observedPopupMenu);
}

} // namespace standin
