// Events as reports and texts, their order, and the events in the Companion's log.
#include "documents/pages.h"
#include "peer/commit_record.h"
#include "tools/zemlink/session/event_order.h"
#include "tools/zemlink/session/event_report.h"
#include "tools/zemlink/session/local_time.h"
#include "tools/zemlink/session/log_events.h"
#include "tools/zemlink/session/sent_requests.h"

#include <gtest/gtest.h>

using namespace zemlink;

namespace {

using Words = std::vector<std::string>;

ExchangeEvent event(EventKind kind, std::uint32_t process, const std::string& bytes = "",
                    const std::wstring& file = L"")
{
    return {0, kind, process, file, bytes};
}

std::string textOf(EventKind kind, std::uint32_t process, const std::string& bytes = "",
                   const std::wstring& file = L"")
{
    return exchangeEventText(event(kind, process, bytes, file));
}

const std::string openRequest = "\xEF\xBB\xBF"
                                "17 C:\\ZEM\\a b.mcam\n";
const std::string oneCommit = peer::formatCommitRecord({17, L"C:\\a.mcam"});

ExchangeEvent step(char number, std::int64_t at)
{
    return {at, EventKind::loadStep, 0, L"", std::string("Loading File #") + number + ": a\r\n"};
}

// The words of the events in their order, with the number of a step.
Words inOrder(std::vector<ExchangeEvent> events, std::int64_t least = 0, std::int64_t most = 1000)
{
    putInOrder(events, least, most);
    Words words;
    for (const ExchangeEvent& each : events)
        words.push_back(std::string(eventWord(each.kind)) +
                        (each.kind == EventKind::loadStep ? each.bytes.substr(14, 1) : ""));
    return words;
}

Words timesAndTexts(const std::vector<ExchangeEvent>& events)
{
    Words texts;
    for (const ExchangeEvent& each : events)
        texts.push_back(std::to_string(each.at) + ' ' + std::string(eventWord(each.kind)) + ' ' +
                        each.bytes);
    return texts;
}

} // namespace

TEST(EventWord, namesOneKind)
{
    for (int i = 0; i <= static_cast<int>(EventKind::notice); ++i) {
        const auto kind = static_cast<EventKind>(i);
        EXPECT_EQ(eventOfWord(eventWord(kind)), kind);
    }
    EXPECT_EQ(eventWord(EventKind::requestWritten), "request-written");
    EXPECT_EQ(eventOfWord("request"), std::nullopt);
    EXPECT_EQ(sideOf(EventKind::requestWritten), Side::companion);
    EXPECT_EQ(sideOf(EventKind::requestTaken), Side::host);
}

TEST(EventText, namesTheProgramAndItsAction)
{
    EXPECT_EQ(textOf(EventKind::companionStarted, 328), "Companion 328             started");
    EXPECT_EQ(textOf(EventKind::hostEnded, 0), "host                      ended");
    EXPECT_EQ(textOf(EventKind::requestWritten, 4711, openRequest),
              "host 4711 <- Companion    request: open id 17 C:\\ZEM\\a b.mcam");
    EXPECT_EQ(textOf(EventKind::requestTaken, 4711, "CHECKIN a.mcam"),
              "host 4711                 request taken: check-in a.mcam");
    EXPECT_EQ(textOf(EventKind::requestTaken, 4711),
              "host 4711                 request taken: its content is not known");
    EXPECT_EQ(textOf(EventKind::requestWritten, 4711, "hello")
                  .find("host 4711 <- Companion    request: malformed ("),
              0u);
    EXPECT_EQ(textOf(EventKind::machineSettingsWritten, 4711, "17|3|0|C:\\Mill.mcam-mmd\r\n"),
              "host 4711 <- Companion    machine settings: id 17 nc path 3 second number 0 machine "
              "C:\\Mill.mcam-mmd");
    EXPECT_EQ(textOf(EventKind::commitWritten, 328, oneCommit),
              "host -> Companion 328     commit: id 17 C:\\a.mcam");
    EXPECT_EQ(textOf(EventKind::commitTaken, 328, oneCommit),
              "Companion 328             commit taken: id 17 C:\\a.mcam");
    EXPECT_EQ(textOf(EventKind::notice, 0, "ZEMID=4294967295|C:\\a.mcam\n"),
              "host -> Companion         notice: commit no id C:\\a.mcam");
    EXPECT_EQ(textOf(EventKind::ncQueueWritten, 8, "NCPATH|3|C:\\A.NC|g\r\n",
                     L"C:\\ZEM\\temp\\ncqueue-17.txt"),
              "host 8 -> Companion       NC queue: 1 program ncqueue-17.txt");
    EXPECT_EQ(textOf(EventKind::answerWritten, 0, std::string("C\0A\0D\0001\0 \0x\0", 12))
                  .find("host <- Companion         check-out answer: file file type CAD id 1 "),
              0u);
}

