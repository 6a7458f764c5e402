#include "outgoing/screen_capture.h"

#include "companion/installation.h"
#include "host/barriers.h"
#include "host/host.h"
#include "outgoing/save_through_host.h"

namespace torvapdm {

void takeScreenCapture()
{
    const std::wstring path = screenPicturePath();
    const bool isAlreadySaved = true; // Quirk Q54: so the capture never saves the document.
    callHost([&] { screen_to_bitmap_file(path.c_str(), false); });
    if (!isAlreadySaved)
        saveThroughHost();
}

} // namespace torvapdm
