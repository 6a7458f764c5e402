#include "peer/command_line.h"

#include "peer/numbers.h"
#include "peer/wire_constants.h"

#include <limits>
#include <vector>

namespace peer {
namespace {

struct WordRow {
    std::wstring_view text;
    Word word;
    std::wstring_view value;   // its name; empty: takes none
    std::wstring_view options; // the option names that may follow, each followed by a space
    std::wstring_view effect;
};

constexpr WordRow wordRows[] = {
    {checkOutWord, Word::checkOut, L"FILE", L"", L"log that the add-in asks for a file"},
    {commitWord, Word::commit, L"FILE", L"--id ", L"store the file as a new version"},
    {aboutWord, Word::about, L"", L"--parentwindow ", L"show the about window"},
    {L"--send", Word::send, L"NAME", L"--host --machine --ncpath --id ",
     L"send a part of the library to a host; NAME is its name or number"},
    {L"--new-file", Word::newFile, L"", L"--host --id ", L"have a host start a new file"},
    {L"--check-in", Word::checkIn, L"", L"--host ", L"have a host check in the file sent last"},
    {L"--quit", Word::quit, L"", L"", L"end the running program"},
    {L"--register", Word::registerFolder, L"", L"", L"register this installation folder"},
    {L"--help", Word::help, L"", L"", L"show this text"},
};

struct OptionRow {
    std::wstring_view name;
    std::wstring_view value;
    std::wstring_view meaning;
};

constexpr OptionRow optionRows[] = {
    {L"--host", L"PID", L"the host's process id; without it, the first running host"},
    {idOption, L"N", L"the request id; without it, the library number"},
    {L"--machine", L"PATH", L"the machine definition, instead of the part's own"},
    {L"--ncpath", L"N", L"the NC path, instead of the part's own"},
    {parentWindowOption, L"N", L"the window to show it over"},
};

std::vector<std::wstring> splitArguments(std::wstring_view text)
{
    std::vector<std::wstring> arguments;
    bool inQuotes = false;
    bool inArgument = false;
    for (const wchar_t c : text) {
        if (c == L'"')
            inQuotes = !inQuotes;
        const bool separates = !inQuotes && (c == L' ' || c == L'\t');
        if (!separates && !inArgument)
            arguments.emplace_back();
        inArgument = !separates;
        if (inArgument && c != L'"')
            arguments.back() += c;
    }
    return arguments;
}

const WordRow* findWord(std::wstring_view text)
{
    for (const WordRow& row : wordRows)
        if (row.text == text)
            return &row;
    return nullptr;
}

template <class Number>
bool setNumber(std::optional<Number>& field, std::wstring_view text)
{
    const auto number =
        parseNumber(text, std::numeric_limits<Number>::min(), std::numeric_limits<Number>::max());
    if (field || !number)
        return false;
    field = static_cast<Number>(*number);
    return true;
}

// The id of a commit is an unsigned number from the add-in, 4294967295 for none. Every other id
// goes into a request, whose reader parses it as signed.
bool setId(Command& command, std::wstring_view text)
{
    const bool isUnsigned = command.word == Word::commit;
    const auto number = isUnsigned ? parseNumber(text, 0, std::numeric_limits<std::uint32_t>::max())
                                   : parseNumber(text, std::numeric_limits<std::int32_t>::min(),
                                                 std::numeric_limits<std::int32_t>::max());
    if (command.id || !number)
        return false;
    command.id = number;
    return true;
}

bool setOption(Command& command, std::wstring_view name, const std::wstring& value)
{
    if (name == L"--host")
        return setNumber(command.host, value);
    if (name == parentWindowOption)
        return setNumber(command.parentWindow, value);
    if (name == L"--ncpath")
        return setNumber(command.ncPath, value);
    if (name == idOption)
        return setId(command, value);
    if (name != L"--machine" || command.machine)
        return false;
    command.machine = value;
    return true;
}

bool belongsTo(const WordRow& row, const std::wstring& option)
{
    return option.starts_with(L"--") && row.options.find(option + L" ") != std::wstring_view::npos;
}

bool parseOptions(const WordRow& row, const std::vector<std::wstring>& arguments, size_t first,
                  Command& command)
{
    for (size_t i = first; i < arguments.size(); i += 2) {
        const bool hasValue = i + 1 < arguments.size();
        if (!hasValue || !belongsTo(row, arguments[i]) ||
            !setOption(command, arguments[i], arguments[i + 1]))
            return false;
    }
    return true;
}

} // namespace

Command parseCommandLine(std::wstring_view text)
{
    Command notUnderstood{.word = Word::notUnderstood};
    const std::vector<std::wstring> arguments = splitArguments(text);
    if (arguments.empty())
        return {};
    const WordRow* row = findWord(arguments[0]);
    if (row == nullptr || (!row->value.empty() && arguments.size() < 2))
        return notUnderstood;
    Command command{.word = row->word};
    size_t firstOption = 1;
    if (!row->value.empty()) {
        command.value = arguments[1];
        firstOption = 2;
    }
    return parseOptions(*row, arguments, firstOption, command) ? command : notUnderstood;
}

std::wstring commandLineHelp()
{
    std::wstring help;
    for (const WordRow& row : wordRows) {
        help.append(L"  ").append(row.text);
        if (!row.value.empty())
            help.append(L" ").append(row.value);
        for (const OptionRow& option : optionRows)
            if (belongsTo(row, std::wstring(option.name)))
                help.append(L" [")
                    .append(option.name)
                    .append(L" ")
                    .append(option.value)
                    .append(L"]");
        help.append(L"\n      ").append(row.effect).append(L"\n");
    }
    help += L"\n";
    for (const OptionRow& option : optionRows)
        help.append(L"  ")
            .append(option.name)
            .append(L" ")
            .append(option.value)
            .append(L": ")
            .append(option.meaning)
            .append(L"\n");
    help.pop_back();
    return help;
}

std::wstring_view skipProgramName(std::wstring_view commandLine)
{
    const bool isQuoted = commandLine.starts_with(L'"');
    const size_t end = commandLine.find_first_of(isQuoted ? L"\"" : L" \t", isQuoted ? 1 : 0);
    if (end == std::wstring_view::npos)
        return {};
    const size_t arguments = commandLine.find_first_not_of(L" \t", end + (isQuoted ? 1 : 0));
    return arguments == std::wstring_view::npos ? std::wstring_view{}
                                                : commandLine.substr(arguments);
}

} // namespace peer
