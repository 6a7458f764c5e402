#include "addin/host_events.h"

#include "outgoing/nc_queue.h"
#include "outgoing/save.h"
#include "outgoing/save_through_host.h"
#include "outgoing/screen_capture.h"
#include "shared_state.h"

namespace torvapdm {

namespace {

bool isZemIdSet()
{
    return currentZemId != noZemId;
}

void clearCurrentFile()
{
    currentZemId = noZemId;
    currentFilePath.clear();
}

// The meaning of the codes is the host's; of these, only 5, "saved", is known here.

void onEvent3()
{
    isSaveUnreported = true;
    clearCurrentFile();
    captureOnClosePending = false;
}

void onEvent4()
{
    renameNcFiles();
    if (!isZemIdSet() && captureOnCloseEnabled)
        captureOnClosePending = true;
}

void onEvent5()
{
    isSaveUnreported = false;
    if (isZemIdSet()) {
        saveThroughHost();
        saveToCompanion();
    } else if (captureOnClosePending) {
        takeScreenCapture();
    }
    captureOnClosePending = false;
}

void onEvent6Or52()
{
    clearCurrentFile();
    captureOnClosePending = false;
}

} // namespace

int reactToHostEvent(int code)
{
    switch (code) {
    case 3:
        onEvent3();
        break;
    case 4:
        onEvent4();
        break;
    case 5:
        onEvent5();
        break;
    case 6:
    case 52:
        onEvent6Or52();
        break;
    case 37:
        event37Seen = true;
        break;
    default:
        break;
    }
    return 0;
}

} // namespace torvapdm
