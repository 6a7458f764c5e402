// Conversions from UTF-16 to 8-bit text.
#pragma once

#include "platform/windows_api.h"

#include <string>

namespace torvapdm {

// The text in this code page. A character that the code page lacks becomes a similar one, or its
// default character; always the latter with WC_NO_BEST_FIT_CHARS in `flags`. Empty on failure.
std::string toNarrow(const std::wstring& text, UINT codePage, DWORD flags = 0);

// The same in the system's ANSI code page.
std::string toNarrowAnsi(const std::wstring& text);

// The text in the C runtime's locale. Empty when it holds a character that the locale lacks.
std::string toNarrowByRuntime(const std::wstring& text);

// The low byte of each UTF-16 unit.
std::string truncateToBytes(const std::wstring& text);

} // namespace torvapdm
