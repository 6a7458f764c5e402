// Zip files in memory.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zemlink {

struct ZipEntry {
    std::string name{}; // UTF-8, with slashes between folders
    std::string bytes{};
};

// The entries together are unpacked only up to this size, so that a small file cannot fill the
// memory.
inline constexpr std::uint64_t mostUnpackedBytes = std::uint64_t{1} << 30;

// The bytes of a zip file. The same entries give the same bytes: all have the date on which the
// format's calendar starts. Throws std::runtime_error when there is not enough memory.
std::string formatZip(const std::vector<ZipEntry>& entries);

// Throws std::runtime_error, with the cause, when the bytes are not a zip file, are damaged or hold
// too much.
std::vector<ZipEntry> parseZip(std::string_view bytes);

} // namespace zemlink
