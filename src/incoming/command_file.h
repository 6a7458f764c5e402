// The command file: "\temp\mastercam-" + process id + ".dat" under the installation folder. The
// add-in holds it open, empty, for as long as it is loaded; it vanishes with the handle.
#pragma once

#include "framework/framework.h"

#include <optional>
#include <string>

namespace torvapdm {

// The most bytes a request may have.
constexpr LONGLONG longestRequest = 0x10000;

// The command file's path for this process, formed anew.
std::wstring commandFilePathNow();

// Creates the file empty and gives the handle that keeps it alive, which the caller owns;
// INVALID_HANDLE_VALUE when it cannot be created. Others may read, write and delete it meanwhile.
HANDLE createCommandFile(const std::wstring& path);

// The same, with null for a file that cannot be created.
HANDLE createCommandFileOrNull(const std::wstring& path);

// The file's size in bytes, 0 when it cannot be told.
LONGLONG commandFileSize(HANDLE file);

// Reads `size` bytes. The text always has this length; bytes that could not be read are zero.
std::string readCommandFile(HANDLE file, LONGLONG size);

} // namespace torvapdm