TEST(EventText, explainsTheStepsOfALoad)
{
    EXPECT_EQ(textOf(EventKind::loadStep, 8, "Loading File #3: C:\\a.mcam\r\n"),
              "host 8                    load step 3 C:\\a.mcam machine settings taken");
    EXPECT_EQ(textOf(EventKind::loadStep, 8, "Loading File #3: CAD\r\n"),
              "host 8                    load step 3 CAD a file of a CAD system, ready to be saved "
              "and committed");
    EXPECT_EQ(textOf(EventKind::loadStep, 8, "hello\r\n"),
              "host 8                    load no step hello");
}

TEST(EventText, showsAnEmptyQueueAndToolData)
{
    EXPECT_EQ(textOf(EventKind::ncQueueWritten, 8, "", L"C:\\ZEM\\temp\\ncqueue-17.txt"),
              "host 8 -> Companion       NC queue: 0 programs ncqueue-17.txt");
    EXPECT_EQ(textOf(EventKind::toolDataWritten, 8, "", L"C:\\ZEM\\temp\\tool-17.txt"),
              "host 8 -> Companion       tool data: 0 tools tool-17.txt");
    EXPECT_EQ(exchangeEventReport(event(EventKind::ncQueueWritten, 8))["meaning"].dump(),
              R"({"programs":[]})");
}

TEST(EventText, controlsNoTerminal)
{
    EXPECT_EQ(textOf(EventKind::notice, 0, "\x1B[1m\n").find('\x1B'), std::string::npos);
}

TEST(EventReport, hasTheMeaningThatDecodeShows)
{
    const Report report = exchangeEventReport(
        event(EventKind::requestWritten, 4711, openRequest, L"C:\\ZEM\\temp\\mastercam-4711.dat"));
    EXPECT_EQ(report.dump(),
              R"({"event":"request-written","by":"companion","to":"host","process":4711,)"
              R"("file":"C:\\ZEM\\temp\\mastercam-4711.dat","bytes":22,)"
              R"("meaning":{"request":"open","id":17,"path":"C:\\ZEM\\a b.mcam"}})");
    EXPECT_EQ(exchangeEventReport(event(EventKind::hostStarted, 0)).dump(),
              R"({"event":"host-started","by":"host","process":null})");
    EXPECT_EQ(exchangeEventReport(event(EventKind::commitTaken, 328, oneCommit))["meaning"].dump(),
              R"({"id":17,"file":"C:\\a.mcam"})");
    EXPECT_EQ(exchangeEventReport(event(EventKind::notice, 0, "TOOL-17\n"))["meaning"].dump(),
              R"({"notice":"tool data","id":17})");
}

TEST(EventOrder, followsTheTimes)
{
    EXPECT_EQ(inOrder({{30, EventKind::requestWritten},
                       {20, EventKind::loadStep, 0, L"", "Loading File #7: a"},
                       {10, EventKind::notice}}),
              (Words{"notice", "load-step7", "request-written"}));
}

TEST(EventOrder, followsTheExchangeAtTheSameTime)
{
    EXPECT_EQ(inOrder({{5, EventKind::hostEnded},
                       {5, EventKind::commitTaken},
                       {5, EventKind::notice},
                       {5, EventKind::commitWritten},
                       {5, EventKind::pictureWritten},
                       step('1', 5),
                       {5, EventKind::requestWritten},
                       {5, EventKind::requestTaken},
                       {5, EventKind::requestWritten},
                       {5, EventKind::machineSettingsWritten},
                       {5, EventKind::hostStarted}}),
              (Words{"host-started", "machine-settings-written", "request-written", "request-taken",
                     "request-written", "load-step1", "picture-written", "commit-written", "notice",
                     "commit-taken", "host-ended"}));
}

TEST(EventOrder, takesSettingsBetweenSteps2And3)
{
    const ExchangeEvent taken = {3, EventKind::machineSettingsTaken};
    EXPECT_EQ(inOrder({taken, step('1', 5), step('2', 5), step('3', 5)}),
              (Words{"load-step1", "load-step2", "machine-settings-taken", "load-step3"}));
    EXPECT_EQ(inOrder({taken, step('3', 5)}), (Words{"machine-settings-taken", "load-step3"}));
    EXPECT_EQ(inOrder({taken, step('2', 5)}), (Words{"load-step2", "machine-settings-taken"}));
}

