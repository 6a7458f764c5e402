#include "peer/command_line.h"

#include "peer/numbers.h"

#include <limits>
#include <vector>

namespace peer {
namespace {

struct WordRow {
    std::wstring_view text;
    Word word;
    bool takesValue;
    std::wstring_view options; // the option names that may follow, each followed by a space
};

constexpr WordRow wordRows[] = {
    {L"--checkout", Word::checkOut, true, L""},
    {L"--commit", Word::commit, true, L"--id "},
    {L"--about", Word::about, false, L"--parentwindow "},
    {L"--send", Word::send, true, L"--host --machine --ncpath --id "},
    {L"--new-file", Word::newFile, false, L"--host --id "},
    {L"--check-in", Word::checkIn, false, L"--host "},
    {L"--quit", Word::quit, false, L""},
    {L"--register", Word::registerFolder, false, L""},
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
    if (name == L"--parentwindow")
        return setNumber(command.parentWindow, value);
    if (name == L"--ncpath")
        return setNumber(command.ncPath, value);
    if (name == L"--id")
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
    if (row == nullptr || (row->takesValue && arguments.size() < 2))
        return notUnderstood;
    Command command{.word = row->word};
    size_t firstOption = 1;
    if (row->takesValue) {
        command.value = arguments[1];
        firstOption = 2;
    }
    return parseOptions(*row, arguments, firstOption, command) ? command : notUnderstood;
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
