// Functions that nothing calls in this release. README.md lists them.
#pragma once

#include "platform/windows_api.h"

#include <string>

namespace torvapdm {

// Whether the Companion's settings allow the import of NC files, as the text "y" or "n": "y" when
// the file cannot be opened or has no such setting. The file is read only for the object
// `ncImportKey` (formats/settings_file.h).
std::string isNcImportEnabled(const char* key);

// The text of a file in UTF-8; empty when it cannot be opened. Writes "File Open Success\n" or
// "File Open Error\n" to the standard output.
std::wstring readWholeText(const std::wstring& path);

// Has the host save the document under its current name, and returns that name; empty on failure.
// UI thread.
std::wstring saveUnderCurrentName();

// Starts the sockets library in version 2.0: 0, or its error. A successful caller ends it with
// WSACleanup.
int startSockets();

// True when the path exists, as a file or as a folder.
bool pathExists(const std::wstring& path);

// The low 32 bits of the file's size in bytes; 0 when the file does not exist.
int getFileSize(const std::wstring& path);

// The text up to its first NUL, from this code page, or from the system's ANSI code page. Empty on
// failure.
std::wstring toWide(const std::string& text, UINT codePage);
std::wstring toWideAnsi(const std::string& text);

} // namespace torvapdm
