#include "tools/zemlink/verify/addin_commit_evidence.h"

#include "peer/commit_record.h"
#include "peer/text.h"
#include "peer/wire_constants.h"
#include "tools/zemlink/reports/report.h"

#include <algorithm>

namespace zemlink {
namespace {

std::string noticesText(const CommitsSeen& seen)
{
    std::string text;
    for (const ReceivedNotice& notice : seen.notices)
        text += (text.empty() ? "" : ", ") + ('"' + visible(notice.bytes.substr(0, 100)) + '"');
    return text.empty() ? "no notices" : text;
}

} // namespace

bool hasReached(const CommitsSeen& seen, CommitStep step)
{
    return seen.reached >= step;
}

std::string addedIn(const CommitsSeen& seen, CommitStep step)
{
    const auto growth = seen.growth.find(step);
    return growth == seen.growth.end() ? std::string() : growth->second.added();
}

std::string asInRecord(const std::string& name)
{
    constexpr size_t headBytes = 8;
    return peer::formatCommitRecord({0, peer::fromUtf8(name)}).substr(headBytes);
}

size_t countNotices(const CommitsSeen& seen, std::string_view start)
{
    const auto begins = [&](const ReceivedNotice& notice) {
        return std::string_view(notice.bytes).starts_with(start);
    };
    return static_cast<size_t>(std::count_if(seen.notices.begin(), seen.notices.end(), begins));
}

Sight judgeNotice(const CommitsSeen& seen, CommitStep step, const std::string& start,
                  const std::string& rest)
{
    if (!hasReached(seen, step))
        return notSeen(seen.cut);
    for (const ReceivedNotice& notice : seen.notices)
        if (notice.bytes.starts_with(start))
            return keptIf(notice.bytes == start + rest, '"' + visible(notice.bytes) +
                                                            "\" arrived and not \"" +
                                                            visible(start + rest) + '"');
    return broken("none arrived that begins with " + start + "; there were: " + noticesText(seen));
}

std::string commitNoticeStart(CommitStep step)
{
    return std::string(peer::commitNotice) + std::to_string(idOf(step)) + '|';
}
std::string sheetNoticeStart(CommitStep step)
{
    return std::string(peer::setupSheetNotice) + std::to_string(idOf(step)) + ';';
}

bool isCommittedAs(const CommitsSeen& seen, CommitStep step, const std::string& name)
{
    return addedIn(seen, step).find(asInRecord(name)) != std::string::npos ||
           countNotices(seen, commitNoticeStart(step) + name) != 0;
}

Sight judgeMessage(const CommitsSeen& seen, CommitStep step, const std::string& part,
                   std::string_view text)
{
    if (!hasReached(seen, step))
        return notSeen(seen.cut);
    const size_t from = seen.trace.find(callOf("DoFileOpen", part));
    const std::string box = "message-box(\"TORVA ZEM\", \"" + std::string(text) + "\")";
    return keptIf(from != HostTrace::none && seen.trace.find(box, from) != HostTrace::none,
                  "no message box \"" + std::string(text) + "\" was shown");
}

} // namespace zemlink