TEST(EventOrder, neverGoesBackInTime)
{
    std::vector<ExchangeEvent> events = {{1, EventKind::pictureWritten}, {99, EventKind::notice}};
    putInOrder(events, 10, 20);
    EXPECT_EQ(events[0].at, 10);
    EXPECT_EQ(events[1].at, 20);
}

TEST(LocalTime, isReadAsItIsWritten)
{
    const std::int64_t time = parseLocalTime("2026-11-21 10:11:12.345").value();
    EXPECT_EQ(localDate(time) + ' ' + localTimeOfDay(time), "2026-11-21 10:11:12.345");
    EXPECT_EQ(universalTime(1795255872345), "2026-11-21T10:11:12.345Z");
    EXPECT_EQ(parseLocalTime("2026-11-21 10:11:12"), time - 345);
    EXPECT_EQ(parseLocalTime("2026-11-21 10:11"), time - 12345);
    EXPECT_EQ(parseTimeOrDate("10:11:12", time), time - 345);
    EXPECT_EQ(parseTimeOrDate("10:11", time), time - 12345);
    for (const char* text : {"", "10", "10:1", "25:11", "10:61", "2026-11-21", "2026-02-30 10:11",
                             "2026-11-21 10:11:12.345678", "now"})
        EXPECT_EQ(parseTimeOrDate(text, time), std::nullopt) << text;
}

TEST(LogEvents, arePastEventsWithTheirBytes)
{
    const std::string log = "2026-11-21 10:11:12.001 started folder=\"C:\\ZEM\" pid=328\n"
                            "2026-11-21 10:11:12.002 host-found host=4 title=\"a\"\n"
                            "2026-11-21 10:11:12.003 sent id=17 host=4 file=\"C:\\a.mcam\"\n"
                            "2026-11-21 10:11:12.004 taken id=17 host=4 after=8.1ms request=open\n"
                            "2026-11-21 10:11:12.005 line bytes=0 hex= text=\"\"\n"
                            "2026-11-21 10:11:12.006 line bytes=8 hex=544F4F4C2D31370A text=\"x\"\n"
                            "2026-11-21 10:11:12.007 commit file=\"C:\\a.mcam\" id=17 "
                            "from=torvapdm-328.dat\n"
                            "2026-11-21 10:11:12.008 version name=\"a\" version=2 number=17\n"
                            "nonsense\n"
                            "2026-11-21 10:11:12.009 host-gone host=4\n"
                            "2026-11-21 10:11:12.010 stopped\n";
    const std::vector<ExchangeEvent> events = eventsOfLog(log, L"C:\\ZEM");
    Words texts;
    for (const ExchangeEvent& each : events)
        texts.push_back(localTimeOfDay(each.at) + ' ' + exchangeEventText(each));
    EXPECT_EQ(texts,
              (Words{"10:11:12.001 Companion 328             started",
                     "10:11:12.002 host 4                    started",
                     "10:11:12.003 host 4 <- Companion       request: open id 17 C:\\a.mcam",
                     "10:11:12.004 host 4                    request taken: open id 17 C:\\a.mcam",
                     "10:11:12.006 host -> Companion         notice: tool data id 17",
                     "10:11:12.007 Companion 328             commit taken: id 17 C:\\a.mcam",
                     "10:11:12.009 host 4                    ended",
                     "10:11:12.010 Companion 328             ended"}));
    EXPECT_EQ(events[4].bytes, "TOOL-17\n");
    EXPECT_EQ(events[2].file, L"C:\\ZEM\\temp\\mastercam-4.dat");
}

TEST(SentRequests, areThoseThatWereMissed)
{
    SentRequests requests;
    for (const char* bytes : {"CHECKIN a", "CHECKIN b", "CHECKIN c"})
        requests.add(event(EventKind::requestWritten, 4, bytes));
    requests.add(event(EventKind::requestWritten, 8, "CHECKIN d"));
    std::vector<ExchangeEvent> events = {event(EventKind::requestWritten, 4),
                                         event(EventKind::requestTaken, 4),
                                         event(EventKind::requestWritten, 4, "CHECKIN a"),
                                         event(EventKind::requestTaken, 4, "CHECKIN a"),
                                         event(EventKind::requestWritten, 4),
                                         event(EventKind::requestTaken, 4),
                                         event(EventKind::requestWritten, 4)};
    requests.complete(events);
    Words bytes;
    for (const ExchangeEvent& each : events)
        bytes.push_back(each.bytes);
    EXPECT_EQ(bytes, (Words{"CHECKIN b", "CHECKIN b", "CHECKIN a", "CHECKIN a", "CHECKIN c",
                            "CHECKIN c", ""}));
}

