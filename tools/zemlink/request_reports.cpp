#include "tools/zemlink/request_reports.h"

#include "peer/text.h"
#include "peer/ansi_text.h"
#include "peer/checkout_answer.h"
#include "peer/command_text.h"
#include "peer/machine_settings.h"

namespace zemlink {
namespace {

std::string answerName(AnswerKind kind)
{
    switch (kind) {
    case AnswerKind::file:
        return "file";
    case AnswerKind::checkIn:
        return "check-in";
    case AnswerKind::unusable:
        break;
    }
    return "unusable";
}

} // namespace

Outcome decodeCommand(std::string_view bytes)
{
    const CommandText text = readCommandText(bytes);
    Report report{{"request", requestName(text.kind)}};
    if (text.kind == RequestKind::open || text.kind == RequestKind::newFile)
        report["id"] = text.id;
    if (text.kind == RequestKind::open)
        report["path"] = ansiToUtf8(text.path);
    if (text.kind == RequestKind::checkIn)
        report["name"] = ansiToUtf8(text.path);
    if (!text.remarks.empty())
        report["remarks"] = text.remarks;
    return {report, text.remarks.empty() ? done : trouble};
}

Outcome decodeMachine(std::string_view bytes)
{
    const auto text = readMachineText(bytes);
    if (!text)
        return {Report{{"remarks", {"The file is empty: nothing is read from it."}}}, trouble};
    Report report{{"id", ansiToUtf8(text->id)},
                  {"ncPath", nullptr},
                  {"secondNumber", nullptr},
                  {"machine", ansiToUtf8(text->machine)}};
    if (text->ncPath)
        report["ncPath"] = *text->ncPath;
    if (text->secondNumber)
        report["secondNumber"] = *text->secondNumber;
    if (text->hasMore)
        report["remarks"].push_back("Lines follow the first; nobody reads them.");
    const bool isWhole = text->ncPath && text->secondNumber && !text->machine.empty();
    return {report, isWhole && !text->hasMore ? done : trouble};
}

Outcome decodeAnswer(std::string_view bytes)
{
    const AnswerText text = readAnswerText(bytes);
    Report report{{"answer", answerName(text.kind)}};
    if (text.kind == AnswerKind::file) {
        report["fileType"] = companion::toUtf8(text.fileType);
        report["id"] = text.id;
        report["path"] = companion::toUtf8(text.path);
    }
    if (!text.remarks.empty())
        report["remarks"] = text.remarks;
    return {report, text.remarks.empty() ? done : trouble};
}

} // namespace zemlink
