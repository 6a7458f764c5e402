#include "ncqueue/posted_files.h"

#include <io.h>

namespace torvapdm {

std::vector<std::string> filesMatching(const std::string& pattern)
{
    std::vector<std::string> names;
    _finddata64i32_t found;
    const intptr_t search = _findfirst64i32(pattern.c_str(), &found);
    if (search == -1)
        return names;
    do
        names.emplace_back(found.name);
    while (_findnext64i32(search, &found) == 0);
    _findclose(search);
    return names;
}

} // namespace torvapdm