TEST(SentRequests, mayBeToldAfterTheyWereSeen)
{
    SentRequests requests;
    std::vector<ExchangeEvent> seen = {event(EventKind::requestWritten, 4, "CHECKIN a")};
    requests.complete(seen);
    requests.add(event(EventKind::requestWritten, 4, "CHECKIN a"));
    std::vector<ExchangeEvent> missed = {event(EventKind::requestWritten, 4)};
    requests.complete(missed);
    EXPECT_EQ(missed[0].bytes, "");
}

TEST(SentRequests, areAddedBeforeTheNextThatWasSeen)
{
    SentRequests requests;
    for (const char* bytes : {"CHECKIN a", "CHECKIN b", "CHECKIN c"}) {
        requests.add({20, EventKind::requestWritten, 4, L"", bytes});
        requests.addTaken({30, EventKind::requestTaken, 4});
    }
    std::vector<ExchangeEvent> events = {{10, EventKind::requestWritten, 4, L"", "CHECKIN a"},
                                         {15, EventKind::requestTaken, 4, L"", "CHECKIN a"},
                                         {15, EventKind::requestWritten, 4, L"", "CHECKIN d"}};
    requests.complete(events);
    EXPECT_EQ(timesAndTexts(events),
              (Words{"10 request-written CHECKIN a", "15 request-taken CHECKIN a",
                     "15 request-written CHECKIN b", "15 request-taken CHECKIN b",
                     "15 request-written CHECKIN c", "15 request-taken CHECKIN c",
                     "15 request-written CHECKIN d"}));
}

TEST(SentRequests, areAddedOnceTheyWereTakenAndCannotBeSeenAnyMore)
{
    SentRequests requests;
    std::vector<ExchangeEvent> events;
    requests.add({20, EventKind::requestWritten, 4, L"", "CHECKIN a"});
    requests.complete(events);
    EXPECT_EQ(timesAndTexts(events), Words{});
    requests.addTaken({30, EventKind::requestTaken, 4});
    requests.complete(events, {4});
    EXPECT_EQ(timesAndTexts(events), Words{});
    requests.complete(events);
    EXPECT_EQ(timesAndTexts(events),
              (Words{"20 request-written CHECKIN a", "30 request-taken CHECKIN a"}));
    events.clear();
    requests.complete(events);
    EXPECT_EQ(timesAndTexts(events), Words{});
}

TEST(SentRequests, areNotAddedWhenALaterOneWasTaken)
{
    SentRequests requests;
    std::vector<ExchangeEvent> events = {{10, EventKind::requestWritten, 4, L"", "CHECKIN b"}};
    requests.add({20, EventKind::requestWritten, 4, L"", "CHECKIN a"}); // and is lost
    requests.complete(events);
    requests.add({30, EventKind::requestWritten, 4, L"", "CHECKIN b"});
    requests.addTaken({40, EventKind::requestTaken, 4});
    events.clear();
    requests.complete(events);
    EXPECT_EQ(timesAndTexts(events), Words{});
}

TEST(Pages, showAWatchedSessionAsPrinted)
{
    const std::string part = "C:\\TORVA\\ZEM\\work\\bracket.mcam";
    const std::string open = "\xEF\xBB\xBF"
                             "17 " +
                             part + '\n';
    const std::string commit =
        peer::formatCommitRecord({17, L"C:\\TORVA\\ZEM\\work\\bracket.mcam"});
    const Words printed = {
        "present at the start: " + textOf(EventKind::companionStarted, 328),
        textOf(EventKind::hostStarted, 336),
        textOf(EventKind::machineSettingsWritten, 336,
               "17|3|0|C:\\Machines\\Mill 3-axis.mcam-mmd\r\n"),
        textOf(EventKind::requestWritten, 336, open),
        textOf(EventKind::requestTaken, 336, open),
        textOf(EventKind::loadStep, 336, "Loading File #1: " + part + "\r\n"),
        textOf(EventKind::commitWritten, 328, commit),
        textOf(EventKind::notice, 336, "ZEMID=17|" + part + '\n'),
        textOf(EventKind::commitTaken, 328, commit),
    };
    const auto blocks = documents::fencedBlocks(documents::pageText("zemlink.md"), "watched");
    ASSERT_EQ(blocks.size(), 1u);
    Words shown = blocks[0].lines;
    ASSERT_GT(shown.size(), 2u);
    shown.erase(shown.begin(), shown.begin() + 2); // the command and the folder
    for (std::string& line : shown)
        line.erase(0, std::string_view("12:01:03.120  ").size());
    EXPECT_EQ(shown, printed);
}
