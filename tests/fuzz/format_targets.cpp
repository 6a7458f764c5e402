// The exchange formats: compares the add-in's parsers and formatters with the Companion's code.
#include "formats/checkout_answer.h"
#include "formats/command_file.h"
#include "formats/commit_record.h"
#include "formats/decimal.h"
#include "formats/machine_settings_file.h"
#include "formats/settings_file.h"
#include "formats/nc_queue_file.h"
#include "formats/notices.h"
#include "formats/sorted_lines.h"
#include "fuzz/differences.h"
#include "fuzz/input.h"
#include "fuzz/target.h"
#include "peer/checkout_answer.h"
#include "peer/command_file.h"
#include "peer/commit_record.h"
#include "peer/numbers.h"
#include "peer/machine_settings.h"
#include "peer/nc_queue_file.h"
#include "peer/settings_file.h"
#include "formats/command_lines.h"

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

bool contains(std::string_view text, std::string_view part)
{
    return text.find(part) != text.npos;
}

std::string checkCommandText(std::string_view bytes)
{
    using Kind = torvapdm::Command::Kind;
    const torvapdm::Command answer = torvapdm::parseCommand(bytes);
    const peer::HostCommand expected = peer::parseHostCommand(bytes);
    const Kind kind = expected.kind == peer::HostCommandKind::checkIn   ? Kind::checkIn
                      : expected.kind == peer::HostCommandKind::newFile ? Kind::newFile
                      : expected.kind == peer::HostCommandKind::open    ? Kind::open
                                                                        : Kind::malformed;
    return Differences()
        .compare("kind", static_cast<int>(answer.kind), static_cast<int>(kind))
        .compare("id", answer.file.id, expected.id)
        .compare("path", answer.file.path, kind == Kind::open ? signedUnits(expected.path) : L"")
        .text();
}

// Input: the previous prefix of the kind, the text. Every first word except CHECKIN changes the
// prefix; a word that is shorter than a prefix throws an exception.
std::string checkCheckoutAnswer(std::string_view bytes)
{
    Input input(bytes);
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
    Differences differences;
    torvapdm::CheckoutAnswer answer;
    bool escapes = false;
    try {
        answer = torvapdm::parseCheckoutAnswer(text, prefix);
    } catch (const std::out_of_range&) {
        escapes = true;
    }
    using Kind = torvapdm::CheckoutAnswer::Kind;
    return differences.compare("prefix", prefix, expectedPrefix)
        .compare("escapes", escapes, hasWord && isUnusable)
        .compare("is check-in", answer.kind == Kind::checkIn, isCheckIn)
        .compare("is unusable", answer.kind == Kind::unusable, isUnusable)
        .compare("id", answer.file.id, expected.id)
        .compare("path", answer.file.path, expected.path)
        .text();
}

