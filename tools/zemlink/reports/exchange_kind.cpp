#include "tools/zemlink/reports/exchange_kind.h"

#include "peer/bookmark.h"
#include "peer/commit_record.h"
#include "peer/companion_files.h"
#include "peer/companion_log.h"
#include "peer/lines.h"
#include "peer/text.h"
#include "peer/wire_constants.h"
#include "peer/working_copies_file.h"

#include <algorithm>
#include <iterator>

namespace zemlink {
namespace {

struct KindWord {
    ExchangeKind kind;
    const char* word;
};

constexpr KindWord words[] = {
    {ExchangeKind::commandFile, "command"},   {ExchangeKind::machineSettings, "machine"},
    {ExchangeKind::checkoutAnswer, "answer"}, {ExchangeKind::commitRecords, "commits"},
    {ExchangeKind::toolData, "tools"},        {ExchangeKind::ncQueue, "queue"},
    {ExchangeKind::notices, "notices"},       {ExchangeKind::picture, "picture"},
    {ExchangeKind::debugLog, "log"},          {ExchangeKind::companionLog, "events"},
    {ExchangeKind::bookmark, "bookmark"},     {ExchangeKind::workingCopies, "copies"},
    {ExchangeKind::settings, "settings"},
};

struct NameForm {
    std::wstring_view start, end;
    ExchangeKind kind;
};

constexpr NameForm forms[] = {
    {peer::commandFileStart, peer::dataEnd, ExchangeKind::commandFile},
    {peer::machineSettingsStart, peer::textEnd, ExchangeKind::machineSettings},
    {peer::commitFileStart, peer::dataEnd, ExchangeKind::commitRecords},
    {peer::commitFileStart, peer::closedCommitsEnd, ExchangeKind::commitRecords},
    {peer::commitFileStart, peer::bookmarkEnd, ExchangeKind::bookmark},
    {peer::toolDataStart, peer::textEnd, ExchangeKind::toolData},
    {peer::ncQueueStart, peer::textEnd, ExchangeKind::ncQueue},
    {peer::checkoutAnswerStart, L".tmp", ExchangeKind::checkoutAnswer},
    {peer::screenPictureName, peer::pictureEnd, ExchangeKind::picture},
    {peer::toolPictureStart, peer::pictureEnd, ExchangeKind::picture},
    {peer::debugLogName, peer::textEnd, ExchangeKind::debugLog},
    {peer::companionLogName, L".log", ExchangeKind::companionLog},
    {peer::workingCopiesName, peer::textEnd, ExchangeKind::workingCopies},
    {peer::settingsName, L".ini", ExchangeKind::settings},
};

bool isNamed(std::wstring_view name, const NameForm& form)
{
    return name.size() >= form.start.size() + form.end.size() &&
           peer::isSameIgnoringCase(name.substr(0, form.start.size()), form.start) &&
           peer::isSameIgnoringCase(name.substr(name.size() - form.end.size()), form.end);
}

std::optional<ExchangeKind> kindOfName(std::wstring_view fileName)
{
    for (const NameForm& form : forms)
        if (isNamed(fileName, form))
            return form.kind;
    return std::nullopt;
}

bool isMachine(std::string_view line)
{
    const size_t first = line.find('|');
    return first != line.npos && first != 0 && line.find_first_not_of("-0123456789") == first &&
           line.find('|', first + 1) != line.npos;
}

// UTF-16 that starts with a word of ASCII.
bool isAnswer(std::string_view bytes)
{
    return bytes.size() > 2 && bytes[0] > ' ' && bytes[0] <= '~' && bytes[1] == '\0';
}

// `finished`, the other content of a bookmark, is a line of many files.
bool isBookmark(std::string_view bytes)
{
    const auto bookmark = peer::parseBookmark(peer::fromUtf8(bytes));
    return bookmark && !bookmark->isFinished;
}

bool isEvent(std::string_view line)
{
    const auto events = peer::parseCompanionLog(line);
    return !events.empty() && events[0];
}

bool isWorkingCopy(std::string_view line)
{
    const auto copies = peer::parseWorkingCopies(peer::fromUtf8(line));
    return !copies.empty() && copies[0] && peer::isFullPath(copies[0]->path);
}

struct TextStart {
    std::string_view start;
    ExchangeKind kind;
};

constexpr TextStart starts[] = {
    {peer::byteOrderMark, ExchangeKind::commandFile},
    {"CHECKIN ", ExchangeKind::commandFile},
    {peer::toolRecordStart, ExchangeKind::toolData},
    {peer::ncQueueWord, ExchangeKind::ncQueue},
    {peer::debugLogLineStart, ExchangeKind::debugLog},
    {peer::commitNotice, ExchangeKind::notices},
    {peer::toolDataNotice, ExchangeKind::notices},
    {peer::setupSheetNotice, ExchangeKind::notices},
    {peer::ncQueueNotice, ExchangeKind::notices},
    {peer::bitmapStart, ExchangeKind::picture},
};

std::optional<ExchangeKind> kindOfContent(std::string_view bytes)
{
    for (const TextStart& each : starts)
        if (bytes.starts_with(each.start))
            return each.kind;
    const std::string_view line = bytes.substr(0, bytes.find('\n'));
    return bytes == "CHECKIN"                                        ? ExchangeKind::commandFile
           : peer::parsePiece(bytes).kind == peer::PieceKind::record ? ExchangeKind::commitRecords
           : isAnswer(bytes)                                         ? ExchangeKind::checkoutAnswer
           : isBookmark(bytes)                                       ? ExchangeKind::bookmark
           : isEvent(line)                                           ? ExchangeKind::companionLog
           : isWorkingCopy(line)                                     ? ExchangeKind::workingCopies
           : isMachine(line) ? std::optional(ExchangeKind::machineSettings)
                             : std::nullopt;
}

} // namespace

std::vector<std::string> kindWords()
{
    std::vector<std::string> all;
    for (const KindWord& each : words)
        all.emplace_back(each.word);
    return all;
}

std::string kindWord(ExchangeKind kind)
{
    return std::find_if(
               std::begin(words), std::end(words),
               [&](const KindWord& each) { return each.kind == kind; })
        ->word;
}

std::optional<ExchangeKind> kindOfWord(std::string_view word)
{
    for (const KindWord& each : words)
        if (each.word == word)
            return each.kind;
    return std::nullopt;
}

std::optional<ExchangeKind> kindOf(std::wstring_view fileName, std::string_view bytes)
{
    const auto kind = kindOfName(fileName);
    return kind ? kind : kindOfContent(bytes);
}

} // namespace zemlink
