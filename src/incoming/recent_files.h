// The list of recently opened files. No platform header: this is a decision.
#pragma once

#include "formats/recent_file.h"

#include <vector>

namespace torvapdm {

// Puts the file at the front: an entry with the same path (exactly) goes, and so does the oldest
// when more than 20 are left before the new one comes in.
void rememberRecentFile(std::vector<RecentFile>& files, std::int32_t id, const std::wstring& path);

} // namespace torvapdm
