#include "standin/companion/log/status_text.h"

#include "peer/text.h"

namespace companion {
namespace {

struct SentenceRow {
    std::string_view event;
    // A field's value replaces its name in braces.
    std::wstring_view sentence;
};

constexpr SentenceRow sentenceRows[] = {
    {"started", L"Ready."},
    {"not-understood", L"Not understood: {text}"},
    {"host-found", L"Mastercam {host} has started."},
    {"host-gone", L"Mastercam {host} has ended."},
    {"sent", L"Sent {file} to Mastercam {host}; waiting until it is taken."},
    {"new-file", L"Sent a new-file request to Mastercam {host}; waiting until it is taken."},
    {"check-in", L"Sent a check-in to Mastercam {host}; waiting until it is taken."},
    {"taken", L"Mastercam {host} took the {request} request after {after}."},
    {"not-taken", L"Not taken: after {after} the {request} request is still in the command file of "
                  L"Mastercam {host}."},
    {"lost", L"Lost: the command file of Mastercam {host} disappeared with the {request} request."},
    {"not-sent", L"Not sent to Mastercam {host}: {reason}."},
    {"refused", L"Refused: {reason}."},
    {"check-out", L"The add-in asked for a file: {file}"},
    {"commit", L"Received a commit of {file}."},
    {"new-part", L"New part: {name}."},
    {"version", L"Committed: {name} is now version {version}."},
    {"commit-known", L"Committed earlier: {name} is version {version}."},
    {"commit-failed", L"Not committed: {reason}: {file}"},
    {"commit-waits", L"The commit of {file} waits: {reason}."},
    {"commit-skipped",
     L"{bytes} bytes of {from} are not a commit record; they are kept in {file}."},
    {"kept", L"The changed file was moved to {file}."},
    {"setup-sheet", L"Received the setup sheet {file}."},
    {"setup-sheet-unreadable", L"The setup sheet cannot be read: {file}"},
    {"tool-data", L"Received the tool data of request {id}."},
    {"tool-record-bad", L"Line {line} of the tool data is not a tool record."},
    {"tool-data-unreadable", L"The tool data cannot be read: {file}"},
    {"nc-queue", L"Received the NC queue {file}."},
    {"nc-queue-unreadable", L"The NC queue cannot be read: {file}"},
    {"port-taken", L"Notices cannot be received: port {port} cannot be opened (error {error})."},
    {"port-open", L"Notices are received on port {port}."},
};

// "34.0ms" as "34.0 ms".
std::wstring readable(std::wstring value)
{
    const size_t unit = value.find_first_not_of(L"0123456789.");
    if (unit != 0 && unit != value.npos && value.substr(unit) == L"ms")
        value.insert(unit, L" ");
    return value;
}

std::wstring valueOf(const peer::CompanionEvent& event, const std::string& name)
{
    for (const peer::EventField& field : event.fields)
        if (field.name == name)
            return readable(peer::fromUtf8(field.value));
    return {};
}

std::wstring fill(std::wstring_view sentence, const peer::CompanionEvent& event)
{
    std::wstring text;
    for (size_t open = sentence.find(L'{'); open != sentence.npos; open = sentence.find(L'{')) {
        const size_t close = sentence.find(L'}', open);
        text += sentence.substr(0, open);
        text += valueOf(event, peer::toUtf8(sentence.substr(open + 1, close - open - 1)));
        sentence.remove_prefix(close + 1);
    }
    return text.append(sentence);
}

} // namespace

std::wstring statusText(const peer::CompanionEvent& event)
{
    for (const SentenceRow& row : sentenceRows)
        if (row.event == event.name)
            return fill(row.sentence, event);
    return {};
}

} // namespace companion
