// The NC queue's texts: the NC-path number, NCI name, found file, top group, folder.
#include "fuzz/differences.h"
#include "fuzz/input.h"
#include "fuzz/plain_text.h"
#include "fuzz/targets.h"
#include "formats/nc_queue_file.h"

#include <algorithm>

namespace fuzzing {

namespace {

std::wstring plainProgramName(const std::wstring& nciName)
{
    const long long dot = lastOf(nciName, '.');
    const std::wstring stem = dot < 0 ? nciName : between(nciName, 0, dot);
    const long long separator = std::max(lastOf(stem, '/'), lastOf(stem, '\\'));
    return between(stem, separator + 1, static_cast<long long>(stem.size()));
}

std::string checkQueueTexts(std::string_view bytes)
{
    Input input(bytes);
    const auto number = input.number<std::int32_t>();
    const std::wstring nciName = input.wideField();
    const std::string file(input.field());
    const std::string group(input.field());
    const std::string folder(input.rest());
    std::string entry = folder;
    entry += file;
    entry += "|";
    entry += group;
    Differences differences;
    differences.compare("program name", torvapdm::programNameOf(nciName), plainProgramName(nciName));
    differences.compare("entry", torvapdm::formatQueueEntry(folder, file, group), entry);
    differences.compare("line", torvapdm::formatQueueLine(number, entry),
                        "NCPATH|" + std::to_string(std::int64_t{number}) + "|" + entry + "\n");
    return differences.text();
}

} // namespace

Target queueTextsTarget()
{
    return {"queue_texts",
            checkQueueTexts,
            {raw(-1) + "C:\\NC\\PART.nci\x1FPART.NC\x1FMill\x1F"
                       "C:\\NC\\",
             raw(3) + "PART\x1F\x1F\x1F", raw(0) + "C:\\a.b\\PART\x1FP.NC\x1F|\x1F",
             raw(-2147483647 - 1) + "C:/nc\\x/y.z.nci\x1F\x1F\n\x1F", raw(7) + ".\x1F"},
            {".", "/", "\\", "|", ".nci", "\x1F"}};
}

} // namespace fuzzing
