#include "outgoing/screen_capture.h"

#include "host/document.h"
#include "host/host.h"
#include "host/host_exceptions.h"
#include "companion/installation.h"

namespace torvapdm {

void takeScreenCapture()
{
    const std::wstring path = getInstallationFolder() + L"\\commit\\screendump.bmp";
    // Deliberate: the mark is always true, so that a capture never saves the document. One would
    // expect a question to the host; saving is left to the flow that takes the picture.
    const bool alreadySaved = true;
    callHost([&] { screen_to_bitmap_file(path.c_str(), false); });
    if (!alreadySaved)
        saveThroughHost();
}

} // namespace torvapdm
