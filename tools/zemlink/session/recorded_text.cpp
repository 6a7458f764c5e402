#include "tools/zemlink/session/recorded_text.h"

#include "peer/commit_record.h"
#include "peer/lines.h"
#include "peer/text.h"
#include "peer/wire_constants.h"

#include <cstring>

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

// Latin-1, in which tool data are written whatever the ANSI code page is.
std::string changeLatin1(std::string_view bytes, const TextChange& change)
{
    std::wstring text;
    for (const char byte : bytes)
        text += static_cast<wchar_t>(static_cast<unsigned char>(byte));
    std::string changed;
    for (const wchar_t unit : change(text))
        changed += unit < 0x100 ? static_cast<char>(unit) : '?';
    return changed;
}

// UTF-16, little-endian; an odd last byte stays.
std::string changeUtf16(std::string_view bytes, const TextChange& change)
{
    std::wstring text(bytes.size() / sizeof(wchar_t), L'\0');
    std::memcpy(text.data(), bytes.data(), text.size() * sizeof(wchar_t));
    const std::wstring changed = change(text);
    std::string result(changed.size() * sizeof(wchar_t), '\0');
    std::memcpy(result.data(), changed.data(), result.size());
    return result + std::string(bytes.substr(text.size() * sizeof(wchar_t)));
}

bool isFolderAt(std::wstring_view text, const std::wstring& folder)
{
    return peer::isSameIgnoringCase(text.substr(0, folder.size()), folder) &&
           (text.size() == folder.size() || text[folder.size()] == L'\\');
}

std::wstring withFolder(std::wstring_view text, const std::wstring& from, const std::wstring& to)
{
    std::wstring changed;
    while (!text.empty()) {
        const bool isFolder = isFolderAt(text, from);
        changed += isFolder ? to : std::wstring(1, text.front());
        text.remove_prefix(isFolder ? from.size() : 1);
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
    case EventKind::commitTaken:
        event.bytes = changeRecords(event.bytes, change);
        break;
    case EventKind::answerWritten:
        event.bytes = changeUtf16(event.bytes, change);
        break;
    case EventKind::toolDataWritten:
        event.bytes = changeLatin1(event.bytes, change);
        break;
    case EventKind::companionStarted:
    case EventKind::companionEnded:
    case EventKind::hostStarted:
    case EventKind::hostEnded:
    case EventKind::machineSettingsWritten:
    case EventKind::requestWritten:
    case EventKind::requestTaken:
    case EventKind::machineSettingsTaken:
    case EventKind::loadStep:
    case EventKind::ncQueueWritten:
    case EventKind::notice:
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
