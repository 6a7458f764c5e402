#include "tools/zemlink/verify/addin_rule_groups.h"

#include "peer/nc_queue_file.h"
#include "peer/wire_constants.h"
#include "tools/zemlink/reports/report.h"
#include "tools/zemlink/verify/addin_commit_evidence.h"

#include <algorithm>
#include <string_view>

namespace zemlink {
namespace {

Sight judgeConnections(const CommitsSeen& seen)
{
    if (seen.notices.empty())
        return notSeen(seen.cut.empty() ? "no notice arrived" : seen.cut);
    for (const ReceivedNotice& notice : seen.notices) {
        if (notice.isLate)
            return broken("a connection was left open");
        if (std::count(notice.bytes.begin(), notice.bytes.end(), '\n') > 1)
            return broken("one connection brought \"" + visible(notice.bytes) + '"');
    }
    return {};
}

Sight judgeSheetNotice(const CommitsSeen& seen)
{
    return judgeNotice(seen, CommitStep::sheets, sheetNoticeStart(CommitStep::sheets),
                       "C:\\sheets\\first.xml\n");
}

Sight judgeMenuNotice(const CommitsSeen& seen)
{
    return judgeNotice(seen, CommitStep::sheets,
                       sheetNoticeStart(CommitStep::sheets) + "C:\\sheets\\menu", ".xml\n");
}

Sight judgeNoSheet(const CommitsSeen& seen)
{
    if (!hasReached(seen, CommitStep::sheets))
        return notSeen(seen.cut);
    const std::string start = sheetNoticeStart(CommitStep::sheets);
    for (const ReceivedNotice& notice : seen.notices)
        if (notice.bytes == start + '\n' || notice.bytes == start)
            return broken('"' + visible(notice.bytes) + "\" was sent");
    return {};
}

Sight judgeTooLongNotice(const CommitsSeen& seen)
{
    if (!hasReached(seen, CommitStep::sheets))
        return notSeen(seen.cut);
    const std::string start = sheetNoticeStart(CommitStep::sheets) + "C:\\x"; // of its path
    const auto isTooLong = [&](const ReceivedNotice& notice) {
        return notice.bytes.size() > peer::longestNoticeBytes || notice.bytes.starts_with(start);
    };
    return keptIf(std::none_of(seen.notices.begin(), seen.notices.end(), isTooLong),
                  "one of 1,024 bytes or more was sent, or a part of it");
}

constexpr std::string_view menuRows =
    R"(menu(!"TORVA ZEM", -, "Open TORVA ZEM", "Website", "About", "Tools", "Import NC-Files")";

Sight judgeMenu(const CommitsSeen& seen)
{
    const size_t shown = seen.trace.find("menu(");
    if (shown == HostTrace::none)
        return notSeen(seen.cut.empty() ? "the host did not trace the menu" : seen.cut);
    const std::string& line = seen.trace.lines()[shown];
    return keptIf(line.find(menuRows) != std::string::npos, "it was " + line);
}

Sight judgeRecentFiles(const CommitsSeen& seen)
{
    const size_t shown = seen.trace.find("menu(");
    if (shown == HostTrace::none)
        return notSeen(seen.cut.empty() ? "the host did not trace the menu" : seen.cut);
    const std::string& line = seen.trace.lines()[shown];
    const std::string rows = ", -, \"" + seen.parts.sheets + "\", \"" + seen.parts.second +
                             "\", \"" + seen.parts.first + "\")";
    return keptIf(line.ends_with(rows), "it was " + line);
}

// ---- the NC queue ------------------------------------------------------------------------------

// Why nothing can be said about the queue of this step; empty: it can.
std::string causeForNoQueue(const CommitsSeen& seen, CommitStep step, const std::string& part)
{
    if (!hasReached(seen, step))
        return seen.cut;
    const size_t opened = seen.trace.find(callOf("DoFileOpen", part));
    const bool isOpen =
        opened != HostTrace::none && seen.trace.lines()[opened].ends_with("-> true");
    return isOpen ? "" : "the host did not open a part with operations";
}

std::string queueFile(const CommitsSeen& seen, CommitStep step)
{
    return seen.folder + "\\temp\\ncqueue-" + std::to_string(idOf(step)) + ".txt";
}

bool hasTextLineEnds(std::string_view bytes)
{
    for (size_t i = 0; i < bytes.size(); ++i)
        if (bytes[i] == '\n' && (i == 0 || bytes[i - 1] != '\r'))
            return false;
    return bytes.ends_with("\r\n");
}

// Two programs, sorted, under the name of their top group.
bool arePrograms(const CommitsSeen& seen, const peer::QueueLines& lines)
{
    const std::string start = seen.folder + "\\nc\\PLATE-";
    const auto is = [&](const std::optional<peer::QueueEntry>& line, const char* rest) {
        return line && line->program == start + rest && line->group == "Mill 3-axis";
    };
    return lines.size() == 2 && is(lines[0], "1.NC") && is(lines[1], "2.NC");
}

Sight judgeQueueFile(const CommitsSeen& seen)
{
    const std::string cause = causeForNoQueue(seen, CommitStep::queue, seen.parts.queue);
    if (!cause.empty())
        return notSeen(cause);
    if (!seen.queue)
        return broken("there was no file " + queueFile(seen, CommitStep::queue));
    return keptIf(arePrograms(seen, peer::parseNcQueue(*seen.queue)) &&
                      hasTextLineEnds(*seen.queue),
                  "its content was \"" + visible(*seen.queue) + '"');
}

Sight judgePathNumbers(const std::string& cause, const std::optional<std::string>& queue,
                       std::int32_t expected)
{
    if (!cause.empty())
        return notSeen(cause);
    const peer::QueueLines lines = peer::parseNcQueue(queue.value_or(""));
    if (lines.empty())
        return notSeen("the queue file had no lines");
    for (const std::optional<peer::QueueEntry>& line : lines)
        if (!line)
            return notSeen("the queue file had a line without a number");
        else if (line->pathNumber != expected)
            return broken("it was " + std::to_string(line->pathNumber) + " and not " +
                          std::to_string(expected));
    return {};
}

Sight judgePathNumber(const CommitsSeen& seen)
{
    constexpr std::int32_t ofMachineSettings = 3;
    return judgePathNumbers(causeForNoQueue(seen, CommitStep::queue, seen.parts.queue), seen.queue,
                            ofMachineSettings);
}

Sight judgeNoPathNumber(const CommitsSeen& seen)
{
    constexpr std::int32_t none = -1;
    return judgePathNumbers(
        causeForNoQueue(seen, CommitStep::queueWithoutSettings, seen.parts.queueWithoutSettings),
        seen.queueWithoutSettings, none);
}

Sight judgeQueueNotice(const CommitsSeen& seen)
{
    const std::string cause = causeForNoQueue(seen, CommitStep::queue, seen.parts.queue);
    if (!cause.empty())
        return notSeen(cause);
    return judgeNotice(seen, CommitStep::queue,
                       std::string(peer::ncQueueNotice) + queueFile(seen, CommitStep::queue), "\n");
}

Sight judgeNoQueue(const CommitsSeen& seen)
{
    if (!hasReached(seen, CommitStep::sheets))
        return notSeen(seen.cut);
    const std::string notice =
        std::string(peer::ncQueueNotice) + queueFile(seen, CommitStep::sheets);
    if (countNotices(seen, notice) != 0)
        return broken("a notice was sent");
    return keptIf(!seen.hasEmptyQueue, "a file was written");
}

} // namespace

std::vector<JudgedRule<CommitsSeen>> addInNoticeRules()
{
    return {
        {"notices.connection", "Sends each notice over a connection of its own and closes it.",
         judgeConnections},
        {"notices.setup-sheet", "Sends the path of the first setup sheet.", judgeSheetNotice},
        {"notices.no-sheet", "Sends nothing without a setup sheet.", judgeNoSheet},
        {"notices.length", "Sends no notice of 1,024 bytes or more, nor a part of it.",
         judgeTooLongNotice},
        {"menu.rows", "Shows its seven rows in the menu.", judgeMenu},
        {"menu.recent-files", "Shows the files of open requests in the menu, newest first.",
         judgeRecentFiles},
        {"menu.tools", "Sends the setup sheet from the menu.", judgeMenuNotice},
        {"queue.file", "Writes the NC programs that exist, once each and in order.",
         judgeQueueFile},
        {"queue.path-number", "Writes the NC-path number of the machine settings.",
         judgePathNumber},
        {"queue.no-path-number", "Writes -1 without machine settings.", judgeNoPathNumber},
        {"queue.notice", "Sends the notice IMPORTNCQUEUE with the path of the file.",
         judgeQueueNotice},
        {"queue.nothing", "Writes and sends nothing for a part without operations.", judgeNoQueue},
    };
}

} // namespace zemlink
