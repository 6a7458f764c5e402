#include "standin/companion/library/library.h"

#include "peer/exchange_paths.h"
#include "peer/files.h"
#include "peer/text.h"
#include "standin/companion/log/event_text.h"
#include <algorithm>

#include <map>
#include <utility>

namespace companion {
namespace {

std::vector<int> countAllOperations(const std::wstring& folder, const LibraryIndex& index)
{
    std::vector<int> operations;
    for (const LibraryItem& item : index.items)
        operations.push_back(
            countOperations(peer::readFile(versionPath(folder, item)).value_or("")));
    return operations;
}

// The counts of versions that the earlier index contains are still valid.
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
                : countOperations(peer::readFile(versionPath(folder, item)).value_or("")));
    }
    return operations;
}

void logLibrary(const LibraryIndex& index, EventLog& log)
{
    logEvent(log, L"library", numberField(L"items", static_cast<int>(index.items.size())));
    for (const int line : index.badLines)
        logEvent(log, L"library-line-bad", numberField(L"line", line));
}

std::string_view takeLine(std::string_view& text)
{
    const size_t end = std::min(text.find('\n'), text.size() - 1);
    std::string_view line = text.substr(0, end + 1);
    text.remove_prefix(end + 1);
    while (line.ends_with('\n') || line.ends_with('\r'))
        line.remove_suffix(1);
    return line;
}

} // namespace

bool refreshLibrary(Library& library, const std::wstring& folder, EventLog& log)
{
    std::optional<std::string> bytes = peer::readFile(peer::libraryIndexPath(folder));
    if (bytes == library.indexBytes)
        return false;
    library.indexBytes = std::move(bytes);
    library.index = readLibraryIndex(peer::fromUtf8(library.indexBytes.value_or("")));
    library.operations = countAllOperations(folder, library.index);
    logLibrary(library.index, log);
    return true;
}

bool isReadable(const Library& library, const std::wstring& folder)
{
    return library.indexBytes || !peer::isFile(peer::libraryIndexPath(folder));
}

bool changeIndex(Library& library, const std::wstring& folder, const std::string& bytes)
{
    if (!peer::replaceFile(peer::libraryIndexPath(folder), bytes))
        return false;
    LibraryIndex index = readLibraryIndex(peer::fromUtf8(bytes));
    library.operations = countNewOperations(folder, index, library);
    library.index = std::move(index);
    library.indexBytes = bytes;
    return true;
}

std::wstring versionPath(const std::wstring& folder, const LibraryItem& item)
{
    return peer::libraryFolder(folder) + L'\\' + versionFile(item);
}

int countOperations(std::string_view partFile)
{
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (partFile.starts_with(byteOrderMark))
        partFile.remove_prefix(byteOrderMark.size());
    int operations = 0;
    while (!partFile.empty())
        operations += takeLine(partFile) == "[operation]" ? 1 : 0;
    return operations;
}

} // namespace companion
