// The files of an installation, for a support archive.
#pragma once

#include "tools/zemlink/reports/report.h"

#include <cstdint>
#include <string>
#include <vector>

namespace zemlink {

struct ListedFile {
    std::wstring path{}; // below the folder, without a leading backslash
    std::uint64_t bytes = 0;
    std::int64_t writtenAt = 0; // milliseconds since 1970, UTC
    std::string sha256{}; // in hexadecimal as Get-FileHash shows it; empty for one over 64 MB or
                          // that cannot be read
};

// All files below the folder, in order of path. A link to another folder is not followed.
std::vector<ListedFile> describeFiles(const std::wstring& folder);

// One entry for each file.
Report listingReport(const std::vector<ListedFile>& files);

} // namespace zemlink
