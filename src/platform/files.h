// Small questions about files.
#pragma once

#include <string>

namespace torvapdm {

// True when the path exists and is no folder.
bool fileExists(const std::wstring& path);

// True when the path exists, as a file or as a folder.
bool pathExists(const std::wstring& path);

// The file's size in bytes, its low 32 bits. The file has to exist; 0 when it does not.
int getFileSize(const std::wstring& path);

} // namespace torvapdm
