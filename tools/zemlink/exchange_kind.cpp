#include "tools/zemlink/exchange_kind.h"

#include "peer/commit_record.h"

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
    {ExchangeKind::loadLog, "log"},           {ExchangeKind::settings, "settings"},
};

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
    {L"torva zem-", L".tmp", ExchangeKind::checkoutAnswer},
    {L"screendump", L".bmp", ExchangeKind::picture},
    {L"toolimage-", L".bmp", ExchangeKind::picture},
    {L"mcxlog", L".txt", ExchangeKind::loadLog},
    {L"settings", L".ini", ExchangeKind::settings},
};

std::wstring lowerCase(std::wstring_view text)
{
    std::wstring lower;
    for (const wchar_t c : text)
        lower += c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c - L'A' + L'a') : c;
    return lower;
}

std::optional<ExchangeKind> kindOfName(std::wstring_view fileName)
{
    const std::wstring name = lowerCase(fileName);
    for (const NameForm& form : forms)
        if (name.starts_with(form.start) && name.ends_with(form.end))
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

struct TextStart {
    std::string_view start;
    ExchangeKind kind;
};

constexpr TextStart starts[] = {
    {"\xEF\xBB\xBF", ExchangeKind::commandFile},
    {"CHECKIN ", ExchangeKind::commandFile},
    {"TOOLDATA|", ExchangeKind::toolData},
    {"NCPATH|", ExchangeKind::ncQueue},
    {"Loading File #", ExchangeKind::loadLog},
    {"ZEMID=", ExchangeKind::notices},
    {"TOOL-", ExchangeKind::notices},
    {"MCAMXMLIMPORTDATAID=", ExchangeKind::notices},
    {"IMPORTNCQUEUE|", ExchangeKind::notices},
    {"BM", ExchangeKind::picture},
};

std::optional<ExchangeKind> kindOfContent(std::string_view bytes)
{
    for (const TextStart& each : starts)
        if (bytes.starts_with(each.start))
            return each.kind;
    const std::string_view line = bytes.substr(0, bytes.find('\n'));
    return bytes == "CHECKIN" ? ExchangeKind::commandFile
           : companion::nextPiece(bytes).kind == companion::PieceKind::record
               ? ExchangeKind::commitRecords
           : isAnswer(bytes)             ? ExchangeKind::checkoutAnswer
           : isMachine(line)             ? ExchangeKind::machineSettings
           : line.find('=') != line.npos ? std::optional(ExchangeKind::settings)
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
