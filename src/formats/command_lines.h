// The arguments with which the add-in starts the Companion. Quote characters inside a path are not
// escaped. No platform header.
#pragma once

#include <cstdint>
#include <string>

namespace torvapdm {

// --checkout "FILE"
std::wstring formatCheckoutArguments(const std::wstring& answerFile);

// --commit "FILE", followed by --id 4294967295 when the ZEM id is `noZemId`.
std::wstring formatCommitArguments(std::uint32_t zemId, const std::wstring& file);

// --about --parentwindow NUMBER; the number is the low 32 bits of a window handle.
std::wstring formatAboutArguments(std::uint32_t parentWindow);

} // namespace torvapdm