// Input: ZEM id, file.
std::string checkCommitTexts(std::string_view bytes)
{
    Input input(bytes);
    const auto zemId = input.number<std::uint32_t>();
    const std::string narrow(input.rest());
    const std::wstring file = wideText(narrow);
    return Differences()
        .compare("record", torvapdm::formatCommitRecord(zemId, file),
                 peer::formatCommitRecord({zemId, file}))
        .compare("notice", torvapdm::formatCommitNotice(zemId, narrow),
                 "ZEMID=" + std::to_string(zemId) + "|" + narrow)
        .compare("arguments", torvapdm::formatCommitArguments(zemId, file),
                 L"--commit \"" + file + L'"' + (zemId == ~0u ? L" --id 4294967295" : L""))
        .text();
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

std::string checkDecimal(std::string_view bytes)
{
    const std::wstring wide = wideText(bytes);
    auto number = peer::parseLeadingNumber(bytes);
    if (number && *number != static_cast<std::int32_t>(*number))
        number.reset();
    return Differences()
        .compare("number", std::optional<std::int64_t>(torvapdm::parseDecimal(bytes)), number)
        .compare("number or 0", torvapdm::parseDecimalOrZero(wide),
                 peer::parseLeadingNumberOrZero(wide))
#ifdef _WIN32
        .compare("runtime's number", torvapdm::parseDecimalOrZero(wide), runtimesNumber(wide))
#endif
        .text();
}

// Input: seconds, folder. The low 16 bits of a product depend only on the low 16 bits of its
// factors.
std::string checkExchangeFileName(std::string_view bytes)
{
    Input input(bytes);
    const auto seconds = input.number<std::int64_t>();
    const std::wstring folder = input.wideRest();
    const std::int64_t low = (seconds % 65536 + 65536) % 65536;
    const std::int64_t number = low * (275604541 % 65536) % 65536;
    return Differences()
        .compare("name", torvapdm::formatAnswerPath(folder, seconds),
                 folder + L"\\TORVA ZEM-" + std::to_wstring(number) + L".tmp")
        .text();
}

// The add-in reads the first line through a stream in text mode.
std::string checkMachineSettings(std::string_view bytes)
{
    std::string line(bytes.substr(0, std::min(bytes.find('\n'), bytes.size())));
    if (line.size() < bytes.size()) {
        if (line.ends_with('\r'))
            line.pop_back();
        line += '\n';
    }
    const torvapdm::MachineSettings answer = torvapdm::parseMachineSettings(unsignedUnits(line));
    const auto expected = peer::parseMachineSettings(bytes).value_or(peer::MachineSettings{});
    return Differences()
        .compare("NC-path number", answer.ncPathNumber, expected.ncPath)
        .compare("second number", answer.secondNumber, expected.secondNumber)
        .compare("machine path", answer.machinePath, unsignedUnits(expected.machine))
        .text();
}

// Input: the initial answer ("n" if the first byte is 'n'), also part of the lines.
std::string checkNcImportLine(std::string_view bytes)
{
    const bool isOffBefore = bytes.starts_with('n');
    std::string answer = isOffBefore ? "n" : "y";
    for (const std::string& line : peer::splitSettingLines(bytes))
        torvapdm::applyNcImportLine(line, answer);
    const std::string before = isOffBefore ? "MCXIMPORTNC=n\n" : "";
    const bool isOn = peer::parseSettings(before + std::string(bytes)).importNc;
    return Differences().compare("answer", answer, std::string(isOn ? "y" : "n")).text();
}

// Input: NC-path number, NCI name, found file, top group, folder.
std::string checkQueueTexts(std::string_view bytes)
{
    Input input(bytes);
    const auto number = input.number<std::int32_t>();
    const std::wstring nciName = input.wideField();
    const std::string file(input.field());
    const std::string group(input.field());
    const std::string folder(input.rest());
    const std::wstring stem = nciName.substr(0, nciName.rfind(L'.'));
    const std::string program = folder + file;
    const std::string entry = program + '|' + group;
    const std::string line = torvapdm::formatQueueLine(number, entry);
    Differences differences;
    differences
        .compare("program name", torvapdm::programNameOf(nciName),
                 stem.substr(stem.find_last_of(L"/\\") + 1))
        .compare("entry", torvapdm::formatQueueEntry(folder, file, group), entry)
        .compare("line", line, "NCPATH|" + std::to_string(number) + '|' + entry + '\n');
    const bool isControlled = std::ranges::any_of(
        entry, [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; });
    if (isControlled || program.empty() || contains(program, "|"))
        return differences.text();
    const peer::QueueLines read = peer::parseNcQueue(line);
    if (read.size() != 1 || !read[0])
        return differences.compare("entries read", read.size(), size_t{1}).text() + "no entry";
    return differences.compare("number read", read[0]->pathNumber, number)
        .compare("program read", read[0]->program, program)
        .compare("group read", read[0]->group, group)
        .text();
}

// Input: identifier, previous value, file.
std::string checkSettingsLine(std::string_view bytes)
{
    Input input(bytes);
    const std::string_view identifier = input.field();
    std::string answer(input.field());
    std::string expected = answer;
    Differences differences;
    for (const std::string& line : peer::splitSettingLines(input.rest())) {
        torvapdm::applySettingLine(line, identifier, answer);
        if (contains(line, identifier) && contains(line, "="))
            expected = peer::findSetting({line}, identifier);
        differences.compare("value", answer, expected);
    }
    return differences.text();
}

// Input: request id, file of the setup sheet.
std::string checkSetupSheetLine(std::string_view bytes)
{
    Input input(bytes);
    const auto id = input.number<std::int32_t>();
    const std::wstring file = input.wideRest();
    return Differences()
        .compare("line", torvapdm::formatSetupSheetNotice(id, file),
                 L"MCAMXMLIMPORTDATAID=" + std::to_wstring(id) + L';' + file)
        .text();
}

// Input: lines, each ended by a line feed. Expected order: by unsigned bytes.
std::string checkSortedLines(std::string_view bytes)
{
    std::vector<std::string> answer = {{}};
    for (const char byte : bytes)
        if (byte == '\n')
            answer.emplace_back();
        else
            answer.back() += byte;
    // std::string compares characters as unsigned bytes.
    const std::set<std::string> ordered(answer.begin(), answer.end());
    const std::vector<std::string> expected(ordered.begin(), ordered.end());
    torvapdm::sortAndRemoveDuplicates(answer);
    return Differences().compare("lines", answer, expected).text();
}

std::string checkToolsOption(std::string_view bytes)
{
    bool isOn = false;
    for (const std::string& line : peer::splitSettingLines(bytes))
        isOn = torvapdm::hasAlwaysSaveTools(line) || isOn;
    return Differences()
        .compare("asks for tools", isOn, peer::parseSettings(bytes).alwaysSaveTools)
        .text();
}

} // namespace

Target commandTextTarget()
{
    // The byte-order mark is \357\273\277.
    return {"command_text",
            checkCommandText,
            {"\357\273\27712 C:\\parts\\a.mcam\n", "\357\273\2777 C:\\a b c.mcam\r\n",
             "\357\273\2777 \n", "\357\273\277-5 x\n", "\357\273\2772147483647 C:\\\304.mcam\n",
             "\357\273\277-2147483649 x\n", "\357\273\27712 abcd\nsecond line\n",
             "\357\273\27712 no line feed", "a\nb5 path to\n", "\nab5 path\n", "ab\n5 C:\\a\n",
             "\357\273\277\t 12 x\n", "CHECKIN", "CHECKIN C:\\a.mcam\n", "CHECKIN\n",
             "\357\273\2771 a\0b\n"s, "\357\273\2771 " + std::string(300, 'p') + "\n"},
            {"\357\273\277", "CHECKIN", " ", "\n", "\r\n", "12", "2147483647", "-2147483648",
             "2147483648", "+", "C:\\", ".mcam", "99999999999999999999"}};
}

std::vector<Target> formatTargets()
{
    // Fields end with \37.
    return {
        commandTextTarget(),
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
         {"AlwaysSaveTools", "=", "y", "Y", "\n", "AlwaysSaveTools=y"}}};
}

} // namespace fuzzing
