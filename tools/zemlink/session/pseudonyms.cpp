#include "tools/zemlink/session/pseudonyms.h"

#include "peer/text.h"
#include "peer/wire_constants.h"

#include <algorithm>
#include <cwctype>
#include <iterator>
#include <windows.h>

namespace zemlink {
namespace {

// As long as the text.
std::wstring lowered(std::wstring_view text)
{
    std::wstring lower(text.size(), L'\0');
    LCMapStringEx(LOCALE_NAME_INVARIANT, LCMAP_LOWERCASE, text.data(),
                  static_cast<int>(text.size()), lower.data(), static_cast<int>(lower.size()),
                  nullptr, nullptr, 0);
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

// The extensions of the files that the programs exchange and of usual CAD files, so that a part has
// one name with and without it; anything else after a dot may be part of a name.
bool isKnownExtension(std::wstring_view extension)
{
    constexpr std::wstring_view extensions[] = {
        L".mcam",    L".mcam-mmd",   L".mcam-lmd",   L".mcx", L".nc",      L".nci",
        L".txt",     L".xml",        L".bmp",        L".dat", L".log",     L".ini",
        L".tmp",     L".exe",        L".dll",        L".zip", L".taken",   L".closed",
        L".catpart", L".catproduct", L".catdrawing", L".cgr", L".step",    L".stp",
        L".iges",    L".igs",        L".x_t",        L".x_b", L".xmt_txt", L".xmt_bin",
        L".sldprt",  L".sldasm",     L".slddrw",     L".ipt", L".iam",     L".idw",
        L".prt",     L".asm",        L".par",        L".psm", L".sat",     L".sab",
        L".dxf",     L".dwg",        L".stl",        L".jt",  L".3dm",     L".3mf",
        L".vda",     L".obj"};
    return std::ranges::find(extensions, lowered(extension)) != std::end(extensions);
}

std::wstring_view withoutExtension(std::wstring_view file)
{
    const size_t dot = file.rfind(L'.');
    return dot != file.npos && isKnownExtension(file.substr(dot)) ? file.substr(0, dot) : file;
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
        "event",    "by",        "to",         "request",   "notice",  "answer",  "answers",
        "kind",     "reached",   "remarks",    "steps",     "from",    "version", "zemlink",
        "cause",    "noFile",    "noBookmark", "time",      "started", "entry",   "fileType",
        "firstRow", "cadSystem", "sha256",     "writtenAt", "owner",   "state"};
    return std::ranges::find(keys, key) != std::end(keys);
}

// Whether the name at this position does not go on as a longer word.
bool isWhole(std::wstring_view lowerText, size_t at, const std::wstring& name)
{
    const size_t end = at + name.size();
    return end == lowerText.size() || !isWordUnit(lowerText[end]) || !isWordUnit(name.back());
}

} // namespace

void Pseudonyms::addName(std::wstring_view name, const wchar_t* what)
{
    const std::wstring key = lowered(name);
    if (key.empty() || isOwnName(key) || isNumber(key) || isDrive(key) || isExchangeFile(key))
        return;
    if (names_.try_emplace(key, what + std::to_wstring(count_ + 1)).second)
        ++count_;
}

void Pseudonyms::addPath(std::wstring_view path)
{
    bool isUser = false;
    while (!path.empty()) {
        const size_t end = std::min(path.find_first_of(L"\\/"), path.size());
        const std::wstring_view part = path.substr(0, end);
        const bool isLast = end == path.size();
        if (isLast)
            addName(withoutExtension(part), L"name-");
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

// The last name that is not greater than the text is either a prefix of it, and then the longest
// one, or longer prefixes than what both have in common do not exist. So few names are compared,
// however many there are.
Pseudonyms::Names::const_iterator Pseudonyms::findLongest(std::wstring_view lowerText,
                                                          size_t at) const
{
    for (std::wstring_view rest = lowerText.substr(at); !rest.empty();) {
        const auto next = names_.upper_bound(rest);
        if (next == names_.begin())
            break;
        const auto found = std::prev(next);
        const std::wstring& name = found->first;
        const auto end = std::ranges::mismatch(name, rest).in1;
        if (end == name.end() && isWhole(lowerText, at, name))
            return found;
        rest = rest.substr(0, std::min(static_cast<size_t>(end - name.begin()), name.size() - 1));
    }
    return names_.end();
}

std::wstring Pseudonyms::replaceIn(std::wstring_view text) const
{
    const std::wstring lower = lowered(text);
    std::wstring replaced;
    for (size_t at = 0; at < text.size();) {
        const bool isStart = at == 0 || !isWordUnit(text[at - 1]) || !isWordUnit(text[at]);
        const auto found = isStart ? findLongest(lower, at) : names_.end();
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

} // namespace zemlink
