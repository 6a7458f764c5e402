#include "packaging/machine_state.h"

#include "support/bytes.h"

#include <algorithm>
#include <iterator>
#include <vector>

namespace testing_support {

namespace {

std::wstring sizeAndTime(const WIN32_FIND_DATAW& file)
{
    const FILETIME& written = file.ftLastWriteTime;
    return L" | " + std::to_wstring(file.nFileSizeLow) + L" | " +
           std::to_wstring(written.dwHighDateTime) + L"." + std::to_wstring(written.dwLowDateTime);
}

bool isFolderItself(const std::wstring_view& name)
{
    return name == L"." || name == L"..";
}

void addFiles(State& state, const std::wstring& folder, const std::wstring& leftOut)
{
    WIN32_FIND_DATAW found{};
    const HANDLE search = FindFirstFileW((folder + L"\\*").c_str(), &found);
    for (BOOL isThere = search != INVALID_HANDLE_VALUE; isThere;
         isThere = FindNextFileW(search, &found)) {
        const std::wstring path = folder + L'\\' + found.cFileName;
        if (isFolderItself(found.cFileName) || path == leftOut)
            continue;
        const DWORD attributes = found.dwFileAttributes;
        const bool isFolder = (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        state.insert(isFolder ? path + L'\\' : path + sizeAndTime(found));
        if (isFolder && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0)
            addFiles(state, path, leftOut);
    }
    FindClose(search);
}

std::wstring hexadecimal(const BYTE* bytes, DWORD size)
{
    constexpr wchar_t digits[] = L"0123456789abcdef";
    std::wstring result;
    for (DWORD i = 0; i < size; ++i) {
        result += digits[bytes[i] >> 4];
        result += digits[bytes[i] & 15];
    }
    return result;
}

// Enumerates keys with one pair of buffers, because there are tens of thousands of keys.
class RegistryReader {
public:
    explicit RegistryReader(State& state) : state_(state), name_(16384), content_(1 << 20) {}

    void addKey(HKEY parent, const std::wstring& name, const std::wstring& path)
    {
        HKEY key = nullptr;
        if (RegOpenKeyExW(parent, name.c_str(), REG_OPTION_OPEN_LINK, KEY_READ, &key) !=
            ERROR_SUCCESS)
            return;
        state_.insert(path);
        for (DWORD i = 0; addValue(key, i, path); ++i)
            continue;
        wchar_t below[256];
        for (DWORD i = 0, length = 256; RegEnumKeyExW(key, i, below, &length, nullptr, nullptr,
                                                      nullptr, nullptr) == ERROR_SUCCESS;
             ++i, length = 256)
            addKey(key, below, path + L'\\' + below);
        RegCloseKey(key);
    }

private:
    bool addValue(HKEY key, DWORD place, const std::wstring& path)
    {
        DWORD length = static_cast<DWORD>(name_.size());
        DWORD size = static_cast<DWORD>(content_.size());
        DWORD type = 0;
        if (RegEnumValueW(key, place, name_.data(), &length, nullptr, &type, content_.data(),
                          &size) != ERROR_SUCCESS)
            return false;
        state_.insert(path + L" | " + std::wstring(name_.data(), length) + L" = " +
                      std::to_wstring(type) + L':' + hexadecimal(content_.data(), size));
        return true;
    }

    State& state_;
    std::vector<wchar_t> name_;
    std::vector<BYTE> content_;
};

} // namespace

State filesBelow(const std::wstring& folder, const std::wstring& leftOut)
{
    State state;
    addFiles(state, folder, leftOut);
    return state;
}

State registryBelow(HKEY root, const std::wstring& key)
{
    State state;
    RegistryReader(state).addKey(root, key, key);
    return state;
}

State onlyIn(const State& first, const State& second)
{
    State result;
    std::set_difference(first.begin(), first.end(), second.begin(), second.end(),
                        std::inserter(result, result.end()));
    return result;
}

std::string text(const State& state)
{
    std::string lines;
    for (const std::wstring& line : state)
        lines += toUtf8(line.substr(0, 300)) + '\n';
    return lines;
}

} // namespace testing_support
