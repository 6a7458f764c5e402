#include "outgoing/posted_files.h"

#include <io.h>

namespace torvapdm {

namespace {

// A search's handle, -1 when nothing was found.
struct Search {
    explicit Search(intptr_t opened) : handle(opened) {}
    ~Search()
    {
        if (handle != -1)
            _findclose(handle);
    }
    Search(const Search&) = delete;
    Search& operator=(const Search&) = delete;

    const intptr_t handle;
};

} // namespace

std::vector<std::string> filesMatching(const std::string& pattern)
{
    std::vector<std::string> names;
    _finddata64i32_t found;
    const Search search(_findfirst64i32(pattern.c_str(), &found));
    if (search.handle == -1)
        return names;
    do
        names.emplace_back(found.name);
    while (_findnext64i32(search.handle, &found) == 0);
    return names;
}

} // namespace torvapdm
