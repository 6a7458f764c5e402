// The exchange formats and the texts of the add-in: compares its parsers and formatters with the
// Companion's code.
#include "formats/checkout_answer.h"
#include "formats/command_file.h"
#include "formats/commit_record.h"
#include "formats/decimal.h"
#include "formats/machine_settings_file.h"
#include "formats/nc_queue_file.h"
#include "formats/settings_file.h"
#include "fuzz/target.h"
#include "peer/checkout_answer.h"
#include "peer/command_file.h"
#include "peer/commit_record.h"
#include "peer/machine_settings.h"
#include "peer/nc_queue_file.h"
#include "peer/numbers.h"
#include "peer/settings_file.h"

#include <algorithm>
#include <bit>
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
void checkCommitRecord(Input& input, Differences& differences)
{
    const auto zemId = input.number<std::uint32_t>();
    const std::wstring file = input.wideRest();
    differences.compare("record", torvapdm::formatCommitRecord(zemId, file),
                        peer::formatCommitRecord({zemId, file}));
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

// Input: NC-path number, found file, top group, folder.
void checkQueueTexts(Input& input, Differences& differences)
{
    const auto number = input.number<std::int32_t>();
    const std::string file(input.field());
    const std::string group(input.field());
    const std::string folder(input.rest());
    const std::string program = folder + file;
    const std::string entry = torvapdm::formatQueueEntry(folder, file, group);
    const std::string line = torvapdm::formatQueueLine(number, entry);
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

} // namespace

std::vector<Target> formatTargets()
{
    // Fields end with \37. The byte-order mark is \357\273\277.
    return {{"command_text",
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
            {"commit_record",
             checkCommitRecord,
             {raw(42) + "C:\\parts\\a.mcam", raw(-1) + "C:\\a b.mcam", raw(0), raw(-2) + "\"",
              raw(1) + "\1\xD8\x3D\1\xDE\x00"},
             {"\xFF\xFF\xFF\xFF", "\"", "C:\\", std::string(300, 'p'), "\1\xFF\xFF"}},
            {"decimal",
             checkDecimal,
             {"12", " \t\n\v\f\r-5x", "+2147483647", "2147483648", "-2147483648", "-2147483649",
              "+-1", "- 1", "", "000000000000000000000000000000007", "99999999999999999999",
              "\xA0\1\x30\x00-\1\xFF\x11\1\x06\x62"},
             {"-", "+", " ", "0", "2147483647", "2147483648", "9223372036854775808", "\1\xFF\x15",
              "\xA0", "\x85", "\1\x30\x00", "\1\x06\x69"}},
            {"machine_settings_line",
             checkMachineSettings,
             {"17|3|0|C:\\Machines\\Mill 3-axis.mcam-mmd\r\n", "1|2", "|||",
              "1| -5x|+2147483648|a|b|c\nd|e\n", "1\n|2\n|3\n|p"},
             {"|", "\n", "\r\n", "-1", "2147483647", "-2147483649", "99999999999999999999"}},
            {"nc_import_line",
             checkNcImportLine,
             {"MCXIMPORTNC=n\nMCXIMPORTNC=Y\n", "MCXIMPORTNC=Y MCXIMPORTNC=n\n",
              "n\nxMCXIMPORTNC=N", "n MCXIMPORTNC=y\r\n", "MCXIMPORTNC = n\nMCXIMPORTNC=\n"},
             {"MCXIMPORTNC", "=", "y", "Y", "n", "N", "\n", "MCXIMPORTNC=N", "MCXIMPORTNC=y"}},
            {"queue_texts",
             checkQueueTexts,
             {raw(-1) + "PART.NC\37Mill\37C:\\NC\\", raw(3) + "A B\xC4.NC\37left|right\37",
              raw(0) + "P.NC\37|\37", raw(-2147483647 - 1) + "\37\n\37"},
             {"/", "\\", "|", ".NC", "\37"}},
            {"settings_line",
             checkSettingsLine,
             {"UseFtpServer\37\37UseFtpServer=y\nXUseFtpServer=n\n",
              "UseFtpServer\37y\37UseFtpServer=y", "MCXCATIA\37n\37MCXCATIA\r\nMCXCATIA=Y\r\n",
              "A\37\37A==\n=A\nA=", "A\37old\37" + std::string(1020, ' ') + "A=y\n"},
             {"UseFtpServer", "MCXCATIA", "=", "\n", "\r\n", "=y", "=Y", "\37", "\xEF\xBB\xBF"}}};
}

} // namespace fuzzing
