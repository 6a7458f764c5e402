// The versions of the chosen part and the picture of the chosen one of them.
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

// Creates its pieces as children of the window, the list with this control id. The look outlives
// them.
VersionPane createVersionPane(HWND parent, int listId, const Look& look);

void placeVersionPane(const VersionPane& pane, const WindowLayout& layout);

// Lists the versions of the part, the current one first, and shows the picture of the selected one.
// Null shows nothing. While the current version is the selected one, it stays so when it is
// followed by another. Cheap when nothing has changed.
void showVersions(VersionPane& pane, const std::wstring& folder, const LibraryItem* part);

} // namespace companion
