// The files and registry of a computer as comparable lines.
#pragma once

#include "support/bytes.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <string>
#include <vector>
#include <windows.h>

namespace testing_support {

using State = std::set<std::wstring>;

// One line for each file below the folder, with size and time, and one for each folder, ending in a
// backslash. The excluded folder has no line. Links to other folders, such as Wine's links to the
// user's folders, are not followed.
inline State filesBelow(const std::wstring& folder, const std::wstring& leftOut = L"")
{
    State state;
    WIN32_FIND_DATAW found{};
    const HANDLE search = FindFirstFileW((folder + L"\\*").c_str(), &found);
    for (BOOL isThere = search != INVALID_HANDLE_VALUE; isThere;
         isThere = FindNextFileW(search, &found)) {
        const std::wstring name = found.cFileName;
        const std::wstring path = folder + L'\\' + name;
        const FILETIME& written = found.ftLastWriteTime;
        if (name == L"." || name == L".." || path == leftOut)
            continue;
        if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
            state.insert(path + L" | " + std::to_wstring(found.nFileSizeLow) + L" | " +
                         std::to_wstring(written.dwHighDateTime) + L"." +
                         std::to_wstring(written.dwLowDateTime));
            continue;
        }
        state.insert(path + L'\\');
        if ((found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0)
            state.merge(filesBelow(path, leftOut));
    }
    FindClose(search);
    return state;
}

// Adds one line for this key, for each key below it and for each value with its content.
inline void addKey(State& state, HKEY parent, const std::wstring& name, const std::wstring& path)
{
    // One pair of buffers for all keys, because there are tens of thousands.
    static std::vector<wchar_t> valueName(16384);
    static std::vector<BYTE> content(1 << 20);
    HKEY key = nullptr;
    if (RegOpenKeyExW(parent, name.c_str(), REG_OPTION_OPEN_LINK, KEY_READ, &key) != ERROR_SUCCESS)
        return;
    state.insert(path);
    for (DWORD i = 0;; ++i) {
        auto length = static_cast<DWORD>(valueName.size());
        auto size = static_cast<DWORD>(content.size());
        DWORD type = 0;
        if (RegEnumValueW(key, i, valueName.data(), &length, nullptr, &type, content.data(),
                          &size) != ERROR_SUCCESS)
            break;
        state.insert(path + L" | " + std::wstring(valueName.data(), length) + L" = " +
                     std::to_wstring(type) + L':' +
                     std::wstring(content.begin(), content.begin() + std::ptrdiff_t(size)));
    }
    wchar_t below[256];
    for (DWORD i = 0, length = 256;
         RegEnumKeyExW(key, i, below, &length, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
         ++i, length = 256)
        addKey(state, key, below, path + L'\\' + below);
    RegCloseKey(key);
}

inline State registryBelow(HKEY root, const std::wstring& key)
{
    State state;
    addKey(state, root, key, key);
    return state;
}

// The lines of the first state that the second one does not have.
inline State onlyIn(const State& first, const State& second)
{
    State result;
    std::ranges::set_difference(first, second, std::inserter(result, result.end()));
    return result;
}

// Used in failure messages.
inline std::string text(const State& state)
{
    std::string lines;
    for (const std::wstring& line : state)
        lines += toUtf8(line.substr(0, 300)) + '\n';
    return lines;
}

} // namespace testing_support
