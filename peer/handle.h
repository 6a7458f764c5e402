// A kernel handle that is closed once. Its one empty value is null.
#pragma once

#include <memory>
#include <windows.h>

namespace companion {

struct HandleCloser {
    using pointer = HANDLE;
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};

using OwnHandle = std::unique_ptr<void, HandleCloser>;

// What CreateFileW gave; its failure value becomes the empty one.
inline OwnHandle ownFile(HANDLE file)
{
    return OwnHandle(file == INVALID_HANDLE_VALUE ? nullptr : file);
}

} // namespace companion
