#include "standin/companion/library/version_plan.h"

#include "peer/exchange_paths.h"

#include <algorithm>
#include <limits>

namespace companion {
namespace {

constexpr std::int32_t largestNumber = std::numeric_limits<std::int32_t>::max();
constexpr std::wstring_view notInAName = L"\\/:*?\"<>|";

std::wstring fileOf(const peer::VersionPlan& plan, const wchar_t* extension)
{
    return plan.name + L"\\v" + std::to_wstring(plan.version) + extension;
}

bool isHighSurrogate(wchar_t c)
{
    return c >= 0xD800 && c <= 0xDBFF;
}

bool isLowSurrogate(wchar_t c)
{
    return c >= 0xDC00 && c <= 0xDFFF;
}

// An unpaired surrogate cannot be stored in the index, which is UTF-8.
bool isHalfAPair(std::wstring_view text, size_t place)
{
    const wchar_t c = text[place];
    const bool isAfterHigh = place > 0 && isHighSurrogate(text[place - 1]);
    const bool isBeforeLow = place + 1 < text.size() && isLowSurrogate(text[place + 1]);
    return (isHighSurrogate(c) && !isBeforeLow) || (isLowSurrogate(c) && !isAfterHigh);
}

std::wstring cleaned(std::wstring_view text)
{
    std::wstring name;
    for (size_t i = 0; i < text.size(); ++i) {
        const bool isKept = text[i] >= L' ' && notInAName.find(text[i]) == text.npos;
        name += isKept && !isHalfAPair(text, i) ? text[i] : L'_';
    }
    const size_t first = name.find_first_not_of(L" .");
    if (first == name.npos)
        return L"part";
    return name.substr(first, name.find_last_not_of(L" .") - first + 1);
}

} // namespace

std::wstring pictureFile(const peer::VersionPlan& plan)
{
    return fileOf(plan, L".bmp");
}

std::wstring versionFile(const peer::VersionPlan& plan)
{
    return fileOf(plan, L".mcam");
}

bool isInIndex(const LibraryIndex& index, const peer::VersionPlan& plan)
{
    const LibraryItem* item = findName(index, plan.name);
    return item != nullptr && item->version >= plan.version;
}

std::int32_t freeNumber(const LibraryIndex& index)
{
    std::int32_t number = 1;
    for (const LibraryItem& item : index.items)
        if (item.number < largestNumber)
            number = std::max(number, item.number + 1);
    while (findNumber(index, number) != nullptr)
        --number;
    return number;
}

std::wstring newPartName(const LibraryIndex& index, std::wstring_view file)
{
    const std::wstring fileName = peer::fileNameOf(std::wstring(file));
    const std::wstring name = cleaned(fileName.substr(0, fileName.find_last_of(L'.')));
    std::wstring unused = name;
    for (int i = 2; findName(index, unused) != nullptr; ++i)
        unused = name + L'-' + std::to_wstring(i);
    return unused;
}

} // namespace companion
