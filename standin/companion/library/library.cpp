#include "library.h"

#include "standin/companion/app/event_text.h"
#include "peer/exchange_paths.h"
#include "part_summary.h"
#include "peer/files.h"
#include "peer/text.h"

#include <map>
#include <utility>

namespace companion {
namespace {

std::vector<int> countAllOperations(const std::wstring& folder, const LibraryIndex& index)
{
    std::vector<int> operations;
    for (const LibraryItem& item : index.items)
        operations.push_back(countOperations(readFile(versionPath(folder, item)).value_or("")));
    return operations;
}

// What an earlier index told of the same version goes on to be true.
std::vector<int> countNewOperations(const std::wstring& folder, const LibraryIndex& index,
                                    const Library& earlier)
{
    std::map<std::wstring, int> known;
    for (size_t i = 0; i < earlier.index.items.size(); ++i)
        known[versionFile(earlier.index.items[i])] = earlier.operations[i];
    std::vector<int> operations;
    for (const LibraryItem& item : index.items) {
        const auto found = known.find(versionFile(item));
        operations.push_back(
            found != known.end()
                ? found->second
                : countOperations(readFile(versionPath(folder, item)).value_or("")));
    }
    return operations;
}

void logLibrary(const LibraryIndex& index, EventLog& log)
{
    logEvent(log, L"library", numberField(L"items", static_cast<int>(index.items.size())));
    for (const int line : index.badLines)
        logEvent(log, L"library-line-bad", numberField(L"line", line));
}

} // namespace

bool refreshLibrary(Library& library, const std::wstring& folder, EventLog& log)
{
    std::optional<std::string> bytes = readFile(libraryIndexPath(folder));
    if (bytes == library.indexBytes)
        return false;
    library.indexBytes = std::move(bytes);
    library.index = readLibraryIndex(fromUtf8(library.indexBytes.value_or("")));
    library.operations = countAllOperations(folder, library.index);
    logLibrary(library.index, log);
    return true;
}

bool isReadable(const Library& library, const std::wstring& folder)
{
    return library.indexBytes || !isFile(libraryIndexPath(folder));
}

bool changeIndex(Library& library, const std::wstring& folder, const std::string& bytes)
{
    if (!replaceFile(libraryIndexPath(folder), bytes))
        return false;
    LibraryIndex index = readLibraryIndex(fromUtf8(bytes));
    library.operations = countNewOperations(folder, index, library);
    library.index = std::move(index);
    library.indexBytes = bytes;
    return true;
}

std::wstring versionPath(const std::wstring& folder, const LibraryItem& item)
{
    return libraryFolder(folder) + L'\\' + versionFile(item);
}

} // namespace companion
