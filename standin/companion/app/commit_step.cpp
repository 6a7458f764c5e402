#include "standin/companion/app/commit_step.h"

#include "peer/commit_record.h"
#include "peer/exchange_paths.h"
#include "peer/files.h"
#include "peer/text.h"
#include "standin/companion/app/state.h"
#include "standin/companion/library/version_store.h"
#include "standin/companion/log/event_text.h"

#include <chrono>

namespace companion {
namespace {

using Clock = std::chrono::steady_clock;

// Another program may have the committed file open; later commits wait, too.
constexpr std::chrono::seconds patienceForAFile{10};

std::wstring commitFields(const peer::CommitRecord& record)
{
    return textField(L"file", record.file) + numberField(L"id", record.id);
}

std::wstring sourceField(const CommitFile& file)
{
    return wordField(L"from", peer::fileNameOf(file.paths.live));
}

// The end of a record in any case. If the bookmark cannot be written, the next start finds the
// version already stored.
CommitStep passOver(State& state, CommitFile& file, size_t size)
{
    file.bookmark.taken += size;
    file.bookmark.underWay.reset();
    saveBookmark(file);
    state.commits.waitsFor.clear();
    state.commits.unreadableSince.reset();
    return CommitStep::done;
}

CommitStep wait(State& state, const peer::CommitRecord& record, const std::wstring& reason)
{
    if (state.commits.waitsFor != reason) {
        logEvent(state.log, L"commit-waits", commitFields(record) + textField(L"reason", reason));
        state.commits.waitsFor = reason;
    }
    return CommitStep::waits;
}

// The picture made for this commit would be used for the next one.
void movePictureAside(State& state, const CommittedFile& file)
{
    const std::wstring kept =
        peer::freeName(peer::screenPicturePath(state.folder) + L".kept-", L"");
    if (file.pictureNotAfter && takeScreenPicture(state.folder, *file.pictureNotAfter, kept))
        logEvent(state.log, L"picture-kept", textField(L"file", kept));
}

CommitStep fail(State& state, CommitFile& file, const peer::Piece& piece,
                const CommittedFile& committed, const std::wstring& reason)
{
    logEvent(state.log, L"commit-failed",
             commitFields(piece.record) + textField(L"reason", reason));
    movePictureAside(state, committed);
    return passOver(state, file, piece.size);
}

// Why the record can never become a version; empty when it can.
std::wstring refusalOf(const peer::CommitRecord& record)
{
    if (record.file.empty())
        return L"the request names no file";
    if (!peer::isFullPath(record.file))
        return L"the request names no full path";
    return peer::isFile(record.file) ? L"" : L"there is no such file";
}

void logVersion(State& state, const peer::VersionPlan& plan, const wchar_t* event)
{
    const bool hasPicture =
        peer::isFile(peer::libraryFolder(state.folder) + L'\\' + pictureFile(plan));
    const LibraryItem* item = findName(state.library.index, plan.name);
    logEvent(state.log, event,
             textField(L"name", plan.name) + numberField(L"version", plan.version) +
                 numberField(L"number", item != nullptr ? item->number : plan.number) +
                 wordField(L"picture", hasPicture ? L"yes" : L"no"));
}

// False when no plan is possible now; `failure` is set when none will ever be possible.
bool plan(State& state, CommitFile& file, const peer::CommitRecord& record, std::wstring& failure)
{
    refreshLibrary(state.library, state.folder, state.log);
    if (!isReadable(state.library, state.folder))
        return false;
    const auto part = partOfCommit(state.copies.copies, state.library.index, record);
    file.bookmark.underWay = planVersion(state.library, state.folder, part, record.file);
    if (!file.bookmark.underWay)
        failure = L"the part has reached the last version number";
    return file.bookmark.underWay.has_value();
}

// From now on a new part from a host is found by its file. This is noted after the library has it
// but before the bookmark advances: otherwise the next start would repeat it.
void noteNewPart(State& state, const peer::VersionPlan& plan, const std::wstring& path,
                 bool isStoredNow)
{
    const LibraryItem* item = findName(state.library.index, plan.name);
    if (item == nullptr)
        return;
    keepCopy(state.copies, {.number = item->number, .path = path});
    if (isStoredNow) {
        logEvent(state.log, L"new-part",
                 numberField(L"number", item->number) + textField(L"name", item->name) +
                     textField(L"file", path));
    }
}

CommitStep finish(State& state, CommitFile& file, const peer::Piece& piece, bool isNewPart,
                  bool isStoredNow)
{
    const peer::VersionPlan plan = *file.bookmark.underWay;
    if (isNewPart)
        noteNewPart(state, plan, piece.record.file, isStoredNow);
    logVersion(state, plan, isStoredNow ? L"version" : L"commit-known");
    return passOver(state, file, piece.size);
}

CommitStep waitForFile(State& state, CommitFile& file, const peer::Piece& piece,
                       const CommittedFile& committed)
{
    const std::wstring reason = L"the file cannot be read";
    auto& since = state.commits.unreadableSince;
    since = since.value_or(Clock::now());
    return Clock::now() - *since < patienceForAFile ? wait(state, piece.record, reason)
                                                    : fail(state, file, piece, committed, reason);
}

CommitStep store(State& state, CommitFile& file, const peer::Piece& piece,
                 const CommittedFile& committed)
{
    if (!saveBookmark(file))
        return wait(state, piece.record, L"the bookmark cannot be written");
    const bool isNewPart = !partOfCommit(state.copies.copies, state.library.index, piece.record);
    switch (
        storeVersion(state.library, state.folder, state.log, *file.bookmark.underWay, committed)) {
    case Storing::stored:
        return finish(state, file, piece, isNewPart, true);
    case Storing::storedBefore:
        return finish(state, file, piece, isNewPart, false);
    case Storing::unreadable:
        return waitForFile(state, file, piece, committed);
    default:
        return wait(state, piece.record, L"the library cannot be written");
    }
}

// A record with a plan was begun earlier, by this or an ended process, and is continued.
CommitStep handleRecord(State& state, CommitFile& file, const peer::Piece& piece,
                        const CommittedFile& committed)
{
    if (file.bookmark.underWay)
        return store(state, file, piece, committed);
    const bool isFirstLook = state.commits.waitsFor.empty();
    if (isFirstLook && file.process != peer::commandLineProcess)
        logEvent(state.log, L"commit", commitFields(piece.record) + sourceField(file));
    std::wstring failure = refusalOf(piece.record);
    if (failure.empty() && plan(state, file, piece.record, failure))
        return store(state, file, piece, committed);
    return failure.empty() ? wait(state, piece.record, L"the library cannot be read")
                           : fail(state, file, piece, committed, failure);
}

// The screen picture can only belong to the newest commit.
CommittedFile committedFile(const Waiting& waiting, const peer::Piece& piece)
{
    CommittedFile committed{.path = piece.record.file};
    if (waiting.areAll && piece.size == waiting.bytes.size())
        committed.pictureNotAfter = waiting.written;
    return committed;
}

CommitStep moveAside(State& state, CommitFile& file, std::string_view bytes)
{
    const std::wstring kept = peer::freeName(state.folder + L"\\sys\\skipped-commit-", L".dat");
    if (!peer::writeFile(kept, bytes))
        return CommitStep::nothing;
    logEvent(state.log, L"commit-skipped",
             sourceField(file) +
                 numberField(L"offset", static_cast<std::int64_t>(file.bookmark.taken)) +
                 numberField(L"bytes", static_cast<std::int64_t>(bytes.size())) +
                 textField(L"file", kept));
    return passOver(state, file, bytes.size());
}

// The read may have cut a record at its end; the bytes that may be its start are left for the next
// read.
size_t foreignSize(const Waiting& waiting, const peer::Piece& piece)
{
    const bool goesToTheEnd = piece.size == waiting.bytes.size();
    return goesToTheEnd && !waiting.areAll ? piece.size - peer::certainRecordStart : piece.size;
}

} // namespace

CommitStep takeNextCommit(State& state, CommitFile& file)
{
    const auto waiting = readWaiting(file);
    if (!waiting)
        return CommitStep::nothing;
    if (waiting->bytes.empty()) {
        if (waiting->isClosed)
            removeCommitFile(file);
        return CommitStep::nothing;
    }
    const peer::Piece piece = peer::parsePiece(waiting->bytes);
    switch (piece.kind) {
    case peer::PieceKind::record:
        return handleRecord(state, file, piece, committedFile(*waiting, piece));
    case peer::PieceKind::foreign:
        return moveAside(state, file,
                         std::string_view(waiting->bytes).substr(0, foreignSize(*waiting, piece)));
    default: // the rest never arrives in a closed file
        return waiting->isClosed ? moveAside(state, file, waiting->bytes) : CommitStep::nothing;
    }
}

} // namespace companion
