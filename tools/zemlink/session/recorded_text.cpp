#include "tools/zemlink/session/recorded_text.h"

#include "peer/commit_record.h"
#include "peer/text.h"
#include "peer/wire_constants.h"

#include <algorithm>
#include <cstring>
#include <functional>

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

// The case of the letters A to Z.
std::wstring withoutCase(std::wstring_view text)
{
    std::wstring same(text);
    for (wchar_t& unit : same)
        unit = unit >= L'A' && unit <= L'Z' ? static_cast<wchar_t>(unit - L'A' + L'a') : unit;
    return same;
}

// Replaces a folder where it is a whole path or the start of one. Takes a time in proportion to the
// text, whatever both hold.
class FolderChange {
public:
    FolderChange(const std::wstring& from, std::wstring to)
        : start_(withoutCase(from) + L'\\'),
          to_(std::move(to)),
          searcher_(start_.begin(), start_.end())
    {
    }

    FolderChange(const FolderChange&) = delete; // the searcher refers to the text
    FolderChange& operator=(const FolderChange&) = delete;

    std::wstring operator()(std::wstring_view text) const
    {
        const std::wstring same = withoutCase(text) + L'\\'; // also after a folder at the end
        std::wstring changed;
        size_t done = 0;
        for (;;) {
            const auto rest = same.begin() + static_cast<std::ptrdiff_t>(done);
            const auto found = std::search(rest, same.end(), searcher_);
            if (found == same.end())
                return changed.append(text.substr(done));
            const auto at = static_cast<size_t>(found - same.begin());
            changed.append(text.substr(done, at - done)).append(to_);
            done = at + start_.size() - 1;
        }
    }

private:
    std::wstring start_, to_;
    std::boyer_moore_searcher<std::wstring::const_iterator> searcher_;
};

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
    const FolderChange change(recording.folder, folder);
    for (ExchangeEvent& event : recording.events)
        changeTexts(event, std::cref(change));
    recording.folder = folder;
    return recording;
}

} // namespace zemlink
