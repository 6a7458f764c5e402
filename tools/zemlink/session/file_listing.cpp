#include "tools/zemlink/session/file_listing.h"

#include "peer/handle.h"
#include "peer/text.h"
#include "tools/zemlink/session/local_time.h"

#include <algorithm>
#include <filesystem>

extern "C" { // some headers do not say so
#include <bcrypt.h>
}

namespace zemlink {
namespace {

constexpr ULONG hashBytes = 32;
// While a file is read, a program that replaces it by renaming has to wait; a larger one takes too
// long.
constexpr std::uint64_t mostHashedBytes = 64 << 20;

struct AlgorithmCloser {
    void operator()(void* algorithm) const { BCryptCloseAlgorithmProvider(algorithm, 0); }
};

struct HashCloser {
    void operator()(void* hash) const { BCryptDestroyHash(hash); }
};

bool isFine(NTSTATUS status)
{
    return status >= 0;
}

std::string sha256Of(HANDLE file)
{
    void* opened = nullptr;
    if (!isFine(BCryptOpenAlgorithmProvider(&opened, BCRYPT_SHA256_ALGORITHM, nullptr, 0)))
        return {};
    const std::unique_ptr<void, AlgorithmCloser> algorithm(opened);
    void* started = nullptr;
    if (!isFine(BCryptCreateHash(opened, &started, nullptr, 0, nullptr, 0, 0)))
        return {};
    const std::unique_ptr<void, HashCloser> hash(started);
    std::vector<UCHAR> part(1 << 16);
    DWORD count = 0;
    do {
        if (!ReadFile(file, part.data(), static_cast<DWORD>(part.size()), &count, nullptr) ||
            !isFine(BCryptHashData(hash.get(), part.data(), count, 0)))
            return {};
    } while (count != 0);
    std::string digest(hashBytes, '\0');
    const NTSTATUS finished =
        BCryptFinishHash(hash.get(), reinterpret_cast<UCHAR*>(digest.data()), hashBytes, 0);
    return isFine(finished) ? hexadecimal(digest) : "";
}

// Shared in every way, since hosts and the Companion work on the files meanwhile.
ListedFile describe(const std::filesystem::path& path, const std::wstring& folder)
{
    ListedFile listed{path.native().substr(folder.size() + 1)};
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data)) {
        listed.bytes = std::uint64_t{data.nFileSizeHigh} << 32 | data.nFileSizeLow;
        listed.writtenAt = timeOf(data.ftLastWriteTime);
    }
    if (listed.bytes == 0 || listed.bytes > mostHashedBytes)
        return listed; // an empty command file must not be opened: its host could not create it
                       // again
    const peer::OwnHandle file = peer::ownFile(CreateFileW(
        path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
        OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
    if (file && GetFileType(file.get()) == FILE_TYPE_DISK)
        listed.sha256 = sha256Of(file.get());
    return listed;
}

} // namespace

std::vector<ListedFile> describeFiles(const std::wstring& folder)
{
    using Directory = std::filesystem::recursive_directory_iterator;
    std::vector<ListedFile> files;
    std::error_code error;
    for (Directory place(folder, std::filesystem::directory_options::skip_permission_denied, error);
         !error && place != Directory(); place.increment(error)) {
        const DWORD attributes = GetFileAttributesW(place->path().c_str());
        if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 && place->is_directory(error))
            place.disable_recursion_pending();
        if ((attributes & FILE_ATTRIBUTE_DIRECTORY) == 0)
            files.push_back(describe(place->path(), folder));
    }
    std::ranges::sort(files, {}, &ListedFile::path);
    return files;
}

Report listingReport(const std::vector<ListedFile>& files)
{
    Report report{{"files", Report::array()}};
    for (const ListedFile& file : files) {
        Report entry{{"path", peer::toUtf8(file.path)}, {"bytes", file.bytes}};
        entry["writtenAt"] = universalTime(file.writtenAt);
        entry["sha256"] = file.sha256.empty() ? Report() : Report(file.sha256);
        report["files"].push_back(entry);
    }
    return report;
}

} // namespace zemlink
