// The exchange formats: what the add-in parses and formats, against the Companion's side.
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
#include "formats/command_lines.h"

#include <set>
#include <stdexcept>

using namespace std::string_literals;

namespace fuzzing {

namespace {

std::wstring widened(std::string_view ascii)
{
    return {ascii.begin(), ascii.end()};
}

bool contains(std::string_view text, std::string_view part)
{
    return text.find(part) != text.npos;
}

// The lines of a text file as a C program reads them into 1024 bytes: up to and with the line feed,
// or 1023 bytes of a longer line; each ends for it at its first NUL.
std::vector<std::string> linesAsRead(std::string_view file)
{
    std::vector<std::string> lines;
    std::string line;
    for (const char byte : file) {
        line += byte;
        if (byte == '\n' || line.size() == 1023) {
            lines.push_back(line.c_str());
            line.clear();
        }
    }
    if (!line.empty())
        lines.push_back(line.c_str());
    return lines;
}

std::string checkCommandText(std::string_view bytes)
{
    using Kind = torvapdm::Command::Kind;
    const torvapdm::Command answer = torvapdm::parseCommand(bytes);
    const peer::Request expected = peer::parseRequest(bytes);
    Kind kind = Kind::malformed;
    if (expected.kind == peer::RequestKind::checkIn)
        kind = Kind::checkIn;
    else if (expected.kind == peer::RequestKind::newFile)
        kind = Kind::newFile;
    else if (expected.kind == peer::RequestKind::open)
        kind = Kind::open;
    return Differences()
        .compare("kind", static_cast<int>(answer.kind), static_cast<int>(kind))
        .compare("id", answer.file.id, expected.id)
        .compare("path", answer.file.path, kind == Kind::open ? signedUnits(expected.path) : L"")
        .text();
}

// The kind's prefix as it was before, the text. The prefix changes with every first word but
// CHECKIN; one that is shorter than a prefix escapes as an exception.
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

// The ZEM id, the file.
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

std::string checkDecimal(std::string_view bytes)
{
    const std::wstring wide = wideText(bytes);
    std::string narrow;
    for (const wchar_t unit : wide)
        narrow += unit < 0x80 ? static_cast<char>(unit) : '?';
    auto number = peer::parseLeadingNumber(bytes);
    if (number && *number != static_cast<std::int32_t>(*number))
        number.reset();
    return Differences()
        .compare("number", std::optional<std::int64_t>(torvapdm::parseDecimal(bytes)), number)
        .compare("number or 0", torvapdm::parseDecimalOrZero(wide),
                 peer::parseLeadingNumberOrZero(narrow))
        .text();
}

// Seconds, folder. The low 16 bits of a product depend only on those of its factors.
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

// The add-in gets the first line as a stream in text mode gives it.
std::string checkMachineSettings(std::string_view bytes)
{
    std::string line(bytes.substr(0, std::min(bytes.find('\n'), bytes.size())));
    if (line.size() < bytes.size()) {
        if (line.ends_with('\r'))
            line.pop_back();
        line += '\n';
    }
    const torvapdm::MachineSettings answer = torvapdm::parseMachineSettings(signedUnits(line));
    const auto expected = peer::parseMachineSettings(bytes).value_or(peer::MachineSettings{});
    return Differences()
        .compare("NC-path number", answer.ncPathNumber, expected.ncPath)
        .compare("second number", answer.secondNumber, expected.secondNumber)
        .compare("machine path", answer.machinePath, signedUnits(expected.machine))
        .text();
}

// The answer so far ("n" when the first byte is one), the file. "No" wins within a line.
std::string checkNcImportLine(std::string_view bytes)
{
    std::string answer = bytes.starts_with('n') ? "n" : "y";
    std::string expected = answer;
    Differences differences;
    for (const std::string& line : linesAsRead(bytes)) {
        torvapdm::applyNcImportLine(line, answer);
        if (contains(line, "MCXIMPORTNC=n") || contains(line, "MCXIMPORTNC=N"))
            expected = "n";
        else if (contains(line, "MCXIMPORTNC=y") || contains(line, "MCXIMPORTNC=Y"))
            expected = "y";
        differences.compare("answer", answer, expected);
    }
    return differences.text();
}

// The NC-path number, NCI name, found file, top group, folder.
std::string checkQueueTexts(std::string_view bytes)
{
    Input input(bytes);
    const auto number = input.number<std::int32_t>();
    const std::wstring nciName = input.wideField();
    const std::string file(input.field());
    const std::string group(input.field());
    const std::string folder(input.rest());
    const std::wstring stem = nciName.substr(0, nciName.rfind(L'.'));
    const std::string entry = folder + file + '|' + group;
    return Differences()
        .compare("program name", torvapdm::programNameOf(nciName),
                 stem.substr(stem.find_last_of(L"/\\") + 1))
        .compare("entry", torvapdm::formatQueueEntry(folder, file, group), entry)
        .compare("line", torvapdm::formatQueueLine(number, entry),
                 "NCPATH|" + std::to_string(number) + '|' + entry + '\n')
        .text();
}

// The identifier, what the value was before, the file. A line that contains the identifier anywhere
// gives what follows its first "=", less its last character.
std::string checkSettingsLine(std::string_view bytes)
{
    Input input(bytes);
    const std::string_view identifier = input.field();
    std::string answer(input.field());
    std::string expected = answer;
    Differences differences;
    for (const std::string& line : linesAsRead(input.rest())) {
        torvapdm::applySettingLine(line, identifier, answer);
        const size_t equals = line.find('=');
        if (equals != line.npos && contains(line, identifier))
            expected = line.substr(0, std::max(line.size() - 1, equals + 1)).substr(equals + 1);
        differences.compare("value", answer, expected);
    }
    return differences.text();
}

// The request's id, the sheet's file.
std::string checkSetupSheetLine(std::string_view bytes)
{
    Input input(bytes);
    const auto id = input.number<std::int32_t>();
    const std::wstring file = input.wideRest();
    return Differences()
        .compare("line", torvapdm::formatSetupSheetNotice(id, file),
                 L"MCAMXMLIMPORTDATAID=" + widened(std::to_string(id)) + L';' + file)
        .text();
}

// Lines, each ended by a line feed, in the order of their unsigned bytes.
std::string checkSortedLines(std::string_view bytes)
{
    std::vector<std::string> answer = {{}};
    for (const char byte : bytes)
        if (byte == '\n')
            answer.emplace_back();
        else
            answer.back() += byte;
    std::set<std::vector<unsigned char>> ordered;
    for (const std::string& line : answer)
        ordered.emplace(line.begin(), line.end());
    std::vector<std::string> expected;
    for (const auto& line : ordered)
        expected.emplace_back(line.begin(), line.end());
    torvapdm::sortAndRemoveDuplicates(answer);
    return Differences().compare("lines", answer, expected).text();
}

std::string checkToolsOption(std::string_view bytes)
{
    Differences differences;
    for (const std::string& line : linesAsRead(bytes))
        differences.compare("asks for tools", torvapdm::hasAlwaysSaveTools(line),
                            contains(line, "AlwaysSaveTools=y"));
    return differences.text();
}

} // namespace

Target commandTextTarget()
{
    return {"command_text",
            checkCommandText,
            {
                "\xEF\xBB\xBF"
                "12 C:\\parts\\a.mcam\n"s,
                "\xEF\xBB\xBF"
                "7 C:\\a b c.mcam\r\n"s,
                "\xEF\xBB\xBF"
                "7 \n"s,
                "\xEF\xBB\xBF"
                "-5 x\n"s,
                "\xEF\xBB\xBF"
                "2147483647 C:\\\xC4.mcam\n"s,
                "\xEF\xBB\xBF"
                "-2147483649 x\n"s,
                "\xEF\xBB\xBF"
                "12 abcd\nsecond line\n"s,
                "\xEF\xBB\xBF"
                "12 no line feed"s,
                "a\nb5 path to\n"s,
                "\nab5 path\n"s,
                "ab\n5 C:\\a\n"s,
                "\xEF\xBB\xBF\t 12 x\n"s,
                "CHECKIN"s,
                "CHECKIN C:\\a.mcam\n"s,
                "CHECKIN\n"s,
                "\xEF\xBB\xBF"
                "1 a\0b\n"s,
                "\xEF\xBB\xBF"
                "1 "s +
                    std::string(300, 'p') + "\n",
            },
            {"\xEF\xBB\xBF"s, "CHECKIN"s, " "s, "\n"s, "\r\n"s, "12"s, "2147483647"s,
             "-2147483648"s, "2147483648"s, "+"s, "C:\\"s, ".mcam"s, "99999999999999999999"s}};
}

std::vector<Target> formatTargets()
{
    return {
        commandTextTarget(),
        {"checkout_answer",
         checkCheckoutAnswer,
         {"\x1F"
          "CAD1234 C:\\Parts\\bracket.mcam",
          "CAD\x1F"
          "CHECKIN x",
          "old\x1F"
          "AB c",
          "\x1F"
          "ABC5 C:\\a b.mcam\nsecond line",
          "\x1F"
          "CADx12 C:\\f.mcam",
          "\x1F"
          "CAD C:\\f",
          "\x1F"
          "CAD12\n C:\\f",
          "\x1F"
          "CAD-99999999999 p",
          "\x1F CAD1 p",
          "\x1F"
          "CAD\t+5 p"},
         {"CHECKIN", "CAD", " ", "\n", "\r\n", "12", "2147483648", "\x1F"}},
        {"commit_texts",
         checkCommitTexts,
         {raw(42) + "C:\\parts\\a.mcam", raw(-1) + "C:\\a b.mcam", raw(0), raw(-2) + "\"",
          raw(1) + "\x01\xD8\x3D\x01\xDE\x00"},
         {"\xFF\xFF\xFF\xFF", "\"", "C:\\", std::string(300, 'p'), "\x01\xFF\xFF"}},
        {"decimal",
         checkDecimal,
         {"12", " \t\n\v\f\r-5x", "+2147483647", "2147483648", "-2147483648", "-2147483649", "+-1",
          "- 1", "", "000000000000000000000000000000007", "99999999999999999999"},
         {"-", "+", " ", "0", "2147483647", "2147483648", "9223372036854775808", "\x01\xFF\x15"}},
        {"exchange_file_name",
         checkExchangeFileName,
         {raw(std::int64_t{1}) + "C:\\Temp\\", raw(std::int64_t{1790000000}) + "C:\\T\\",
          raw(std::int64_t{-1}), raw(std::int64_t{0}), std::string(8, '\xFF') + "x"},
         {"C:\\", "\\"}},
        {"machine_settings_line",
         checkMachineSettings,
         {"17|3|0|C:\\Machines\\Mill 3-axis.mcam-mmd\r\n", "1|2", "C:\\Mill.mcam-mmd\n", "|||",
          "1| -5x|+2147483648|a|b|c\nd|e\n", "1\n|2\n|3\n|p"},
         {"|", "\n", "\r\n", "-1", "2147483647", "-2147483649", "99999999999999999999"}},
        {"nc_import_line",
         checkNcImportLine,
         {"MCXIMPORTNC=n\nMCXIMPORTNC=Y\n", "MCXIMPORTNC=Y MCXIMPORTNC=n\n", "n\nxMCXIMPORTNC=N",
          "n MCXIMPORTNC=y\r\n", "MCXIMPORTNC = n\nMCXIMPORTNC=\n"},
         {"MCXIMPORTNC", "=", "y", "Y", "n", "N", "\n", "MCXIMPORTNC=N", "MCXIMPORTNC=y"}},
        {"queue_texts",
         checkQueueTexts,
         {raw(-1) + "C:\\NC\\PART.nci\x1FPART.NC\x1FMill\x1F"
                    "C:\\NC\\",
          raw(3) + "PART\x1F\x1F\x1F", raw(0) + "C:\\a.b\\PART\x1FP.NC\x1F|\x1F",
          raw(-2147483647 - 1) + "C:/nc\\x/y.z.nci\x1F\x1F\n\x1F", raw(7) + ".\x1F"},
         {".", "/", "\\", "|", ".nci", "\x1F"}},
        {"settings_line",
         checkSettingsLine,
         {"UseFtpServer\x1F\x1FUseFtpServer=y\nXUseFtpServer=n\n",
          "UseFtpServer\x1Fy\x1FUseFtpServer=y", "MCXCATIA\x1Fn\x1FMCXCATIA\r\nMCXCATIA=Y\r\n",
          "A\x1F\x1F"
          "A==\n=A\nA=",
          "A\x1Fold\x1F" + std::string(1020, ' ') + "A=y\n"},
         {"UseFtpServer", "MCXCATIA", "=", "\n", "\r\n", "=y", "=Y", "\x1F", "\xEF\xBB\xBF"}},
        {"setup_sheet_line",
         checkSetupSheetLine,
         {raw(42) + "C:\\s.xml", raw(0), raw(-2147483647 - 1) + ";", raw(-1) + "\x01\x03\xA9"},
         {";", "=", "C:\\", "\n"}},
        {"sorted_lines",
         checkSortedLines,
         {"b\na\nb\na\n", "C:\\NC\\P2.NC|Mill\nC:\\NC\\P10.NC|Mill\nC:\\NC\\P2.NC|Mill\n",
          "\xC4\nz\n\x7F\n", "", "\n\n", "ab\na\nabc\n"},
         {"\n", "a\n", "\xC4\n", "ab"}},
        {"tools_option",
         checkToolsOption,
         {"AlwaysSaveTools=y\n", "AlwaysSaveTools=Y\n", "xAlwaysSaveTools=yes\nalwaysSaveTools=y",
          "AlwaysSaveTools = y\r\nAlwaysSaveTools=n\r\n"},
         {"AlwaysSaveTools", "=", "y", "Y", "\n", "AlwaysSaveTools=y"}}};
}

} // namespace fuzzing
