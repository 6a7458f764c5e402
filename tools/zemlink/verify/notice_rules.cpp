// What a Companion does with connections to port 4559.
#include "peer/exchange_paths.h"
#include "peer/files.h"
#include "peer/nc_queue_file.h"
#include "peer/notice.h"
#include "peer/text.h"
#include "tools/zemlink/verify/companion_rule_groups.h"
#include "tools/zemlink/verify/notice_connection.h"

#include <algorithm>

namespace zemlink {
namespace {

// An NC queue and its notice. Of this kind of notice the effect is seen without a log, too, if the
// Companion removes the queue file after reading it.
struct Queue {
    std::wstring file{};
    std::string notice{};
};

constexpr std::int64_t firstQueueId = ownIds + 101;

Queue newQueue(CompanionStage& stage)
{
    const std::int64_t id = firstQueueId + stage.gathered().noticeNumber++;
    Queue queue;
    queue.file = stage.folder() + peer::tempFolder + L'\\' + peer::ncQueueStart +
                 std::to_wstring(id) + peer::textEnd;
    peer::writeFile(queue.file, "");
    stage.removeLater(queue.file);
    const std::string path = peer::toAnsi(queue.file).value_or("");
    queue.notice = peer::formatNotice({peer::NoticeKind::ncQueue, 0, path});
    return queue;
}

bool hasEffect(CompanionStage& stage, const Queue& queue)
{
    return stage.log().has("nc-queue", "file", peer::toUtf8(queue.file)) ||
           !peer::isFile(queue.file);
}

bool waitForEffect(CompanionStage& stage, const Queue& queue)
{
    return stage.waiting().until([&] { return hasEffect(stage, queue); });
}

const char* noEffect = "It had no effect: the log shows no event `nc-queue` of it, and the queue "
                       "file is still there.";

Sight seeEffect(CompanionStage& stage, const Queue& queue)
{
    return keptIf(waitForEffect(stage, queue), noEffect);
}

std::optional<Sight> noNoticeYet(CompanionStage& stage)
{
    if (stage.gathered().isNoticeTaken)
        return std::nullopt;
    return notSeen("no notice has had an effect that can be seen");
}

Sight listens(CompanionStage& stage)
{
    const bool isListening = stage.waiting().until([&] {
        NoticeConnection connection;
        return connection.isOpen();
    });
    return keptIf(isListening, "No connection was accepted " + stage.boundText() + '.');
}

Sight takesLine(CompanionStage& stage)
{
    const Queue queue = newQueue(stage);
    const std::int64_t start = monotonicMs();
    sendNotice(queue.notice);
    const bool isTaken = waitForEffect(stage, queue);
    stage.gathered().isNoticeTaken = isTaken;
    if (isTaken)
        stage.noteReaction(monotonicMs() - start);
    else if (!stage.log().exists())
        return notSeen("there is no log, and the file of an NC queue stays");
    return keptIf(isTaken, noEffect);
}

// Sends so many pieces of so many bytes, each of which arrives before the next is sent, and the
// rest.
Sight takesPieces(CompanionStage& stage, size_t pieces, size_t bytes, std::int64_t pauseMs)
{
    if (auto useless = noNoticeYet(stage))
        return *useless;
    constexpr std::int64_t mostMs = 3000; // it may close a connection that takes longer
    const Queue queue = newQueue(stage);
    const std::int64_t start = monotonicMs();
    {
        const NoticeConnection connection;
        std::string_view rest = queue.notice;
        for (size_t i = 0; i < pieces; ++i, rest.remove_prefix(bytes)) {
            connection.send(rest.substr(0, bytes));
            stage.waiting().pause(pauseMs);
        }
        connection.send(rest);
    }
    const bool isInTime = monotonicMs() - start < mostMs;
    Sight sight = seeEffect(stage, queue);
    return isInTime || sight.state == RuleState::kept
               ? sight
               : notSeen("this computer was too busy to send the pieces in time");
}

Sight takesTwoPieces(CompanionStage& stage)
{
    constexpr size_t first = 20;
    return takesPieces(stage, 1, first, 60);
}

Sight takesSingleBytes(CompanionStage& stage)
{
    constexpr size_t count = 20;
    return takesPieces(stage, count, 1, 1);
}

Sight takesSeveralConnections(CompanionStage& stage)
{
    if (auto useless = noNoticeYet(stage))
        return *useless;
    constexpr size_t count = 5;
    std::vector<Queue> queues;
    {
        std::vector<NoticeConnection> connections(count);
        for (const NoticeConnection& connection : connections) {
            queues.push_back(newQueue(stage));
            connection.send(queues.back().notice);
        }
    }
    const auto taken = [&](const Queue& queue) { return hasEffect(stage, queue); };
    const bool areAllTaken =
        stage.waiting().until([&] { return std::ranges::all_of(queues, taken); });
    return keptIf(areAllTaken, "Of " + std::to_string(count) + " at the same time, " +
                                   std::to_string(std::ranges::count_if(queues, taken)) +
                                   " had an effect.");
}

Sight servesOthers(CompanionStage& stage)
{
    if (auto useless = noNoticeYet(stage))
        return *useless;
    constexpr std::int64_t boundMs = 3000; // it may end the connection that is left open later
    const NoticeConnection leftOpen;
    leftOpen.send("IMPORT");
    const Queue queue = newQueue(stage);
    sendNotice(queue.notice);
    const bool isTaken = stage.waiting().until([&] { return hasEffect(stage, queue); }, boundMs);
    return keptIf(isTaken, "A notice had no effect within three seconds while another connection "
                           "was open on which nothing came.");
}

// What is sent has no effect; a notice after it must have one.
template <class Send>
Sight survives(CompanionStage& stage, const Send& send)
{
    if (auto useless = noNoticeYet(stage))
        return *useless;
    send();
    const Queue queue = newQueue(stage);
    sendNotice(queue.notice);
    return keptIf(waitForEffect(stage, queue), "The next notice had no effect.");
}

Sight survivesEmptyConnection(CompanionStage& stage)
{
    return survives(
        stage,
        [] {
            NoticeConnection().close();
            NoticeConnection().reset();
        });
}

Sight survivesMissingLineFeed(CompanionStage& stage)
{
    return survives(
        stage,
        [] {
            sendNotice("ZEMID=17|C:\\no line feed");
            sendNotice("T");
        });
}

Sight survivesTooLong(CompanionStage& stage)
{
    return survives(
        stage,
        [] {
            const std::string start = "ZEMID=17|C:\\";
            for (const size_t bytes : {size_t{1024}, size_t{1500}, size_t{20000}})
                sendNotice(start + std::string(bytes - start.size() - 1, 'a') + '\n');
            sendNotice(start + std::string(3000, 'a')); // and no line feed
        });
}

Sight survivesTwoLines(CompanionStage& stage)
{
    return survives(
        stage,
        [&] {
            sendNotice(newQueue(stage).notice + newQueue(stage).notice);
            sendNotice("\n\n");
        });
}

Sight survivesUnknown(CompanionStage& stage)
{
    return survives(
        stage,
        [] {
            sendNotice("HELLO\n");
            sendNotice("ZEMID=|\n");
            sendNotice("TOOL-none\n");
            sendNotice(std::string("\0\xFF\x80%s%n\x1B[\n", 10));
        });
}

// Of the other kinds only the log can show an effect.
Sight takesKind(CompanionStage& stage, const peer::Notice& notice, std::string_view event)
{
    if (auto useless = noNoticeYet(stage))
        return *useless;
    sendNotice(peer::formatNotice(notice));
    const std::string id = std::to_string(notice.id);
    const bool isTaken = stage.waiting().until([&] { return stage.log().has(event, "id", id); });
    return keptIf(isTaken, "The log shows no event `" + std::string(event) + "` with id " + id +
                               ' ' + stage.boundText() + '.');
}

Sight takesCommitNotice(CompanionStage& stage)
{
    return takesKind(stage, {peer::NoticeKind::commit, firstQueueId, "C:\\none.mcam"},
                     "commit-notice");
}

Sight takesSetupSheet(CompanionStage& stage)
{
    const std::wstring file = stage.folder() + L"\\tmp\\zemlink-verify-sheet.xml";
    peer::writeFile(file, "<sheet/>\n");
    stage.removeLater(file);
    return takesKind(stage,
                     {peer::NoticeKind::setupSheet, firstQueueId, peer::toAnsi(file).value_or("")},
                     "setup-sheet");
}

Sight takesToolData(CompanionStage& stage)
{
    return takesKind(stage, {peer::NoticeKind::toolData, firstQueueId, ""}, "tool-data");
}

} // namespace

CheckedRules noticeRules()
{
    return {
        {{"notices.port", "Listens on port 4559 of the computer's first address."},
         Needs::instance,
         listens},
        {{"notices.line", "Takes the notice of an NC queue."}, Needs::instance, takesLine},
        {{"notices.pieces", "Takes a notice that arrives in two pieces."},
         Needs::instance,
         takesTwoPieces},
        {{"notices.bytes", "Takes a notice of which twenty bytes arrive one by one."},
         Needs::instance,
         takesSingleBytes},
        {{"notices.several", "Takes notices on five connections at the same time."},
         Needs::instance,
         takesSeveralConnections},
        {{"notices.left-open", "Takes a notice while another connection is left open."},
         Needs::instance,
         servesOthers},
        {{"notices.empty", "Takes a notice after connections without a byte."},
         Needs::instance,
         survivesEmptyConnection},
        {{"notices.no-line-feed", "Takes a notice after one without a line feed."},
         Needs::instance,
         survivesMissingLineFeed},
        {{"notices.too-long", "Takes a notice after some of 1,024 bytes and more."},
         Needs::instance,
         survivesTooLong},
        {{"notices.two-lines", "Takes a notice after a connection with two lines."},
         Needs::instance,
         survivesTwoLines},
        {{"notices.unknown", "Takes a notice after others that no add-in sends."},
         Needs::instance,
         survivesUnknown},
        {{"notices.commit", "Takes the notice of a commit."}, Needs::log, takesCommitNotice},
        {{"notices.setup-sheet", "Takes the notice of a setup sheet."},
         Needs::log,
         takesSetupSheet},
        {{"notices.tool-data", "Takes the notice of tool data."}, Needs::log, takesToolData},
    };
}

} // namespace zemlink
