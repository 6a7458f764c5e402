#include "standin/companion/library/version_store.h"

#include "peer/exchange_paths.h"
#include "peer/files.h"
#include "peer/handle.h"
#include "peer/text.h"
#include "standin/companion/library/library_index.h"

#include <limits>

namespace companion {
namespace {

std::wstring inLibrary(const std::wstring& folder, const std::wstring& file)
{
    return peer::libraryFolder(folder) + L'\\' + file;
}

// The size and time of a file; they differ after a write.
struct Stamp {
    DWORD sizeHigh = 0, sizeLow = 0, timeHigh = 0, timeLow = 0;

    bool operator==(const Stamp&) const = default;
};

std::optional<Stamp> stampOf(const std::wstring& path)
{
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data) ||
        (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
        return std::nullopt;
    return Stamp{data.nFileSizeHigh, data.nFileSizeLow, data.ftLastWriteTime.dwHighDateTime,
                 data.ftLastWriteTime.dwLowDateTime};
}

// Flushed, so that the copy is on the disk before the index names it.
bool writeWhole(const std::wstring& path, const std::string& bytes)
{
    const peer::OwnHandle file =
        peer::ownFile(CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                  CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    DWORD written = 0;
    return file &&
           WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written,
                     nullptr) &&
           written == bytes.size() && FlushFileBuffers(file.get());
}

// A host may be saving the file again meanwhile: it is open only while it is read, with all sharing
// modes.
Storing copyWhole(const std::wstring& from, const std::wstring& to)
{
    const auto before = stampOf(from);
    const auto bytes = before ? peer::readFile(from) : std::nullopt;
    if (!bytes || stampOf(from) != before)
        return Storing::unreadable;
    return writeWhole(to, *bytes) ? Storing::stored : Storing::unwritable;
}

// The part file is renamed last: if it exists, the picture is complete, too.
Storing placeFiles(const std::wstring& folder, const peer::VersionPlan& plan,
                   const CommittedFile& file)
{
    const std::wstring part = inLibrary(folder, versionFile(plan));
    const std::wstring newFile = part + L".new";
    CreateDirectoryW(peer::libraryFolder(folder).c_str(), nullptr);
    CreateDirectoryW(inLibrary(folder, plan.name).c_str(), nullptr);
    const Storing copied = copyWhole(file.path, newFile);
    if (copied != Storing::stored) {
        DeleteFileW(newFile.c_str());
        return copied;
    }
    if (file.pictureNotAfter)
        takeScreenPicture(folder, *file.pictureNotAfter, inLibrary(folder, pictureFile(plan)));
    return MoveFileExW(newFile.c_str(), part.c_str(), MOVEFILE_WRITE_THROUGH) ? Storing::stored
                                                                              : Storing::unwritable;
}

std::string indexWith(const Library& library, const peer::VersionPlan& plan,
                      const std::wstring& file)
{
    const std::string bytes = library.indexBytes.value_or("");
    const LibraryItem* item = findName(library.index, plan.name);
    if (item != nullptr)
        return withVersion(bytes, item->line, plan.version);
    const bool isTaken = findNumber(library.index, plan.number) != nullptr;
    LibraryItem added;
    added.number = isTaken ? freeNumber(library.index) : plan.number;
    added.name = plan.name;
    added.version = plan.version;
    added.description = L"From " + file;
    return withLine(bytes, peer::toUtf8(indexLine(added)));
}

bool hasAnything(const std::wstring& folder, const peer::VersionPlan& plan)
{
    return peer::isFile(inLibrary(folder, versionFile(plan))) ||
           peer::isFile(inLibrary(folder, pictureFile(plan)));
}

// False when the file does not exist.
bool isWrittenBy(const std::wstring& path, const FILETIME& time)
{
    WIN32_FILE_ATTRIBUTE_DATA data{};
    return GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data) &&
           CompareFileTime(&data.ftLastWriteTime, &time) <= 0;
}

} // namespace

std::optional<peer::VersionPlan> planVersion(const Library& library, const std::wstring& folder,
                                             std::optional<std::int32_t> part,
                                             const std::wstring& file)
{
    constexpr std::int32_t lastVersion = std::numeric_limits<std::int32_t>::max();
    const LibraryItem* item = part ? findNumber(library.index, *part) : nullptr;
    peer::VersionPlan plan =
        item != nullptr
            ? peer::VersionPlan{item->number, item->version, item->name}
            : peer::VersionPlan{freeNumber(library.index), 0, newPartName(library.index, file)};
    do {
        if (plan.version == lastVersion)
            return std::nullopt;
        ++plan.version;
    } while (hasAnything(folder, plan));
    return plan;
}

Storing storeVersion(Library& library, const std::wstring& folder, EventLog& log,
                     const peer::VersionPlan& plan, const CommittedFile& file)
{
    refreshLibrary(library, folder, log);
    if (!isReadable(library, folder))
        return Storing::unwritable;
    if (isInIndex(library.index, plan))
        return Storing::storedBefore;
    if (!peer::isFile(inLibrary(folder, versionFile(plan)))) {
        const Storing placed = placeFiles(folder, plan, file);
        if (placed != Storing::stored)
            return placed;
    }
    return changeIndex(library, folder, indexWith(library, plan, file.path)) ? Storing::stored
                                                                             : Storing::unwritable;
}

bool takeScreenPicture(const std::wstring& folder, const FILETIME& notAfter, const std::wstring& to)
{
    const std::wstring picture = peer::screenPicturePath(folder);
    if (!isWrittenBy(picture, notAfter) ||
        !MoveFileExW(picture.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING))
        return false;
    if (isWrittenBy(to, notAfter))
        return true;
    // A host wrote the next picture meanwhile. Move it back unless a newer one exists by now.
    if (!MoveFileW(to.c_str(), picture.c_str()))
        DeleteFileW(to.c_str());
    return false;
}

} // namespace companion
