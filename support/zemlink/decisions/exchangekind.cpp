#include "zemlink/decisions/exchangekind.h"

#include "decisions/commitrecord.h"

#include <array>
#include <utility>

namespace zemlink {
namespace {

constexpr std::array kinds{ExchangeKind::commandFile,   ExchangeKind::machineSettings,
                           ExchangeKind::commitRecords, ExchangeKind::toolData,
                           ExchangeKind::ncQueue,       ExchangeKind::settings};

struct NameForm {
    std::wstring_view start, end;
    ExchangeKind kind;
};

constexpr NameForm forms[] = {
    {L"mastercam-", L".dat", ExchangeKind::commandFile},
    {L"mcsettings-", L".txt", ExchangeKind::machineSettings},
    {L"torvapdm-", L".dat", ExchangeKind::commitRecords},
    {L"torvapdm-", L".closed", ExchangeKind::commitRecords},
    {L"tool-", L".txt", ExchangeKind::toolData},
    {L"ncqueue-", L".txt", ExchangeKind::ncQueue},
    {L"settings", L".ini", ExchangeKind::settings},
};

std::wstring lowerCase(std::wstring_view text)
{
    std::wstring lower;
    for (const wchar_t c : text) {
        lower += c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c - L'A' + L'a') : c;
    }
    return lower;
}

std::optional<ExchangeKind> kindOfName(std::wstring_view fileName)
{
    const std::wstring name = lowerCase(fileName);
    for (const NameForm& form : forms) {
        if (name.starts_with(form.start) && name.ends_with(form.end)) {
            return form.kind;
        }
    }
    return std::nullopt;
}

bool isCommand(std::string_view bytes)
{
    return bytes.starts_with("\xEF\xBB\xBF") || bytes.substr(0, bytes.find(' ')) == "CHECKIN";
}

bool isMachine(std::string_view line)
{
    const std::size_t first = line.find('|');
    return first != line.npos && first != 0 && line.find_first_not_of("-0123456789") == first &&
           line.find('|', first + 1) != line.npos;
}

} // namespace

std::vector<std::string> kindWords()
{
    std::vector<std::string> words;
    for (const ExchangeKind kind : kinds) {
        words.push_back(kindWord(kind));
    }
    return words;
}

std::string kindWord(ExchangeKind kind)
{
    switch (kind) {
    case ExchangeKind::commandFile:
        return "command";
    case ExchangeKind::machineSettings:
        return "machine";
    case ExchangeKind::commitRecords:
        return "commits";
    case ExchangeKind::toolData:
        return "tools";
    case ExchangeKind::ncQueue:
        return "queue";
    case ExchangeKind::settings:
        break;
    }
    return "settings";
}

std::optional<ExchangeKind> kindOfWord(std::string_view word)
{
    for (const ExchangeKind kind : kinds) {
        if (kindWord(kind) == word) {
            return kind;
        }
    }
    return std::nullopt;
}

std::optional<ExchangeKind> kindOf(std::wstring_view fileName, std::string_view bytes)
{
    if (const auto kind = kindOfName(fileName)) {
        return kind;
    }
    const std::string_view line = bytes.substr(0, bytes.find('\n'));
    if (isCommand(bytes)) {
        return ExchangeKind::commandFile;
    }
    if (line.starts_with("TOOLDATA|")) {
        return ExchangeKind::toolData;
    }
    if (line.starts_with("NCPATH|")) {
        return ExchangeKind::ncQueue;
    }
    if (companion::nextPiece(bytes).kind == companion::PieceKind::record) {
        return ExchangeKind::commitRecords;
    }
    if (isMachine(line)) {
        return ExchangeKind::machineSettings;
    }
    return line.find('=') == line.npos ? std::nullopt : std::optional(ExchangeKind::settings);
}

} // namespace zemlink
