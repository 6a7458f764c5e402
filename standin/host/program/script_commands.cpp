#include "program/script_commands.h"

#include "control.h"
#include "core/text.h"

#include <string_view>

namespace standin {

namespace {

constexpr unsigned waitForTraceMs = 10000;

// What a command works on and where it says what is wrong.
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

// A name with an optional number behind it.
struct NameAndNumber {
    std::string name;
    std::optional<int> number;
};

std::optional<NameAndNumber> readNameAndNumber(std::wstring_view value)
{
    const size_t blank = value.find(L' ');
    NameAndNumber read{toUtf8(value.substr(0, blank)), std::nullopt};
    if (blank == std::wstring_view::npos || blank + 1 == value.size())
        return read;
    read.number = number<int>(value.substr(blank + 1));
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
    return nextIf(code && callExport("m_notify", code), call, L"no event can be sent");
}

Step setCommand(const Call& call)
{
    const size_t blank = call.value.find(L' ');
    const std::wstring value =
        blank == std::wstring::npos ? std::wstring() : call.value.substr(blank + 1);
    return nextIf(setState(toUtf8(std::wstring_view(call.value).substr(0, blank)), value), call,
                  L"no such state or value");
}

Step partCommand(const Call& call)
{
    return nextIf(putPart(call.value), call, L"no part file");
}

template <bool (*tell)(const std::string&, int)>
Step faultCommand(const Call& call)
{
    const std::optional<NameAndNumber> read = readNameAndNumber(call.value);
    return nextIf(read && tell(read->name, read->number.value_or(1)), call, L"no such operation");
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
        return wrong(call, L"no time");
    pumpFor(*milliseconds);
    return Step::next;
}

// A number behind the text is the time to wait, unless it is the result that a line ends in.
Step waitForCommand(const Call& call)
{
    std::wstring text = call.value;
    unsigned milliseconds = waitForTraceMs;
    const size_t blank = text.rfind(L' ');
    if (blank != std::wstring::npos && blank > 0) {
        const auto time = number<unsigned>(std::wstring_view(text).substr(blank + 1));
        if (time && !std::wstring_view(text).substr(0, blank).ends_with(L"->")) {
            milliseconds = *time;
            text.resize(blank);
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
    Step (*run)(const Call& call);
};

constexpr CommandEntry commands[] = {
    {L"call", callCommand},
    {L"notify", notifyCommand},
    {L"set", setCommand},
    {L"part", partCommand},
    {L"fail", faultCommand<failNext>},
    {L"raise", faultCommand<raiseNext>},
    {L"choose", chooseCommand},
    {L"save-dialog", saveDialogCommand},
    {L"wait", waitCommand},
    {L"wait-for", waitForCommand},
    {L"show", showCommand},
    {L"quit", quitCommand},
};

} // namespace

Step runScriptCommand(const ScriptLine& line, std::wstring& error)
{
    for (const CommandEntry& command : commands)
        if (command.word == line.word)
            return command.run({line.value, error});
    error = L"no such command: \"" + line.word + L'"';
    return Step::wrong;
}

} // namespace standin
