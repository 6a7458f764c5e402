#include "standin/companion/library/working_copies.h"

#include "peer/files.h"
#include "peer/lines.h"
#include "peer/text.h"

#include <algorithm>

namespace companion {
namespace {

constexpr size_t mostCopies = 1000; // the oldest are removed

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
    for (const auto& copy : peer::parseWorkingCopies(text))
        if (copy)
            noteWorkingCopy(copies, *copy);
    return copies;
}

std::wstring workingCopiesText(const WorkingCopies& copies)
{
    std::wstring text;
    for (const WorkingCopy& copy : copies)
        text += peer::formatWorkingCopy(copy);
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
