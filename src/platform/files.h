// Files: whether one exists, which names match a pattern, and the owners of streams and handles.
#pragma once

#include "platform/windows_api.h"

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

namespace torvapdm {

// True when the path exists and is not a folder.
bool fileExists(const std::wstring& path);

// The names, without their folder, of the files that match the pattern; empty when none does.
// Pattern and names are in the system's ANSI code page.
std::vector<std::string> findFileNames(const std::string& pattern);

struct StreamCloser {
    void operator()(FILE* stream) const { std::fclose(stream); }
};

// An open C stream, closed with its owner; null when there is none.
using OwnFile = std::unique_ptr<FILE, StreamCloser>;

// Opens a stream in a mode of _wfopen_s; null when the file cannot be opened.
OwnFile openStream(const std::wstring& path, const wchar_t* mode);

struct HandleCloser {
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};

// The handle of a kernel object, closed with its owner; null when there is none.
using OwnHandle = std::unique_ptr<void, HandleCloser>;

// Takes ownership of a handle; INVALID_HANDLE_VALUE becomes null.
inline OwnHandle ownHandle(HANDLE handle)
{
    return OwnHandle(handle == INVALID_HANDLE_VALUE ? nullptr : handle);
}

} // namespace torvapdm
