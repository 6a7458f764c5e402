#include "incoming/recent_files.h"

#include <algorithm>

namespace torvapdm {

void addRecentFile(std::vector<CompanionFile>& files, const CompanionFile& file)
{
    const auto same = std::find_if(files.begin(), files.end(), [&](const CompanionFile& known) {
        return known.path == file.path;
    });
    if (same != files.end())
        files.erase(same);
    // Quirk Q43: tested before the insertion, so the list grows to 21.
    if (files.size() > 20)
        files.pop_back();
    files.insert(files.begin(), file);
}

} // namespace torvapdm
