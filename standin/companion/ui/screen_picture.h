// The picture of its screen that a host leaves before it asks for a commit.
#pragma once

#include <string>
#include <windows.h>

namespace companion {

// Moves the picture to this path, so that it can never be taken for a later commit's. False when
// there is none, or when it was made after that time and so belongs to a commit still to come.
bool takeScreenPicture(const std::wstring& folder, const FILETIME& notAfter,
                       const std::wstring& to);

} // namespace companion
