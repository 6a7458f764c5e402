#include "tools/zemlink/session/redaction.h"

#include "peer/bitmap_file.h"
#include "peer/exchange_paths.h"
#include "peer/text.h"
#include "peer/wire_constants.h"
#include "tools/zemlink/reports/decode.h"
#include "tools/zemlink/session/event_report.h"
#include "tools/zemlink/session/recorded_text.h"

#include <algorithm>
#include <cwctype>
#include <iterator>

namespace zemlink {
namespace {

// ---- Names --------------------------------------------------------------------------------------

std::wstring lowered(std::wstring_view text)
{
    std::wstring lower(text);
    for (wchar_t& unit : lower)
        unit = static_cast<wchar_t>(std::towlower(unit));
    return lower;
}

bool isWordUnit(wchar_t unit)
{
    return std::iswalnum(unit) != 0;
}

// Words of the product, of the system and of the exchanges; in lower case.
bool isOwnName(const std::wstring& name)
{
    constexpr std::wstring_view names[] = {
        L"torva",         L"zem",       L"torva zem",     L"torva-zem",
        L"mastercam",     L"torvapdm",  L"zemlink",       L"temp",
        L"commit",        L"sys",       L"cfg",           L"work",
        L"library",       L"log",       L"users",         L"windows",
        L"program files", L"companion", L"settings",      L"checkin",
        L"loading",       L"file",      L"ncpath",        L"tooldata",
        L"tool",          L"zemid",     L"importncqueue", L"mcamxmlimportdataid",
        L"screendump",    L"mcxlog"};
    return std::ranges::find(names, name) != std::end(names);
}

bool isNumber(std::wstring_view name)
{
    return name.find_first_not_of(L"0123456789.-+") == name.npos;
}

constexpr char hiddenByte = '?';

// The name of an exchange file without its extension, in lower case.
bool isExchangeFile(std::wstring_view name)
{
    constexpr std::wstring_view starts[] = {peer::commandFileStart,   peer::machineSettingsStart,
                                            peer::commitFileStart,    peer::toolDataStart,
                                            peer::toolPictureStart,   peer::ncQueueStart,
                                            peer::checkoutAnswerStart};
    return std::ranges::any_of(starts, [&](std::wstring_view start) {
        return name.starts_with(lowered(start)) && isNumber(name.substr(start.size()));
    });
}

bool isDrive(std::wstring_view name)
{
    return name.size() == 2 && name[1] == L':';
}

bool isPath(std::wstring_view text)
{
    return text.find_first_of(L"\\/") != text.npos;
}

// Under these keys a report holds words of this program, not of people.
bool isOwnKey(const std::string& key)
{
    constexpr std::string_view keys[] = {
        "event",   "by",      "to",    "request",  "notice",   "answer",   "kind",   "reached",
        "remarks", "steps",   "from",  "version",  "zemlink",  "cause",    "noFile", "noBookmark",
        "time",    "started", "entry", "fileType", "firstRow", "cadSystem"};
    return std::ranges::find(keys, key) != std::end(keys);
}

// Where the name that stands at the start of the text ends; 0 when it does not stand there as a
// whole.
size_t endOfName(std::wstring_view lowerText, size_t at, const std::wstring& name)
{
    if (lowerText.substr(at, name.size()) != name)
        return 0;
    const size_t end = at + name.size();
    const bool isWhole =
        end == lowerText.size() || !isWordUnit(lowerText[end]) || !isWordUnit(name.back());
    return isWhole ? end : 0;
}

// ---- Exchanges ----------------------------------------------------------------------------------

void makeGrey(std::string& bitmap)
{
    constexpr size_t headers = 14 + 40;
    std::fill(bitmap.begin() + static_cast<std::ptrdiff_t>(std::min(headers, bitmap.size())),
              bitmap.end(), '\x80');
}

// Whether the exchange is what it should be. One step of a load is not a whole log.
bool isSound(const ExchangeEvent& event)
{
    if (event.kind == EventKind::loadStep)
        return event.bytes.starts_with(peer::debugLogLineStart);
    const auto kind = contentOf(event.kind);
    return event.bytes.empty() || !kind || decode(*kind, event.bytes).exitCode == done;
}

void hideContent(ExchangeEvent& event)
{
    if (!isSound(event))
        event.bytes.assign(event.bytes.size(), hiddenByte);
    else if (event.kind == EventKind::pictureWritten)
        makeGrey(event.bytes);
}

} // namespace

void Pseudonyms::addName(std::wstring_view name, const wchar_t* what)
{
    const std::wstring key = lowered(name);
    if (key.empty() || isOwnName(key) || isNumber(key) || isDrive(key) || isExchangeFile(key))
        return;
    names_.try_emplace(key, what + std::to_wstring(names_.size() + 1));
}

void Pseudonyms::addPath(std::wstring_view path)
{
    bool isUser = false;
    while (!path.empty()) {
        const size_t end = std::min(path.find_first_of(L"\\/"), path.size());
        const std::wstring_view part = path.substr(0, end);
        const bool isLast = end == path.size();
        if (isLast)
            addName(part.substr(0, part.rfind(L'.')), L"name-");
        else
            addName(part, isUser ? L"user-" : L"folder-");
        isUser = lowered(part) == L"users";
        path.remove_prefix(isLast ? end : end + 1);
    }
}

void Pseudonyms::addText(std::wstring_view text)
{
    isPath(text) ? addPath(text) : addName(text, L"text-");
}

void Pseudonyms::addReport(const Report& report)
{
    for (const auto& [key, value] : report.items()) {
        if (isOwnKey(key))
            continue;
        if (value.is_string())
            addText(peer::fromUtf8(value.get<std::string>()));
        else if (value.is_structured())
            addReport(value);
    }
}

std::wstring Pseudonyms::replaceIn(std::wstring_view text) const
{
    const std::wstring lower = lowered(text);
    std::wstring replaced;
    for (size_t at = 0; at < text.size();) {
        const bool isStart = at == 0 || !isWordUnit(text[at - 1]) || !isWordUnit(text[at]);
        const auto found = std::ranges::find_if(names_, [&](const auto& name) {
            return isStart && endOfName(lower, at, name.first) != 0;
        });
        if (found == names_.end()) {
            replaced += text[at++];
        } else {
            replaced += found->second;
            at += found->first.size();
        }
    }
    return replaced;
}

Report Pseudonyms::replaceInReport(const Report& report) const
{
    if (report.is_string())
        return peer::toUtf8(replaceIn(peer::fromUtf8(report.get<std::string>())));
    Report replaced = report;
    if (report.is_structured())
        for (auto& [key, value] : replaced.items())
            value = isOwnKey(key) ? value : replaceInReport(value);
    return replaced;
}

void addNamesOf(Pseudonyms& names, const Recording& recording)
{
    names.addPath(recording.folder + L'\\');
    names.addReport(recording.status);
    for (const ExchangeEvent& event : recording.events)
        names.addReport(exchangeEventReport(event));
}

Recording redacted(Recording recording, const Pseudonyms& names)
{
    const auto replace = [&](std::wstring_view text) { return names.replaceIn(text); };
    for (ExchangeEvent& event : recording.events) {
        hideContent(event);
        changeTexts(event, replace);
    }
    recording.folder = names.replaceIn(recording.folder);
    recording.status = names.replaceInReport(recording.status);
    recording.isRedacted = true;
    return recording;
}

Recording redacted(Recording recording)
{
    Pseudonyms names;
    addNamesOf(names, recording);
    return redacted(std::move(recording), names);
}

} // namespace zemlink
