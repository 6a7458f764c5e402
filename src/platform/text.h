// Conversions between wide and 8-bit text, and the seam for a later translation.
#pragma once

#include "framework/framework.h"

#include <string>

namespace torvapdm {

// The text in this code page; characters it lacks become its default character. Empty on failure.
std::string toNarrow(const std::wstring& text, UINT codePage);
std::string toNarrowAnsi(const std::wstring& text); // the system's ANSI code page

// The text up to its first zero, from this code page. Empty on failure.
std::wstring toWide(const std::string& text, UINT codePage);
std::wstring toWideAnsi(const std::string& text); // the system's ANSI code page

// The text in the C runtime's locale. Empty when it holds a character the locale lacks.
std::string toNarrowByRuntime(const std::wstring& text);

// Each UTF-16 unit cut to its low byte.
std::string truncateToBytes(const std::wstring& text);

// The text as the user is to see it. Returns it unchanged and ignores the number: every text shown
// passes through here so that a translation has one place to go.
std::wstring translateText(int number, const std::wstring& text);

} // namespace torvapdm
