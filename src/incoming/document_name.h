// The document's name and the window title that a load sets. No platform header.
#pragma once

#include <string>

namespace torvapdm {

// The path, cut before its last ".", with ".mcam" appended.
std::wstring mcamNameOf(const std::wstring& path);

// The title cut at its last pair of spaces, two spaces, and the name with a to z in upper case.
std::wstring titleForDocument(const std::wstring& title, const std::wstring& name);

} // namespace torvapdm
