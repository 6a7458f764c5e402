#include "tools/zemlink/session/recorded_text.h"

#include "peer/commit_record.h"
#include "peer/lines.h"
#include "peer/text.h"
#include "peer/wire_constants.h"

namespace zemlink {
namespace {

// Bytes that are not a record stay as they are.
std::string changeRecords(std::string_view bytes, const TextChange& change)
{
    std::string changed;
    while (!bytes.empty()) {
        peer::Piece piece = peer::parsePiece(bytes);
        if (piece.kind == peer::PieceKind::record) {
            piece.record.file = change(piece.record.file);
            changed += peer::formatCommitRecord(piece.record);
        } else {
            changed += bytes.substr(0, piece.size);
        }
        bytes.remove_prefix(piece.size);
    }
    return changed;
}

std::string toAnsiOrMarks(std::wstring_view text)
{
    std::string bytes;
    for (const wchar_t& unit : text)
        bytes += peer::toAnsi(std::wstring_view(&unit, 1)).value_or("?");
    return bytes;
}

// Keeps the bytes if the change leaves the text alone, and a byte-order mark anyway: not all bytes
// are characters.
std::string changeAnsi(std::string_view bytes, const TextChange& change)
{
    const size_t markSize = bytes.starts_with(peer::byteOrderMark) ? peer::byteOrderMark.size() : 0;
    const std::wstring text = peer::fromAnsi(bytes.substr(markSize));
    const std::wstring changed = change(text);
    if (changed == text)
        return std::string(bytes);
    return std::string(bytes.substr(0, markSize)) +
           peer::toAnsi(changed).value_or(toAnsiOrMarks(changed));
}

std::wstring withFolder(std::wstring_view text, const std::wstring& from, const std::wstring& to)
{
    std::wstring changed;
    while (!text.empty()) {
        if (peer::isSameIgnoringCase(text.substr(0, from.size()), from)) {
            changed += to;
            text.remove_prefix(from.size());
        } else {
            changed += text.front();
            text.remove_prefix(1);
        }
    }
    return changed;
}

} // namespace

void changeTexts(ExchangeEvent& event, const TextChange& change)
{
    event.file = change(event.file);
    switch (event.kind) {
    case EventKind::pictureWritten:
        break;
    case EventKind::commitWritten:
        event.bytes = changeRecords(event.bytes, change);
        break;
    default:
        event.bytes = changeAnsi(event.bytes, change);
        break;
    }
}

Recording relocated(Recording recording, const std::wstring& folder)
{
    const std::wstring from = recording.folder;
    for (ExchangeEvent& event : recording.events)
        changeTexts(event, [&](std::wstring_view text) { return withFolder(text, from, folder); });
    recording.folder = folder;
    return recording;
}

} // namespace zemlink
