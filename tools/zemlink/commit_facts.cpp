#include "tools/zemlink/commit_facts.h"

#include "peer/bookmark.h"
#include "peer/exchange_paths.h"
#include "peer/files.h"
#include "peer/text.h"
#include "tools/zemlink/processes.h"

#include <algorithm>
#include <windows.h>

namespace zemlink {
namespace {

// A bookmark tells how far the file has been taken, where the Companion keeps one; `finished` says
// so of a closed file alone.
std::uint64_t takenOf(const companion::CommitRequestPaths& paths, bool isClosed)
{
    const auto bytes = companion::readFile(paths.bookmark);
    const auto bookmark = companion::readBookmark(companion::fromUtf8(bytes.value_or("")));
    if (bookmark && bookmark->isFinished)
        return isClosed ? companion::fileSize(paths.closed) : 0;
    return bookmark ? bookmark->taken : 0;
}

CommitFile commitFile(const std::wstring& folder, const std::wstring& name, std::uint32_t process)
{
    const companion::CommitRequestPaths paths = companion::commitRequestPaths(folder, process);
    CommitFile file{folder + L"\\temp\\" + name, process, isRunning(process)};
    const bool hasClosed = companion::isFile(paths.closed);
    // The bookmark is the closed file's while there is one.
    const bool isClosed = file.path == paths.closed;
    file.taken = hasClosed == isClosed ? takenOf(paths, isClosed) : 0;
    file.waiting = companion::readFile(file.path);
    if (file.waiting) {
        file.taken = file.taken <= file.waiting->size() ? file.taken : 0;
        file.waiting->erase(0, static_cast<size_t>(file.taken));
    }
    return file;
}

} // namespace

std::vector<CommitFile> findCommitFiles(const std::wstring& folder)
{
    std::vector<CommitFile> files;
    WIN32_FIND_DATAW found{};
    const HANDLE search = FindFirstFileW(companion::commitRequestPattern(folder).c_str(), &found);
    if (search == INVALID_HANDLE_VALUE)
        return files;
    do {
        const std::wstring name = found.cFileName;
        const auto process = companion::processOfCommitRequest(name);
        if (process && !name.ends_with(L".taken"))
            files.push_back(commitFile(folder, name, *process));
    } while (FindNextFileW(search, &found));
    FindClose(search);
    std::sort(files.begin(), files.end(), [](const CommitFile& a, const CommitFile& b) {
        return a.process != b.process ? a.process < b.process : a.path < b.path;
    });
    return files;
}

} // namespace zemlink
