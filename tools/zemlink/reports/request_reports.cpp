#include "tools/zemlink/reports/request_reports.h"

#include "peer/checkout_answer.h"
#include "peer/command_file.h"
#include "peer/machine_settings.h"
#include "peer/text.h"

namespace zemlink {
namespace {

std::string answerName(peer::AnswerKind kind)
{
    switch (kind) {
    case peer::AnswerKind::file:
        return "file";
    case peer::AnswerKind::checkIn:
        return "check-in";
    case peer::AnswerKind::unusable:
        break;
    }
    return "unusable";
}

} // namespace

Outcome decodeCommand(std::string_view bytes)
{
    const peer::HostCommand text = peer::parseHostCommand(bytes);
    Report report{{"request", peer::hostCommandName(text.kind)}};
    if (text.kind == peer::HostCommandKind::open || text.kind == peer::HostCommandKind::newFile)
        report["id"] = text.id;
    if (text.kind == peer::HostCommandKind::open)
        report["path"] = peer::ansiToUtf8(text.path);
    if (text.kind == peer::HostCommandKind::checkIn)
        report["name"] = peer::ansiToUtf8(text.path);
    if (!text.remarks.empty())
        report["remarks"] = text.remarks;
    return {report, text.remarks.empty() ? done : problem};
}

Outcome decodeMachine(std::string_view bytes)
{
    const auto text = peer::parseMachineSettings(bytes);
    if (!text)
        return {Report{{"remarks", {"The file is empty: the add-in reads nothing."}}}, problem};
    Report report{{"id", peer::ansiToUtf8(text->id)},
                  {"ncPath", nullptr},
                  {"secondNumber", nullptr},
                  {"machine", peer::ansiToUtf8(text->machine)}};
    if (text->ncPath)
        report["ncPath"] = *text->ncPath;
    if (text->secondNumber)
        report["secondNumber"] = *text->secondNumber;
    if (text->hasMoreLines)
        report["remarks"].push_back("Lines follow the first; the add-in ignores them.");
    const bool isWhole = text->ncPath && text->secondNumber && !text->machine.empty();
    return {report, isWhole && !text->hasMoreLines ? done : problem};
}

Outcome decodeAnswer(std::string_view bytes)
{
    const peer::CheckoutAnswer text = peer::parseCheckoutAnswer(bytes);
    Report report{{"answer", answerName(text.kind)}};
    if (text.kind == peer::AnswerKind::file) {
        report["fileType"] = peer::toUtf8(text.fileType);
        report["id"] = text.id;
        report["path"] = peer::toUtf8(text.path);
    }
    if (!text.remarks.empty())
        report["remarks"] = text.remarks;
    return {report, text.remarks.empty() ? done : problem};
}

} // namespace zemlink
