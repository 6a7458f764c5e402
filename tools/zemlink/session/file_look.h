// Looks at a file of another program without disturbing it: each opens it, if at all, only for an
// instant, shared in every way, and locks nothing.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace zemlink {

// Two looks at an unchanged file are equal.
struct FileLook {
    bool exists = false;
    std::uint64_t size = 0;     // bytes
    std::int64_t writtenAt = 0; // milliseconds since 1970, UTC
    std::uint64_t stamp = 0;    // the same time with all its digits

    bool operator==(const FileLook&) const = default;
};

// Does not open the file.
FileLook lookAt(const std::wstring& path);

// The bytes from an offset to the present end, `mostBytes` at most; empty when the file cannot be
// read.
std::optional<std::string> readFrom(const std::wstring& path, std::uint64_t offset,
                                    std::uint32_t mostBytes);

bool isFolder(const std::wstring& path);

// The names of the files, without folders, that match a pattern such as `C:\TORVA\ZEM\temp\*`.
std::vector<std::wstring> listFiles(const std::wstring& pattern);

} // namespace zemlink
