#include "library.h"

#include "decisions/eventtext.h"
#include "decisions/exchangepaths.h"
#include "decisions/partsummary.h"
#include "files.h"
#include "text.h"

namespace companion {
namespace {

std::vector<int> countAllOperations(const std::wstring& folder, const LibraryIndex& index)
{
    std::vector<int> operations;
    for (const LibraryItem& item : index.items) {
        operations.push_back(countOperations(readFile(versionPath(folder, item)).value_or("")));
    }
    return operations;
}

void logLibrary(const LibraryIndex& index, EventLog& log)
{
    logEvent(log, L"library", numberField(L"items", static_cast<int>(index.items.size())));
    for (const int line : index.badLines) {
        logEvent(log, L"library-line-bad", numberField(L"line", line));
    }
}

} // namespace

bool refreshLibrary(Library& library, const std::wstring& folder, EventLog& log)
{
    std::optional<std::string> bytes = readFile(libraryIndexPath(folder));
    if (bytes == library.indexBytes) {
        return false;
    }
    library.indexBytes = std::move(bytes);
    library.index = readLibraryIndex(fromUtf8(library.indexBytes.value_or("")));
    library.operations = countAllOperations(folder, library.index);
    logLibrary(library.index, log);
    return true;
}

std::wstring versionPath(const std::wstring& folder, const LibraryItem& item)
{
    return libraryFolder(folder) + L'\\' + versionFile(item);
}

} // namespace companion
