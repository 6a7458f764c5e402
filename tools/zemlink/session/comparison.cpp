#include "tools/zemlink/session/comparison.h"

#include "peer/bitmap_file.h"
#include "peer/exchange_paths.h"
#include "peer/text.h"
#include "peer/wire_constants.h"
#include "tools/zemlink/session/event_report.h"

#include <algorithm>

namespace zemlink {
namespace {

constexpr std::int64_t togetherMs = 250;
constexpr size_t addressDigits = 16;

// ---- What is compared ---------------------------------------------------------------------------

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

// Replaces the number after each occurrence of the word by `*`.
std::string withoutNumberAfter(const std::string& text, std::string_view word)
{
    std::string changed;
    size_t done = 0;
    for (size_t at = text.find(word); at != text.npos; at = text.find(word, done)) {
        changed.append(text, done, at + word.size() - done) += '*';
        done = std::min(text.find_first_not_of("0123456789", at + word.size()), text.size());
    }
    return changed.append(text, done);
}

std::string withoutRunNumbers(std::string text)
{
    for (const std::wstring_view start :
         {peer::commandFileStart, peer::commitFileStart, peer::ncQueueStart})
        text = withoutNumberAfter(text, peer::toUtf8(start));
    return text;
}

bool isAddressDigit(char c)
{
    return isDigit(c) || (c >= 'A' && c <= 'F');
}

// Of a tool record `…|TPNAME=000002A1F3C05E40|…`, everything but the addresses.
std::string withoutAddresses(std::string text)
{
    for (size_t at = text.find('='); at != text.npos; at = text.find('=', at + 1)) {
        const auto start = text.begin() + static_cast<std::ptrdiff_t>(at) + 1;
        const auto end = std::find_if_not(start, text.end(), isAddressDigit);
        if (end - start == addressDigits)
            std::fill(start, end, '0');
    }
    return text;
}

std::string screenText(const std::string& bytes)
{
    const auto form = peer::findBitmapForm(bytes);
    return form ? std::to_string(form->width) + " x " + std::to_string(form->height) + " x " +
                      std::to_string(form->bits)
                : bytes;
}

bool isScreenPicture(const ExchangeEvent& event)
{
    return event.kind == EventKind::pictureWritten &&
           peer::fileNameOf(event.file).starts_with(peer::screenPictureName);
}

// ---- Matching -----------------------------------------------------------------------------------

struct Compared {
    const ExchangeEvent* event;
    std::string text;
    const ExchangeEvent* match = nullptr;
};

std::vector<Compared> comparedOf(const std::vector<ExchangeEvent>& events)
{
    std::vector<Compared> compared;
    for (const ExchangeEvent& event : events)
        if (isCompared(event.kind))
            compared.push_back({&event, comparableText(event)});
    return compared;
}

// Pairs each with the first free one on the other side for which `isSame` holds.
template <class IsSame>
void match(std::vector<Compared>& recorded, std::vector<Compared>& seen, const IsSame& isSame)
{
    for (Compared& left : recorded) {
        const auto right = std::find_if(seen.begin(), seen.end(), [&](const Compared& each) {
            return !left.match && !each.match && left.event->kind == each.event->kind &&
                   isSame(left, each);
        });
        if (right == seen.end())
            continue;
        left.match = right->event;
        right->match = left.event;
    }
}

// The recorded one that should have come before this one but came after it.
const Compared* findOvertaken(const std::vector<Compared>& recorded, const Compared& later)
{
    const auto found = std::find_if(recorded.begin(), recorded.end(), [&](const Compared& earlier) {
        return earlier.match && later.event->at - earlier.event->at >= togetherMs &&
               later.match->at < earlier.match->at;
    });
    return found == recorded.end() ? nullptr : &*found;
}

const char* differenceWord(DifferenceKind kind)
{
    switch (kind) {
    case DifferenceKind::missing:
        return "missing";
    case DifferenceKind::extra:
        return "extra";
    case DifferenceKind::bytes:
        return "bytes";
    case DifferenceKind::order:
        break;
    }
    return "order";
}

} // namespace

bool isCompared(EventKind kind)
{
    return sideOf(kind) == Side::host && kind != EventKind::hostStarted &&
           kind != EventKind::hostEnded;
}

std::string comparableText(const ExchangeEvent& event)
{
    const std::string name = withoutRunNumbers(peer::toUtf8(peer::fileNameOf(event.file)));
    if (isScreenPicture(event))
        return name + '\n' + screenText(event.bytes);
    if (event.kind == EventKind::toolDataWritten)
        return name + '\n' + withoutAddresses(event.bytes);
    if (event.kind == EventKind::notice)
        return name + '\n' + withoutRunNumbers(event.bytes);
    return name + '\n' + event.bytes;
}

std::vector<Difference> compareExchanges(const std::vector<ExchangeEvent>& recorded,
                                         const std::vector<ExchangeEvent>& seen)
{
    std::vector<Compared> left = comparedOf(recorded), right = comparedOf(seen);
    match(
        left, right, [](const Compared& a, const Compared& b) { return a.text == b.text; });
    match(left, right, [](const Compared&, const Compared&) { return true; });
    std::vector<Difference> differences;
    for (const Compared& each : left) {
        if (!each.match) {
            differences.push_back({DifferenceKind::missing, *each.event});
            continue;
        }
        if (each.text != comparableText(*each.match))
            differences.push_back({DifferenceKind::bytes, *each.event, *each.match});
        if (const Compared* overtaken = findOvertaken(left, each))
            differences.push_back({DifferenceKind::order, *overtaken->event, *each.match});
    }
    for (const Compared& each : right)
        if (!each.match)
            differences.push_back({DifferenceKind::extra, std::nullopt, *each.event});
    return differences;
}

Report differenceReport(const Difference& difference)
{
    Report report{{"difference", differenceWord(difference.kind)}};
    if (difference.recorded)
        report["recorded"] = exchangeEventReport(*difference.recorded);
    if (difference.seen)
        report["seen"] = exchangeEventReport(*difference.seen);
    return report;
}

} // namespace zemlink
