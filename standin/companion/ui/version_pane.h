// The versions of the selected part and the picture of the selected version.
#pragma once

#include "standin/companion/library/library_index.h"
#include "standin/companion/ui/layout.h"
#include "standin/companion/ui/look.h"

#include <cstdint>
#include <string>
#include <windows.h>

namespace companion {

struct VersionPane {
    HWND title = nullptr, versions = nullptr, pictureTitle = nullptr, picture = nullptr;
    std::wstring shownName{}; // of the part whose versions are listed
    std::int32_t shownVersion = 0;
    std::wstring shownPicture{}; // its title
};

// Creates its parts as children of the window; the list gets this control id. The look must outlive
// them.
VersionPane createVersionPane(HWND parent, int listId, const Look& look);

void placeVersionPane(const VersionPane& pane, const WindowLayout& layout);

// Lists the versions of the part, the current one first, and shows the picture of the selected one.
// Null shows nothing. If the current version is selected and a new one follows, the new one is
// selected. Fast when nothing has changed.
void showVersions(VersionPane& pane, const std::wstring& folder, const LibraryItem* part);

} // namespace companion
