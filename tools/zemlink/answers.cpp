#include "tools/zemlink/answers.h"

#include "peer/text.h"

namespace zemlink {

std::string answerText(companion::Verdict verdict, const std::string& cause)
{
    switch (verdict) {
    case companion::Verdict::taken:
        return "The host has taken the request.";
    case companion::Verdict::full:
        return cause.empty() ? "Nothing was written: an earlier request still fills the command "
                               "file, the host does not read it."
                             : "Nothing was written, the command file cannot be: " + cause;
    case companion::Verdict::missing:
        return "Nothing was written: there is no command file. The add-in is not open, works with "
               "another folder, or has stopped listening.";
    case companion::Verdict::notTaken:
        return "The host has not taken the request; it still lies in the command file and is "
               "carried out should the host go on.";
    case companion::Verdict::lost:
        return "The command file went away with the request: the host has ended.";
    case companion::Verdict::wait:
    case companion::Verdict::write:
        break;
    }
    return "It is still under way.";
}

Outcome answerOutcome(Report request, std::uint32_t host, companion::Verdict verdict,
                      const std::string& cause)
{
    const bool isTaken = verdict == companion::Verdict::taken;
    request["host"] = host;
    request["taken"] = isTaken;
    request["answer"] = answerText(verdict, cause);
    return {request, isTaken ? done : trouble};
}

std::string portTakenText(const std::string& error, const Port& port, bool isCompanionRunning)
{
    const std::string text = "port 4559 cannot be opened: " + error;
    if (port.holder) {
        const std::string program =
            port.program.empty() ? "" : " (" + companion::toUtf8(port.program) + ")";
        return text + "; process " + std::to_string(*port.holder) + program + " holds it";
    }
    return text + (isCompanionRunning ? "; the Companion runs, end it first"
                                      : "; another program seems to hold it");
}

} // namespace zemlink
