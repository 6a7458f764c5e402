// Names of the host's document and its window title. No platform header: these are decisions.
#pragma once

#include <string>

namespace torvapdm {

// The path cut before its last "." (of the whole path, folders included) with ".mcam" behind it.
std::wstring mcamName(const std::wstring& path);

// The title cut at its last pair of blanks, then two blanks and the name, its letters a to z turned
// into A to Z.
std::wstring titleForDocument(const std::wstring& title, const std::wstring& name);

} // namespace torvapdm
