#include "tools/zemlink/verify/addin_rule_groups.h"

#include <iterator>
#include <string_view>

namespace zemlink {
namespace {

Sight judgeExports(const RequestsSeen& seen)
{
    if (!seen.missingExports)
        return notSeen("the library cannot be read");
    std::string names;
    for (const std::string& name : *seen.missingExports)
        names += (names.empty() ? "" : ", ") + name;
    return keptIf(names.empty(), "it has no export " + names);
}

Sight judgeVersion(const RequestsSeen& seen)
{
    constexpr std::string_view calls[] = {"m_version(2100) -> ", "m_version(2250) -> ",
                                          "m_version(1105) -> "};
    constexpr std::string_view results[] = {"2100", "2100", "1105"};
    for (size_t i = 0; i < std::size(calls); ++i) {
        const size_t place = seen.trace.find(calls[i]);
        if (place == HostTrace::none)
            return notSeen("the host did not trace the result of m_version");
        if (!seen.trace.lines()[place].ends_with(results[i]))
            return broken(seen.trace.lines()[place] + " and not " + std::string(results[i]));
    }
    return {};
}

Sight judgeCommandFile(const RequestsSeen& seen)
{
    if (!seen.commandFile.exists)
        return broken("after m_open there was no file temp\\mastercam-<process id>.dat");
    return keptIf(seen.commandFile.size == 0,
                  "it had " + std::to_string(seen.commandFile.size) + " bytes");
}

Sight judgeSharing(const RequestsSeen& seen)
{
    if (!seen.commandFile.exists)
        return notSeen("there was no command file");
    return keptIf(seen.sharingError == 0,
                  "opening it with all sharing modes, to read, write and delete it, gave error " +
                      std::to_string(seen.sharingError));
}

Sight judgeHostProperty(const RequestsSeen& seen)
{
    for (const HostWindow& window : seen.windows)
        if (window.property != 0)
            return keptIf(window.property == 1, "its value was " + std::to_string(window.property));
    return broken("no top-level window of the host had the property mastercam-instance");
}

Sight judgeMessageWindow(const RequestsSeen& seen)
{
    for (const HostWindow& window : seen.windows)
        if (window.hasMessageClass)
            return keptIf(!window.isVisible, "it was visible");
    return broken("no window of the host had the class mastercam-instance");
}

Sight judgeGreetingPort(const RequestsSeen& seen)
{
    if (!seen.opensGreetingPort)
        return notSeen("another program has port 20248");
    return keptIf(!*seen.opensGreetingPort, "port 20248 was open while the host was running");
}

} // namespace

std::vector<JudgedRule<RequestsSeen>> addInOpeningRules()
{
    return {
        {"start.exports", "Has the fourteen entry points.", judgeExports},
        {"start.version", "Declares the version that it supports.", judgeVersion},
        {"start.command-file", "Creates an empty command file when it is opened.",
         judgeCommandFile},
        {"start.command-file-sharing", "Keeps the command file open with all sharing modes.",
         judgeSharing},
        {"start.host-property", "Marks the host's main window with the value 1.",
         judgeHostProperty},
        {"start.message-window", "Has a hidden window of the documented class.",
         judgeMessageWindow},
        {"start.no-port", "Opens no port of its own.", judgeGreetingPort},
    };
}

} // namespace zemlink
