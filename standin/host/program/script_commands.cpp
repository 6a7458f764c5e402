#include "program/script_commands.h"

#include "control.h"
#include "core/text.h"

#include <string_view>

namespace standin {

namespace {

constexpr unsigned waitForTraceMs = 10000;

// A command's argument and its error text.
struct Call {
    const std::wstring& value;
    std::wstring& error;
};

Step wrong(const Call& call, std::wstring_view reason)
{
    call.error = std::wstring(reason) + L": \"" + call.value + L'"';
    return Step::wrong;
}

Step nextIf(bool isRight, const Call& call, std::wstring_view reason)
{
    return isRight ? Step::next : wrong(call, reason);
}

template <class Integer>
std::optional<Integer> number(std::wstring_view text)
{
    Integer value{};
    if (!readInteger(toUtf8(text), value))
        return std::nullopt;
    return value;
}

// A name, optionally followed by a number.
struct NameAndNumber {
    std::string name;
    std::optional<int> number;
};

std::optional<NameAndNumber> readNameAndNumber(std::wstring_view value)
{
    const size_t space = value.find(L' ');
    NameAndNumber read{toUtf8(value.substr(0, space)), std::nullopt};
    if (space == std::wstring_view::npos || space + 1 == value.size())
        return read;
    read.number = number<int>(value.substr(space + 1));
    if (!read.number)
        return std::nullopt;
    return read;
}

Step callCommand(const Call& call)
{
    const std::optional<NameAndNumber> read = readNameAndNumber(call.value);
    return nextIf(read && callExport(read->name, read->number), call, L"no such export");
}

Step notifyCommand(const Call& call)
{
    const std::optional<int> code = number<int>(call.value);
    return nextIf(code && callExport("m_notify", code), call, L"the event cannot be sent");
}

Step setCommand(const Call& call)
{
    const size_t space = call.value.find(L' ');
    const std::wstring value =
        space == std::wstring::npos ? std::wstring() : call.value.substr(space + 1);
    return nextIf(setState(toUtf8(std::wstring_view(call.value).substr(0, space)), value), call,
                  L"no such state or value");
}

Step partCommand(const Call& call)
{
    return nextIf(putPart(call.value), call, L"not a part file");
}

template <bool (*apply)(const std::string&, int)>
Step faultCommand(const Call& call)
{
    const std::optional<NameAndNumber> read = readNameAndNumber(call.value);
    return nextIf(read && apply(read->name, read->number.value_or(1)), call, L"no such operation");
}

Step chooseCommand(const Call& call)
{
    chooseNext(call.value);
    return Step::next;
}

Step saveDialogCommand(const Call& call)
{
    saveDialogNext(call.value);
    return Step::next;
}

Step waitCommand(const Call& call)
{
    const std::optional<unsigned> milliseconds = number<unsigned>(call.value);
    if (!milliseconds)
        return wrong(call, L"not a number of milliseconds");
    pumpFor(*milliseconds);
    return Step::next;
}

// A number after the text is the timeout, unless it follows "->" and is the result in a line.
Step waitForCommand(const Call& call)
{
    std::wstring text = call.value;
    unsigned milliseconds = waitForTraceMs;
    const size_t space = text.rfind(L' ');
    if (space != std::wstring::npos && space > 0) {
        const auto time = number<unsigned>(std::wstring_view(text).substr(space + 1));
        if (time && !std::wstring_view(text).substr(0, space).ends_with(L"->")) {
            milliseconds = *time;
            text.resize(space);
        }
    }
    return waitForTrace(text, milliseconds) ? Step::next : Step::timedOut;
}

Step showCommand(const Call& call)
{
    const std::string name = toUtf8(call.value);
    const std::optional<std::wstring> value = knownState(name);
    if (!value)
        return wrong(call, L"no such state");
    trace(call.value + L" = \"" + *value + L'"');
    return Step::next;
}

Step quitCommand(const Call&)
{
    return Step::quit;
}

struct CommandEntry {
    std::wstring_view word;
    std::wstring_view values;
    std::wstring_view effect;
    Step (*run)(const Call& call);
};

constexpr CommandEntry commands[] = {
    {L"call", L"EXPORT [INT]", L"call an export of the add-in", callCommand},
    {L"notify", L"CODE", L"send the add-in this event (call m_notify)", notifyCommand},
    {L"set", L"NAME VALUE", L"set a host state", setCommand},
    {L"part", L"FILE", L"open a part without calling the add-in", partCommand},
    {L"fail", L"OPERATION [N]", L"the next N calls of the add-in's operation fail",
     faultCommand<failNext>},
    {L"raise", L"OPERATION [N]", L"the next N calls raise the framework's exception",
     faultCommand<raiseNext>},
    {L"choose", L"TEXT", L"choose this item of the next popup menu (no text: none)", chooseCommand},
    {L"save-dialog", L"PATH", L"the next Save As saves under PATH (no path: the host ends)",
     saveDialogCommand},
    {L"wait", L"MS", L"wait for that many milliseconds", waitCommand},
    {L"wait-for", L"TEXT [MS]", L"wait until a new trace line contains TEXT, at most 10000 ms",
     waitForCommand},
    {L"show", L"NAME", L"write a host state into the trace", showCommand},
    {L"quit", L"", L"close the add-in and end with exit code 0", quitCommand},
};

} // namespace

std::wstring scriptCommandHelp()
{
    constexpr size_t valuesColumn = 12;
    constexpr size_t effectColumn = valuesColumn + 16;
    std::wstring help;
    for (const CommandEntry& command : commands) {
        std::wstring line(command.word);
        line.resize(valuesColumn, L' ');
        line.append(command.values).resize(effectColumn, L' ');
        help.append(L"  ").append(line).append(command.effect).append(L"\n");
    }
    std::wstring names;
    for (const std::string& name : stateNames())
        names.append(names.empty() ? L"" : L", ").append(name.begin(), name.end());
    return help + L"\nHost states: " + names +
           L"\nA value is the rest of the line, without quotes; on and off are true and false.\n"
           L"A line that starts with # is a comment.";
}

Step runScriptCommand(const ScriptLine& line, std::wstring& error)
{
    for (const CommandEntry& command : commands)
        if (command.word == line.word)
            return command.run({line.value, error});
    error = L"no such command: \"" + line.word + L'"';
    return Step::wrong;
}

} // namespace standin
