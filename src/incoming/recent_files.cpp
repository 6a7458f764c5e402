#include "incoming/recent_files.h"

#include <algorithm>

namespace torvapdm {

void rememberRecentFile(std::vector<RecentFile>& files, std::int32_t id, const std::wstring& path)
{
    const auto same = std::find_if(files.begin(), files.end(),
                                   [&](const RecentFile& file) { return file.path == path; });
    if (same != files.end())
        files.erase(same);
    // Deliberate: tested before the new entry comes in, so that the list grows to 21. One would
    // expect 20; the menu shows whatever the list holds.
    if (files.size() > 20)
        files.pop_back();
    files.insert(files.begin(), RecentFile{id, path});
}

} // namespace torvapdm
