#include "standin/companion/library/working_copies.h"

#include "peer/files.h"
#include "peer/numbers.h"
#include "peer/lines.h"
#include "peer/text.h"

#include <algorithm>
#include <limits>

namespace companion {
namespace {

using Limits = std::numeric_limits<std::int32_t>;

constexpr std::wstring_view bar = L" | ";
constexpr size_t mostCopies = 1000; // the oldest are removed

std::optional<WorkingCopy> readLine(std::wstring_view line)
{
    const size_t first = line.find(bar);
    const size_t second = first == line.npos ? line.npos : line.find(bar, first + bar.size());
    if (second == line.npos)
        return std::nullopt;
    const std::wstring_view id = line.substr(0, first);
    const auto idNumber = peer::parseNumber(id, Limits::min(), Limits::max());
    const auto number = peer::parseNumber(
        line.substr(first + bar.size(), second - first - bar.size()), 0, Limits::max());
    if (!number || (!idNumber && id != L"-"))
        return std::nullopt;
    WorkingCopy copy{.number = static_cast<std::int32_t>(*number),
                     .path = std::wstring(line.substr(second + bar.size()))};
    if (idNumber)
        copy.id = static_cast<std::int32_t>(*idNumber);
    return copy;
}

const WorkingCopy* copyAt(const WorkingCopies& copies, std::wstring_view path)
{
    const auto found = std::find_if(copies.rbegin(), copies.rend(), [&](const WorkingCopy& copy) {
        return !copy.path.empty() && peer::isSameIgnoringCase(copy.path, path);
    });
    return found == copies.rend() ? nullptr : &*found;
}

// Hosts return a negative id as the unsigned number with the same bits.
const WorkingCopy* copySentWith(const WorkingCopies& copies, std::uint32_t id)
{
    const auto found = std::find_if(copies.rbegin(), copies.rend(), [&](const WorkingCopy& copy) {
        return copy.id && static_cast<std::uint32_t>(*copy.id) == id;
    });
    return found == copies.rend() ? nullptr : &*found;
}

} // namespace

WorkingCopies readWorkingCopies(std::wstring_view text)
{
    WorkingCopies copies;
    while (!text.empty()) {
        const size_t end = std::min(text.find(L'\n'), text.size());
        if (const auto copy = readLine(text.substr(0, end)))
            noteWorkingCopy(copies, *copy);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return copies;
}

std::wstring workingCopiesText(const WorkingCopies& copies)
{
    std::wstring text;
    for (const WorkingCopy& copy : copies) {
        text += copy.id ? std::to_wstring(*copy.id) : L"-";
        text += bar;
        text += std::to_wstring(copy.number);
        text += bar;
        text += copy.path + L'\n';
    }
    return text;
}

void noteWorkingCopy(WorkingCopies& copies, const WorkingCopy& copy)
{
    for (WorkingCopy& earlier : copies) {
        if (peer::isSameIgnoringCase(earlier.path, copy.path))
            earlier.path.clear();
        if (earlier.id == copy.id)
            earlier.id.reset();
    }
    std::erase_if(copies,
                  [](const WorkingCopy& earlier) { return !earlier.id && earlier.path.empty(); });
    copies.push_back(copy);
    if (copies.size() > mostCopies)
        copies.erase(copies.begin());
}

std::optional<std::int32_t> partOfCommit(const WorkingCopies& copies, const LibraryIndex& index,
                                         const peer::CommitRecord& record)
{
    const WorkingCopy* copy = copyAt(copies, record.file);
    if (copy != nullptr && findNumber(index, copy->number) != nullptr)
        return copy->number;
    if (record.id == 0 || record.id == peer::noZemId)
        return std::nullopt;
    copy = copySentWith(copies, record.id);
    const auto number = copy != nullptr ? copy->number : static_cast<std::int32_t>(record.id);
    return findNumber(index, number) != nullptr ? std::optional(number) : std::nullopt;
}

CopyList readCopyList(const std::wstring& path)
{
    return {path, readWorkingCopies(peer::fromUtf8(peer::readFile(path).value_or("")))};
}

void keepCopy(CopyList& list, const WorkingCopy& copy)
{
    noteWorkingCopy(list.copies, copy);
    peer::replaceFile(list.path, peer::toUtf8(workingCopiesText(list.copies)));
}

} // namespace companion
