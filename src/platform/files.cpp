#include "platform/files.h"

#include <io.h>

namespace torvapdm {

namespace {

constexpr intptr_t nothingFound = -1;

struct Search {
    explicit Search(intptr_t opened) : handle(opened) {}
    ~Search()
    {
        if (handle != nothingFound)
            _findclose(handle);
    }
    Search(const Search&) = delete;
    Search& operator=(const Search&) = delete;

    const intptr_t handle;
};

} // namespace

bool fileExists(const std::wstring& path)
{
    WIN32_FILE_ATTRIBUTE_DATA data;
    return GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data) &&
           !(data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY);
}

std::vector<std::string> findFileNames(const std::string& pattern)
{
    std::vector<std::string> names;
    _finddata64i32_t found;
    const Search search(_findfirst64i32(pattern.c_str(), &found));
    if (search.handle == nothingFound)
        return names;
    do
        names.emplace_back(found.name);
    while (_findnext64i32(search.handle, &found) == 0);
    return names;
}

OwnFile openStream(const std::wstring& path, const wchar_t* mode)
{
    FILE* stream = nullptr;
    return OwnFile(_wfopen_s(&stream, path.c_str(), mode) == 0 ? stream : nullptr);
}

} // namespace torvapdm
