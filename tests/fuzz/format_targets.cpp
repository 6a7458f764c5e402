// The exchange formats and the texts of the add-in: compares its parsers and formatters with the
// Companion's code.
#include "addin/exports.h"
#include "formats/checkout_answer.h"
#include "formats/command_file.h"
#include "formats/command_lines.h"
#include "formats/commit_record.h"
#include "formats/decimal.h"
#include "formats/machine_settings_file.h"
#include "formats/nc_queue_file.h"
#include "formats/notices.h"
#include "formats/settings_file.h"
#include "formats/sorted_lines.h"
#include "fuzz/target.h"
#include "incoming/document_name.h"
#include "incoming/recent_files.h"
#include "peer/checkout_answer.h"
#include "peer/command_file.h"
#include "peer/commit_record.h"
#include "peer/machine_settings.h"
#include "peer/nc_queue_file.h"
#include "peer/numbers.h"
#include "peer/settings_file.h"

#include <algorithm>
#include <bit>
#include <set>
#include <stdexcept>

#ifdef _WIN32
#include <windows.h>
#endif

using namespace std::string_literals;

namespace fuzzing {

namespace {

using torvapdm::CompanionFile;

bool contains(std::string_view text, std::string_view part)
{
    return text.find(part) != text.npos;
}

void checkCommandText(Input& input, Differences& differences)
{
    using Kind = torvapdm::Command::Kind;
    const std::string_view bytes = input.rest();
    const torvapdm::Command answer = torvapdm::parseCommand(bytes);
    const peer::HostCommand expected = peer::parseHostCommand(bytes);
    const Kind kind = expected.kind == peer::HostCommandKind::checkIn   ? Kind::checkIn
                      : expected.kind == peer::HostCommandKind::newFile ? Kind::newFile
                      : expected.kind == peer::HostCommandKind::open    ? Kind::open
                                                                        : Kind::malformed;
    differences.compare("kind", static_cast<int>(answer.kind), static_cast<int>(kind));
    differences.compare("id", answer.file.id, expected.id);
    differences.compare("path", answer.file.path,
                        kind == Kind::open ? signedUnits(expected.path) : L"");
}

// Input: the previous prefix of the kind, the text. Every first word except CHECKIN changes the
// prefix; a word that is shorter than a prefix throws an exception.
void checkCheckoutAnswer(Input& input, Differences& differences)
{
    using Kind = torvapdm::CheckoutAnswer::Kind;
    std::wstring prefix = input.wideField();
    const std::wstring text = input.wideRest();
    std::string utf16;
    for (const wchar_t unit : text)
        utf16 += {static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8 & 0xFF)};
    const peer::CheckoutAnswer expected = peer::parseCheckoutAnswer(utf16);
    const bool hasWord = text.substr(0, text.find(L'\n')).find(L' ') != text.npos;
    const bool isUnusable = expected.kind == peer::AnswerKind::unusable;
    const bool isCheckIn = expected.kind == peer::AnswerKind::checkIn;
    const std::wstring expectedPrefix = hasWord && !isCheckIn ? expected.fileType : prefix;
    torvapdm::CheckoutAnswer answer;
    bool escapes = false;
    try {
        answer = torvapdm::parseCheckoutAnswer(text, prefix);
    } catch (const std::out_of_range&) {
        escapes = true;
    }
    differences.compare("prefix", prefix, expectedPrefix);
    differences.compare("escapes", escapes, hasWord && isUnusable);
    differences.compare("is check-in", answer.kind == Kind::checkIn, isCheckIn);
    differences.compare("is unusable", answer.kind == Kind::unusable, isUnusable);
    differences.compare("id", answer.file.id, expected.id);
    differences.compare("path", answer.file.path, expected.path);
}

// Input: ZEM id, file.
void checkCommitTexts(Input& input, Differences& differences)
{
    const auto zemId = input.number<std::uint32_t>();
    const std::string narrow(input.rest());
    const std::wstring file = wideText(narrow);
    differences.compare("record", torvapdm::formatCommitRecord(zemId, file),
                        peer::formatCommitRecord({zemId, file}));
    differences.compare("notice", torvapdm::formatCommitNotice(zemId, narrow),
                        "ZEMID=" + std::to_string(zemId) + "|" + narrow);
    differences.compare("arguments", torvapdm::formatCommitArguments(zemId, file),
                        L"--commit \"" + file + L'"' + (zemId == ~0u ? L" --id 4294967295" : L""));
}

#ifdef _WIN32
// As the current C runtime reads it. An older one does not skip U+0085.
std::int32_t runtimesNumber(const std::wstring& text)
{
    static const auto runtimes = std::bit_cast<int (*)(const wchar_t*)>(
        GetProcAddress(LoadLibraryW(L"ucrtbase.dll"), "_wtoi"));
    return runtimes(text.c_str());
}
#endif

void checkDecimal(Input& input, Differences& differences)
{
    const std::string_view bytes = input.rest();
    const std::wstring wide = wideText(bytes);
    auto number = peer::parseLeadingNumber(bytes);
    if (number && *number != static_cast<std::int32_t>(*number))
        number.reset();
    differences.compare("number", std::optional<std::int64_t>(torvapdm::parseDecimal(bytes)),
                        number);
    differences.compare("number or 0", torvapdm::parseDecimalOrZero(wide),
                        peer::parseLeadingNumberOrZero(wide));
#ifdef _WIN32
    differences.compare("runtime's number", torvapdm::parseDecimalOrZero(wide),
                        runtimesNumber(wide));
#endif
}

// Input: seconds, folder. The low 16 bits of a product depend only on the low 16 bits of its
// factors.
void checkExchangeFileName(Input& input, Differences& differences)
{
    const auto seconds = input.number<std::int64_t>();
    const std::wstring folder = input.wideRest();
    const std::int64_t low = (seconds % 65536 + 65536) % 65536;
    const std::int64_t number = low * (275604541 % 65536) % 65536;
    differences.compare("name", torvapdm::formatAnswerPath(folder, seconds),
                        folder + L"\\TORVA ZEM-" + std::to_wstring(number) + L".tmp");
}

// The add-in reads the first line through a stream in text mode.
void checkMachineSettings(Input& input, Differences& differences)
{
    const std::string_view bytes = input.rest();
    std::string line(bytes.substr(0, bytes.find('\n')));
    if (line.size() < bytes.size()) {
        if (line.ends_with('\r'))
            line.pop_back();
        line += '\n';
    }
    const torvapdm::MachineSettings answer = torvapdm::parseMachineSettings(unsignedUnits(line));
    const auto expected = peer::parseMachineSettings(bytes).value_or(peer::MachineSettings{});
    differences.compare("NC-path number", answer.ncPathNumber, expected.ncPath);
    differences.compare("second number", answer.secondNumber, expected.secondNumber);
    differences.compare("machine path", answer.machinePath, unsignedUnits(expected.machine));
}

// Input: the initial answer ("n" if the first byte is 'n'), also part of the lines.
void checkNcImportLine(Input& input, Differences& differences)
{
    const std::string_view bytes = input.rest();
    const bool isOffBefore = bytes.starts_with('n');
    std::string answer = isOffBefore ? "n" : "y";
    for (const std::string& line : peer::splitSettingLines(bytes))
        torvapdm::applyNcImportLine(line, answer);
    const std::string before = isOffBefore ? "MCXIMPORTNC=n\n" : "";
    const bool isOn = peer::parseSettings(before + std::string(bytes)).importNc;
    differences.compare("answer", answer, isOn ? "y" : "n");
}

// Input: NC-path number, NCI name, found file, top group, folder.
void checkQueueTexts(Input& input, Differences& differences)
{
    const auto number = input.number<std::int32_t>();
    const std::wstring nciName = input.wideField();
    const std::string file(input.field());
    const std::string group(input.field());
    const std::string folder(input.rest());
    const std::wstring stem = nciName.substr(0, nciName.rfind(L'.'));
    const std::string program = folder + file;
    const std::string entry = program + '|' + group;
    const std::string line = torvapdm::formatQueueLine(number, entry);
    differences.compare("program name", torvapdm::programNameOf(nciName),
                        stem.substr(stem.find_last_of(L"/\\") + 1));
    differences.compare("entry", torvapdm::formatQueueEntry(folder, file, group), entry);
    differences.compare("line", line, "NCPATH|" + std::to_string(number) + '|' + entry + '\n');
    const bool isControlled = std::ranges::any_of(
        entry, [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; });
    if (isControlled || program.empty() || contains(program, "|"))
        return;
    const peer::QueueLines read = peer::parseNcQueue(line);
    const bool isRead = read.size() == 1 && read[0];
    differences.compare("is read", isRead, true);
    if (!isRead)
        return;
    differences.compare("number read", read[0]->pathNumber, number);
    differences.compare("program read", read[0]->program, program);
    differences.compare("group read", read[0]->group, group);
}

// Input: identifier, previous value, file.
void checkSettingsLine(Input& input, Differences& differences)
{
    const std::string_view identifier = input.field();
    std::string answer(input.field());
    std::string expected = answer;
    for (const std::string& line : peer::splitSettingLines(input.rest())) {
        torvapdm::applySettingLine(line, identifier, answer);
        if (contains(line, identifier) && contains(line, "="))
            expected = peer::findSetting({line}, identifier);
        differences.compare("value", answer, expected);
    }
}

// Input: request id, file of the setup sheet.
void checkSetupSheetLine(Input& input, Differences& differences)
{
    const auto id = input.number<std::int32_t>();
    const std::wstring file = input.wideRest();
    differences.compare("line", torvapdm::formatSetupSheetNotice(id, file),
                        L"MCAMXMLIMPORTDATAID=" + std::to_wstring(id) + L';' + file);
}

// Expected order: by unsigned bytes, as std::string compares.
void checkSortedLines(Input& input, Differences& differences)
{
    std::vector<std::string> answer = {{}};
    for (const char byte : input.rest())
        if (byte == '\n')
            answer.emplace_back();
        else
            answer.back() += byte;
    const std::set<std::string> ordered(answer.begin(), answer.end());
    torvapdm::sortAndRemoveDuplicates(answer);
    differences.compare("lines", answer, {ordered.begin(), ordered.end()});
}

void checkToolsOption(Input& input, Differences& differences)
{
    const std::string_view bytes = input.rest();
    const bool isOn =
        std::ranges::any_of(peer::splitSettingLines(bytes), torvapdm::hasAlwaysSaveTools);
    differences.compare("asks for tools", isOn, peer::parseSettings(bytes).alwaysSaveTools);
}

void checkDeclaredVersion(Input& input, Differences& differences)
{
    const auto host = input.number<std::int32_t>();
    const bool isEchoed = (host >= 1100 && host <= 1199) || (host >= 2100 && host <= 2199);
    differences.compare("version", torvapdm::declaredVersion(host), isEchoed ? host : 2100);
}

// Input: title, path.
void checkDocumentName(Input& input, Differences& differences)
{
    const std::wstring title = input.wideField();
    const std::wstring path = input.wideRest();
    std::wstring expected = title.substr(0, title.rfind(L"  ")) + L"  ";
    for (const wchar_t unit : path)
        expected += unit >= L'a' && unit <= L'z' ? static_cast<wchar_t>(unit - L'a' + L'A') : unit;
    differences.compare("name", torvapdm::mcamNameOf(path),
                        path.substr(0, path.rfind(L'.')) + L".mcam");
    differences.compare("title", torvapdm::titleForDocument(title, path), expected);
}

// Input: any number of files, each a one-byte id and a path. A file that is already in the list
// moves to the front; the list keeps 20 entries after it.
void checkRecentFileList(Input& input, Differences& differences)
{
    std::vector<CompanionFile> answer;
    std::vector<CompanionFile> expected;
    const auto asTexts = [](const std::vector<CompanionFile>& files) {
        std::vector<std::wstring> texts;
        for (const CompanionFile& file : files)
            texts.push_back(std::to_wstring(file.id) + L' ' + file.path);
        return texts;
    };
    while (!input.isAtEnd() && differences.text().empty()) {
        const std::int32_t id = input.number<signed char>();
        const CompanionFile file = {id, input.wideField()};
        torvapdm::addRecentFile(answer, file);
        const auto old = std::ranges::find(expected, file.path, &CompanionFile::path);
        if (old != expected.end())
            expected.erase(old);
        expected.insert(expected.begin(), file);
        expected.resize(std::min(expected.size(), size_t{21}));
        differences.compare("list", asTexts(answer), asTexts(expected));
    }
}

// This many files, each with a different path.
std::string manyFiles(char count)
{
    std::string bytes;
    for (char i = 0; i < count; ++i)
        bytes += std::string{i, static_cast<char>('A' + i), '\37'};
    return bytes;
}

} // namespace

