#include "tools/zemlink/session/commit_files.h"

#include "peer/bookmark.h"
#include "peer/commit_record.h"
#include "peer/exchange_paths.h"
#include "peer/text.h"

#include <limits>

namespace zemlink {
namespace {

constexpr auto everything = std::numeric_limits<std::uint64_t>::max();
constexpr std::uint32_t mostCommitBytes = 1u << 24; // at once; the rest with the next look

peer::Bookmark readBookmarkAt(const std::wstring& path)
{
    const std::string bytes = readFrom(path, 0, mostCommitBytes).value_or("");
    return peer::parseBookmark(peer::fromUtf8(bytes)).value_or(peer::Bookmark{});
}

} // namespace

std::vector<ExchangeEvent> CommitFiles::look(std::int64_t now)
{
    std::vector<ExchangeEvent> events;
    for (const std::wstring& name : listFiles(peer::commitFilePattern(folder_)))
        if (const auto process = peer::processOfCommitFile(name))
            queues_[*process];
    for (auto& [process, queue] : queues_)
        lookAtQueue(process, queue, now, events);
    hasLooked_ = true;
    std::erase_if(queues_, [](const auto& entry) {
        const Queue& queue = entry.second;
        return !queue.live.look.exists && !queue.closed.look.exists && !queue.bookmark.exists;
    });
    return events;
}

void CommitFiles::lookAtQueue(std::uint32_t process, Queue& queue, std::int64_t now,
                              std::vector<ExchangeEvent>& events) const
{
    const peer::CommitPaths paths = peer::commitPaths(folder_, process);
    // Before the records: it then never passes a record that has not been read.
    const FileLook bookmarkLook = lookAt(paths.bookmark);
    const bool hasMoved = bookmarkLook.exists && bookmarkLook != queue.bookmark;
    const peer::Bookmark bookmark = hasMoved ? readBookmarkAt(paths.bookmark) : peer::Bookmark{};
    queue.bookmark = bookmarkLook;
    queue.live.path = paths.live;
    if (lookAt(paths.closed).exists && !queue.closed.look.exists)
        queue.closed = std::exchange(queue.live, File{paths.live});
    queue.closed.path = paths.closed;
    // While a closed file exists, the bookmark belongs to it, and `finished` always does.
    const bool isOfClosed = lookAt(paths.closed).exists || bookmark.isFinished;
    File& marked = isOfClosed ? queue.closed : queue.live;
    if (!hasLooked_ && hasMoved)
        marked.end = bookmark.isFinished ? lookAt(marked.path).size : bookmark.taken;
    for (File* file : {&queue.closed, &queue.live}) {
        const FileLook look = lookAt(file->path);
        if (!look.exists || look.size < file->end) {
            take(process, *file, everything, now, events);
            file->end = 0;
        }
        file->look = look;
        readNew(process, *file, events);
    }
    if (hasMoved) {
        take(process, marked, bookmark.isFinished ? everything : bookmark.taken,
             bookmarkLook.writtenAt, events);
    }
}

void CommitFiles::readNew(std::uint32_t process, File& file, std::vector<ExchangeEvent>& events)
{
    if (file.look.size <= file.end)
        return;
    const std::string bytes = readFrom(file.path, file.end, mostCommitBytes).value_or("");
    const bool isCut = bytes.size() == mostCommitBytes;
    for (size_t at = 0; at < bytes.size();) {
        peer::Piece piece = peer::parsePiece(std::string_view(bytes).substr(at));
        if (isCut && piece.kind == peer::PieceKind::foreign && at + piece.size == bytes.size()) {
            // The start of a record may be among its last bytes.
            if (piece.size < peer::certainRecordStart)
                return;
            piece.size -= peer::certainRecordStart - 1;
        }
        if (piece.kind == peer::PieceKind::incomplete)
            return;
        const std::string record = bytes.substr(at, piece.size);
        at += piece.size;
        file.end += piece.size;
        file.waiting.push_back({file.end, record});
        events.push_back(
            {file.look.writtenAt, EventKind::commitWritten, process, file.path, record});
    }
}

void CommitFiles::take(std::uint32_t process, File& file, std::uint64_t end, std::int64_t at,
                       std::vector<ExchangeEvent>& events)
{
    std::erase_if(
        file.waiting,
        [&](const Record& record) {
            if (record.end > end)
                return false;
            events.push_back({at, EventKind::commitTaken, process, file.path, record.bytes});
            return true;
        });
}

} // namespace zemlink