std::vector<Target> formatTargets()
{
    // Fields end with \37. The byte-order mark is \357\273\277.
    return {
        {"command_text",
         checkCommandText,
         {"\357\273\27712 C:\\parts\\a.mcam\n", "\357\273\2777 C:\\a b c.mcam\r\n",
          "\357\273\2777 \n", "\357\273\277-5 x\n", "\357\273\2772147483647 C:\\\304.mcam\n",
          "\357\273\277-2147483649 x\n", "\357\273\27712 abcd\nsecond line\n",
          "\357\273\27712 no line feed", "a\nb5 path to\n", "\nab5 path\n", "ab\n5 C:\\a\n",
          "\357\273\277\t 12 x\n", "CHECKIN", "CHECKIN C:\\a.mcam\n", "CHECKIN\n",
          "\357\273\2771 a\0b\n"s, "\357\273\2771 " + std::string(300, 'p') + "\n"},
         {"\357\273\277", "CHECKIN", " ", "\n", "\r\n", "12", "2147483647", "-2147483648",
          "2147483648", "+", "C:\\", ".mcam", "99999999999999999999"}},
        {"checkout_answer",
         checkCheckoutAnswer,
         {"\37CAD1234 C:\\Parts\\bracket.mcam", "CAD\37CHECKIN x", "old\37AB c",
          "\37ABC5 C:\\a b.mcam\nsecond line", "\37CADx12 C:\\f.mcam", "\37CAD C:\\f",
          "\37CAD12\n C:\\f", "\37CAD-99999999999 p", "\37 CAD1 p", "\37CAD\t+5 p"},
         {"CHECKIN", "CAD", " ", "\n", "\r\n", "12", "2147483648", "\37"}},
        {"commit_texts",
         checkCommitTexts,
         {raw(42) + "C:\\parts\\a.mcam", raw(-1) + "C:\\a b.mcam", raw(0), raw(-2) + "\"",
          raw(1) + "\1\xD8\x3D\1\xDE\x00"},
         {"\xFF\xFF\xFF\xFF", "\"", "C:\\", std::string(300, 'p'), "\1\xFF\xFF"}},
        {"decimal",
         checkDecimal,
         {"12", " \t\n\v\f\r-5x", "+2147483647", "2147483648", "-2147483648", "-2147483649", "+-1",
          "- 1", "", "000000000000000000000000000000007", "99999999999999999999",
          "\xA0\1\x30\x00-\1\xFF\x11\1\x06\x62"},
         {"-", "+", " ", "0", "2147483647", "2147483648", "9223372036854775808", "\1\xFF\x15",
          "\xA0", "\x85", "\1\x30\x00", "\1\x06\x69"}},
        {"exchange_file_name",
         checkExchangeFileName,
         {raw(std::int64_t{1}) + "C:\\Temp\\", raw(std::int64_t{1790000000}) + "C:\\T\\",
          raw(std::int64_t{0}), raw(std::int64_t{-1}) + "x"},
         {"C:\\", "\\"}},
        {"machine_settings_line",
         checkMachineSettings,
         {"17|3|0|C:\\Machines\\Mill 3-axis.mcam-mmd\r\n", "1|2", "|||",
          "1| -5x|+2147483648|a|b|c\nd|e\n", "1\n|2\n|3\n|p"},
         {"|", "\n", "\r\n", "-1", "2147483647", "-2147483649", "99999999999999999999"}},
        {"nc_import_line",
         checkNcImportLine,
         {"MCXIMPORTNC=n\nMCXIMPORTNC=Y\n", "MCXIMPORTNC=Y MCXIMPORTNC=n\n", "n\nxMCXIMPORTNC=N",
          "n MCXIMPORTNC=y\r\n", "MCXIMPORTNC = n\nMCXIMPORTNC=\n"},
         {"MCXIMPORTNC", "=", "y", "Y", "n", "N", "\n", "MCXIMPORTNC=N", "MCXIMPORTNC=y"}},
        {"queue_texts",
         checkQueueTexts,
         {raw(-1) + "C:\\NC\\PART.nci\37PART.NC\37Mill\37C:\\NC\\",
          raw(3) + "PART\37A B\xC4.NC\37left|right\37", raw(0) + "C:\\a.b\\PART\37P.NC\37|\37",
          raw(-2147483647 - 1) + "C:/nc\\x/y.z.nci\37\37\n\37", raw(7) + ".\37"},
         {".", "/", "\\", "|", ".nci", "\37"}},
        {"settings_line",
         checkSettingsLine,
         {"UseFtpServer\37\37UseFtpServer=y\nXUseFtpServer=n\n",
          "UseFtpServer\37y\37UseFtpServer=y", "MCXCATIA\37n\37MCXCATIA\r\nMCXCATIA=Y\r\n",
          "A\37\37A==\n=A\nA=", "A\37old\37" + std::string(1020, ' ') + "A=y\n"},
         {"UseFtpServer", "MCXCATIA", "=", "\n", "\r\n", "=y", "=Y", "\37", "\xEF\xBB\xBF"}},
        {"setup_sheet_line",
         checkSetupSheetLine,
         {raw(42) + "C:\\s.xml", raw(0), raw(-2147483647 - 1) + ";", raw(-1) + "\1\3\xA9"},
         {";", "=", "C:\\", "\n"}},
        {"sorted_lines",
         checkSortedLines,
         {"b\na\nb\na\n", "P2.NC|Mill\nP10.NC|Mill\nP2.NC|Mill\n", "\xC4\nz\n\x7F\n", "", "\n\n",
          "ab\na\nabc\n"},
         {"\n", "a\n", "\xC4\n", "ab"}},
        {"tools_option",
         checkToolsOption,
         {"AlwaysSaveTools=y\n", "AlwaysSaveTools=Y\n", "xAlwaysSaveTools=yes\nalwaysSaveTools=y",
          "AlwaysSaveTools = y\r\nAlwaysSaveTools=n\r\n"},
         {"AlwaysSaveTools", "=", "y", "Y", "\n", "AlwaysSaveTools=y"}},
        {"declared_version",
         checkDeclaredVersion,
         {raw(2100), raw(2150), raw(1105), raw(2200), raw(-1100), raw(1199), raw(1099)},
         {raw(1100), raw(2199), raw(2147483647), raw(-2147483647 - 1)}},
        {"document_name",
         checkDocumentName,
         {"Host - part  C:\\OLD.MCAM\37C:\\Parts\\new.mcam", "Host\37C:\\a.b\\part",
          "a   b\37part.emcam", "\37", "  \37...", "t\37C:\\\1\1a\1\1z.m"},
         {".", "  ", "\\", ".mcam", "C:\\", "/", "\37"}},
        {"recent_file_list",
         checkRecentFileList,
         {"1a\0372b\0373a\37", "1C:\\a\0372C:\\A\37", manyFiles(20), manyFiles(25),
          manyFiles(22) + manyFiles(3) + manyFiles(23), "\37\37\37\37"},
         {"1a\37", "2b\37", "3C\37", "4D\37", "5\37"}}};
}

} // namespace fuzzing
