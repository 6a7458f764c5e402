// Recordings: the file, what hides the names in it, and what a replay compares.
#include "peer/commit_record.h"
#include "peer/text.h"
#include "support/bytes.h"
#include "support/installation.h"
#include "tools/zemlink/session/comparison.h"
#include "tools/zemlink/session/recorded_text.h"
#include "tools/zemlink/session/recording.h"
#include "tools/zemlink/session/recording_space.h"
#include "tools/zemlink/session/redacted_logs.h"
#include "tools/zemlink/session/redaction.h"
#include "tools/zemlink/session/running_recording.h"
#include "tools/zemlink/session/file_listing.h"
#include "tools/zemlink/session/local_time.h"
#include "tools/zemlink/session/zip_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>

using namespace zemlink;
using namespace std::string_literals;

namespace {

constexpr std::int64_t start = 1795000000123;

const std::string toolRecord =
    "TOOLDATA|DATAID=17|TPNAME=000002A1F3C05E40|CPNAME=000002A1F3C05E80|DIA=12.5|TNUM=4"
    "|TTYPE=10|GEOFILE=000002A1F3C05EC0|CRAD=0.5|LOFF=5|DOFF=6|NCNAME=000002A1F3C05F00"
    "|FLUTES=3|OPID=101|RADTYPE=2|TLMATERIAL=1|OPFEED=900|LENGTHOFFSET=7"
    "|LENGTH OVERALL=80|STATION=8|SLOT=9|ADSHLDRANGLE=45|ADDIAM=11.5"
    "|GEOFILE=000002A1F3C05F40|OPERATION NUMBER=1|TIPANGLE=118|PILOTDIA=1.25"
    "|FLUTELENGTH=26|SHLDRLENGTH=30|SHLDRDIAM=13|ARBORDIA=14|HOLDERDIA=50"
    "|HOLDERLENGTH=inf|RPM=8000|FEED=901|PLUNGE=300|RETRACT=1e+06|GROUP=15"
    "|MACHINEGROUP=16|LEVELNUMBER=18|SPINDLEROT=1|COMMENT=Cutter of Wilma"
    "|PLANEWOFF=54|OPERATIONCOMMENT=|OPERATIONTYPE=19|HOLDERNO=20|COMPENSATIONTYPE=21"
    "|DEPTH=-12.5|TPTYPE=22|TPX=1|TPY=2|TPZ=3|CPTYPE=23|CPX=4|CPY=5|CPZ=6|OPTIME=61.5\r\n";

// A bitmap file of one row of two pixels with 24 bits each.
const std::string bitmap = "BM"s + std::string("\x3E\0\0\0\0\0\0\0\x36\0\0\0", 12) +
                           std::string("\x28\0\0\0\2\0\0\0\1\0\0\0\1\0\x18\0", 16) +
                           std::string(24, '\0') + "secrets!";

ExchangeEvent event(std::int64_t at, EventKind kind, const std::wstring& file = {},
                    const std::string& bytes = {}, std::uint32_t process = 4711)
{
    return {start + at, kind, process, file, bytes};
}

std::string utf16(const std::wstring& text)
{
    return std::string(reinterpret_cast<const char*>(text.data()), text.size() * 2);
}

// One exchange of each kind, of a user and parts with names that are found nowhere else.
Recording sampleRecording()
{
    const std::wstring temp = L"C:\\Users\\wilma\\Quarry\\temp\\";
    Recording recording{start};
    recording.folder = L"C:\\Users\\wilma\\Quarry";
    recording.status = {{"installation", {{"folder", "C:\\Users\\wilma\\Quarry"}}},
                        {"hosts", {{{"process", 4711}, {"title", "Mill - Rocket (secret)"}}}}};
    const std::string record =
        peer::formatCommitRecord({17, L"\\\\pebbles\\Projects\\Rocket f\u00FCr Barney.mcam"});
    recording.events = {
        event(0, EventKind::companionStarted, {}, {}, 328),
        event(1, EventKind::hostStarted, temp + L"mastercam-4711.dat"),
        event(2, EventKind::machineSettingsWritten, temp + L"mcsettings-17.txt",
              "17|-1|0|C:\\Machines\\Dino lathe.mcam-lmd"),
        event(3, EventKind::requestWritten, temp + L"mastercam-4711.dat",
              "\xEF\xBB\xBF"
              "17 C:\\Users\\wilma\\Quarry\\work\\Rocket.mcam\n"),
        event(4, EventKind::requestTaken, temp + L"mastercam-4711.dat",
              "\xEF\xBB\xBF"
              "17 C:\\Users\\wilma\\Quarry\\work\\Rocket.mcam\n"),
        event(5, EventKind::machineSettingsTaken, temp + L"mcsettings-17.txt",
              "17|-1|0|C:\\Machines\\Dino lathe.mcam-lmd"),
        event(400, EventKind::loadStep, {},
              "Loading File #1: C:\\Users\\wilma\\Quarry\\work\\Rocket.mcam\r\n"),
        event(900, EventKind::pictureWritten, L"C:\\Users\\wilma\\Quarry\\commit\\screendump.bmp",
              bitmap),
        event(901, EventKind::commitWritten, temp + L"torvapdm-328.dat", record),
        event(902, EventKind::ncQueueWritten, temp + L"ncqueue-0.txt",
              "NCPATH|-1|C:\\NC\\ROCKET.NC|Slate group\r\n"),
        event(903, EventKind::toolDataWritten, temp + L"tool-17.txt", toolRecord),
        event(904, EventKind::notice, {}, "ZEMID=17|C:\\Users\\wilma\\Quarry\\work\\Rocket.mcam\n"),
        event(905, EventKind::commitTaken, temp + L"torvapdm-328.dat", record),
        event(905, EventKind::answerWritten, L"C:\\Users\\wilma\\Temp\\TORVA ZEM-5.tmp",
              utf16(L"CAD12 C:\\Parts\\Hammer v2.Granite")),
        event(905, EventKind::notice, {}, "ZEMID=18|C:\\Parts\\M\xDCHLE.mcam\n"),
        event(905, EventKind::notice, {}, "scribble of wilma\n"),
        event(906, EventKind::hostEnded, temp + L"mastercam-4711.dat"),
    };
    return recording;
}

ExchangeEvent eventOf(const Recording& recording, EventKind kind)
{
    const auto found = std::ranges::find(recording.events, kind, &ExchangeEvent::kind);
    EXPECT_NE(found, recording.events.end()) << eventWord(kind);
    return found == recording.events.end() ? ExchangeEvent() : *found;
}

std::string causeOf(const std::string& bytes)
{
    try {
        parseRecording(bytes);
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "none";
}

std::vector<std::string> words(const std::vector<Difference>& differences)
{
    std::vector<std::string> found;
    for (const Difference& each : differences)
        found.push_back(differenceReport(each)["difference"].get<std::string>());
    return found;
}

using Words = std::vector<std::string>;

} // namespace

TEST(ZipFile, returnsWhatWasPacked)
{
    const std::string random = "\x01\xFF\x80"s + std::string(70000, 'x') + "\0end"s;
    const std::vector<ZipEntry> packed = {
        {"a.json", "{}"}, {"folder/\xC3\xA4.dat", random}, {"empty", ""}};
    const std::string bytes = formatZip(packed);
    const auto unpacked = parseZip(bytes);
    ASSERT_EQ(unpacked.size(), packed.size());
    for (size_t i = 0; i < packed.size(); ++i) {
        EXPECT_EQ(unpacked[i].name, packed[i].name);
        EXPECT_EQ(unpacked[i].bytes, packed[i].bytes);
    }
    EXPECT_LT(bytes.size(), 1000u);
    EXPECT_EQ(formatZip(packed), bytes);
}

TEST(ZipFile, refusesDamage)
{
    const std::string bytes = formatZip({{"a", std::string(500, 'a') + "text"}});
    EXPECT_THROW(parseZip(""), std::runtime_error);
    EXPECT_THROW(parseZip("not a zip file"), std::runtime_error);
    EXPECT_THROW(parseZip(bytes.substr(0, bytes.size() / 2)), std::runtime_error);
    std::string changed = bytes;
    changed[36] = static_cast<char>(changed[36] ^ 1); // in the compressed bytes
    EXPECT_THROW(parseZip(changed), std::runtime_error);
    std::string claims = bytes;
    const size_t directory = bytes.find("PK\x01\x02");
    claims.replace(directory + 24, 4, "\xFF\xFF\xFF\x0F"); // 256 MiB, unpacked
    EXPECT_THROW(parseZip(claims), std::runtime_error);
}

TEST(RecordingFile, returnsEachEvent)
{
    const Recording recording = sampleRecording();
    const Recording read = parseRecording(formatRecording(recording));
    EXPECT_EQ(read.startedAt, start);
    EXPECT_EQ(read.folder, recording.folder);
    EXPECT_EQ(read.status, recording.status);
    EXPECT_TRUE(read.isFinished);
    EXPECT_FALSE(read.isRedacted);
    ASSERT_EQ(read.events.size(), recording.events.size());
    for (size_t i = 0; i < read.events.size(); ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(read.events[i].at, recording.events[i].at);
        EXPECT_EQ(read.events[i].kind, recording.events[i].kind);
        EXPECT_EQ(read.events[i].process, recording.events[i].process);
        EXPECT_EQ(read.events[i].file, recording.events[i].file);
        EXPECT_EQ(read.events[i].bytes, recording.events[i].bytes);
    }
}

TEST(RecordingFile, hasAnIndexForPeople)
{
    const auto entries = parseZip(formatRecording(sampleRecording()));
    ASSERT_FALSE(entries.empty());
    EXPECT_EQ(entries[0].name, "index.json");
    const Report index = Report::parse(entries[0].bytes);
    EXPECT_EQ(index["started"], "2026-11-18T11:06:40.123Z");
    const Report& request = index["events"][3];
    EXPECT_EQ(request["at"], 3);
    EXPECT_EQ(request["event"], "request-written");
    EXPECT_EQ(request["entry"], "exchanges/0002-mastercam-4711.dat");
    EXPECT_EQ(request["meaning"]["path"], "C:\\Users\\wilma\\Quarry\\work\\Rocket.mcam");
}

TEST(RecordingFile, refusesAnythingElse)
{
    EXPECT_EQ(causeOf("BM"), "it is not a zip file");
    EXPECT_EQ(causeOf(formatZip({{"a", "b"}})), "index.json is missing");
    EXPECT_EQ(causeOf(formatZip({{"index.json", "{"}})), "its index is damaged");
    EXPECT_EQ(causeOf(formatZip({{"index.json", "{\"format\": 2}"}})),
              "it has a format that this version does not know");
    const auto withEvent = [](const std::string& events) {
        return formatZip(
            {{"index.json", R"({"format":1,"started":"2026-11-18T06:26:40.123Z","redacted":false,)"
                            R"("finished":true,"folder":"C:","status":{},"events":[)" +
                                events + "]}"}});
    };
    EXPECT_EQ(causeOf(withEvent("")), "none");
    EXPECT_EQ(causeOf(withEvent(R"({"at":1,"event":"jump","process":null})")),
              "it has an event that this version does not know: jump");
    EXPECT_EQ(causeOf(withEvent(R"({"at":1,"event":"notice","process":null,"entry":"x"})")),
              "x is missing");
    EXPECT_EQ(causeOf(withEvent(R"({"at":"1","event":"notice","process":null})")),
              "its index is damaged");
    for (const char* time : {"-1", "2592000001", "9000000000000000000"})
        EXPECT_EQ(causeOf(withEvent(R"({"event":"notice","process":null,"at":)" +
                                    std::string(time) + '}')),
                  "its index is damaged")
            << time;
    EXPECT_EQ(causeOf(formatZip({{"index.json", std::string(100, '[') + std::string(100, ']')}})),
              "its index is damaged");
    const std::string noFolder =
        R"({"format":1,"started":"2026-11-18T11:06:40.123Z","redacted":false,)"
        R"("finished":true,"folder":"","status":{},"events":[]})";
    EXPECT_EQ(causeOf(formatZip({{"index.json", noFolder}})), "its index is damaged");
}

TEST(RecordingFile, refusesTooLargeAnIndex)
{
    constexpr size_t mostBytes = 64 << 20;
    EXPECT_EQ(causeOf(formatZip({{"index.json", std::string(mostBytes + 1, ' ')}})),
              "its index is too large");
    std::string parts;
    for (size_t i = 0; i < (2 << 20); ++i)
        parts += "0,";
    EXPECT_EQ(causeOf(formatZip({{"index.json", '[' + parts + "0]"}})), "its index is too large");
}

TEST(RecordingFile, refusesTooLongAFolder)
{
    Recording recording = sampleRecording();
    recording.folder = L"C:\\" + std::wstring(32764, L'x');
    EXPECT_EQ(causeOf(formatRecording(recording)), "none");
    recording.folder += L'x';
    EXPECT_EQ(causeOf(formatRecording(recording)), "its index is damaged");
}

TEST(RecordingFile, canBeReadAtItsLimits)
{
    Recording recording{start};
    recording.folder = L"C:\\" + std::wstring(230, L'x');
    const ExchangeEvent last = event(longestRecordingMs, EventKind::hostEnded,
                                     recording.folder + L"\\temp\\mastercam-4711.dat");
    recording.events.assign(mostRecordedEvents, last);
    EXPECT_EQ(parseRecording(formatRecording(recording)).events.size(), mostRecordedEvents);
    recording.events.push_back(last);
    EXPECT_EQ(causeOf(formatRecording(recording)), "it has too many events");
}

TEST(RecordingFile, hasNoMeaningsInALargeIndex)
{
    Recording recording = sampleRecording();
    const ExchangeEvent large =
        event(950, EventKind::requestWritten, L"C:\\a.dat", "CHECKIN " + std::string(60'000, 'x'));
    recording.events.insert(recording.events.end(), 300, large);
    const std::string bytes = formatRecording(recording);
    EXPECT_EQ(parseZip(bytes)[0].bytes.find("meaning"), std::string::npos);
    EXPECT_EQ(parseRecording(bytes).events.back().bytes, large.bytes);
}

TEST(RecordingSpace, endsAtEachLimit)
{
    RecordingSpace events(start), time(start), bytes(start);
    for (size_t i = 0; i < mostRecordedEvents; ++i)
        ASSERT_EQ(events.findLimit(event(5, EventKind::notice)), "");
    EXPECT_NE(events.findLimit(event(5, EventKind::notice)).find("20,000 events"),
              std::string::npos);
    EXPECT_EQ(time.findLimit(event(longestRecordingMs, EventKind::notice)), "");
    EXPECT_NE(time.findLimit(event(longestRecordingMs + 1, EventKind::notice)).find("30 days"),
              std::string::npos);
    const ExchangeEvent large = event(5, EventKind::notice, {}, std::string(128 << 20, 'x'));
    for (int i = 0; i < 4; ++i)
        ASSERT_EQ(bytes.findLimit(large), "");
    EXPECT_NE(bytes.findLimit(event(5, EventKind::notice, {}, "x")).find("512 MB"),
              std::string::npos);
}

TEST(RecordingFile, givesEachEntryToOneEvent)
{
    const std::string two = R"({"format":1,"started":"2026-11-18T11:06:40.123Z","redacted":false,)"
                            R"("finished":true,"folder":"C:","status":{},"events":[)"
                            R"({"at":1,"event":"notice","process":null,"entry":"exchanges/x"},)"
                            R"({"at":2,"event":"notice","process":null,"entry":"exchanges/x"}]})";
    EXPECT_EQ(causeOf(formatZip({{"index.json", two}, {"exchanges/x", "TOOL-5"}})),
              "exchanges/x is missing");
}

TEST(UniversalTime, isReadExactly)
{
    EXPECT_EQ(parseUniversalTime(universalTime(start)), start);
    EXPECT_EQ(universalTime(0), "1970-01-01T00:00:00.000Z");
    for (const char* text : {"", "2026-02-30T00:00:00.000Z", "2026-11-18T06:26:40Z",
                             "2026-11-18T06:26:40.123", "2026-11-18T24:00:00.000Z"})
        EXPECT_FALSE(parseUniversalTime(text).has_value()) << text;
}

TEST(Redaction, leavesNoNameInAnyEncoding)
{
    const auto entries = parseZip(formatRecording(redacted(sampleRecording())));
    std::string everything;
    for (const ZipEntry& entry : entries)
        everything += entry.name + '\n' + entry.bytes + '\n';
    std::ranges::transform(everything, everything.begin(),
                           [](char c) { return c >= 'A' && c <= 'Z' ? char(c + 32) : c; });
    for (const std::string name :
         {"wilma", "quarry", "rocket", "pebbles", "projects", "barney", "dino", "lathe", "slate",
          "cutter", "scribble", "secret", "hammer", "granite", "m\xFChle", "m\xDChle",
          "m\xC3\xBChle", "m\xC3\x9Chle"}) {
        std::string wide;
        for (const char c : name)
            wide += {c, '\0'};
        EXPECT_EQ(everything.find(name), everything.npos) << name;
        EXPECT_EQ(everything.find(wide), everything.npos) << name;
    }
}

TEST(Redaction, isConsistentAndKeepsTheForm)
{
    const Recording hidden = redacted(parseRecording(formatRecording(sampleRecording())));
    EXPECT_TRUE(hidden.isRedacted);
    const std::string request = eventOf(hidden, EventKind::requestWritten).bytes;
    const std::string path = request.substr(6, request.size() - 7);
    EXPECT_TRUE(request.starts_with("\xEF\xBB\xBF"
                                    "17 C:\\Users\\user-"));
    EXPECT_TRUE(path.ends_with(".mcam"));
    EXPECT_EQ(eventOf(hidden, EventKind::notice).bytes, "ZEMID=17|" + path + '\n');
    EXPECT_EQ(eventOf(hidden, EventKind::loadStep).bytes, "Loading File #1: " + path + "\r\n");
    const peer::Piece commit = peer::parsePiece(eventOf(hidden, EventKind::commitWritten).bytes);
    EXPECT_EQ(commit.kind, peer::PieceKind::record);
    EXPECT_EQ(commit.size, eventOf(hidden, EventKind::commitWritten).bytes.size());
    EXPECT_TRUE(commit.record.file.starts_with(L"\\\\folder-"));
    EXPECT_EQ(eventOf(hidden, EventKind::requestWritten).file.substr(hidden.folder.size()),
              L"\\temp\\mastercam-4711.dat");
    EXPECT_EQ(eventOf(hidden, EventKind::pictureWritten).bytes,
              bitmap.substr(0, 54) + std::string(8, '\x80'));
    EXPECT_EQ(hidden.events[hidden.events.size() - 2].bytes, std::string(18, '?'));
    EXPECT_EQ(eventOf(hidden, EventKind::commitTaken).bytes,
              eventOf(hidden, EventKind::commitWritten).bytes);
    EXPECT_TRUE(eventOf(hidden, EventKind::machineSettingsWritten)
                    .bytes.starts_with("17|-1|0|C:\\folder-"));
    EXPECT_TRUE(eventOf(hidden, EventKind::machineSettingsWritten).bytes.ends_with(".mcam-lmd"));
    EXPECT_TRUE(
        eventOf(hidden, EventKind::toolDataWritten).bytes.starts_with("TOOLDATA|DATAID=17|"));
    EXPECT_NE(eventOf(hidden, EventKind::ncQueueWritten).bytes.find("NCPATH|-1|C:\\"),
              std::string::npos);
}

TEST(Redaction, hidesNamesInLogs)
{
    const std::string log =
        "2026-11-21 10:11:12.345 sent id=17 host=4711 file=\"C:\\Parts\\Rocket.mcam\"\n"
        "2026-11-21 10:11:13.000 line bytes=3 hex=526F63 text=\"Rocket\"\n"
        "something of wilma\n";
    const std::string loads = "Loading File #1: C:\\Parts\\Rocket.mcam\r\nwilma was here\r\n";
    Pseudonyms names;
    addNamesOfCompanionLog(names, log);
    addNamesOfLoadLog(names, loads);
    EXPECT_EQ(redactedCompanionLog(names, log),
              "2026-11-21 10:11:12.345 sent id=17 host=4711 file=\"C:\\folder-1\\name-2.mcam\"\n"
              "2026-11-21 10:11:13.000 line bytes=3 hex=(left out) text=\"name-2\"\n"
              "(line left out)\n");
    EXPECT_EQ(redactedLoadLog(names, loads),
              "Loading File #1: C:\\folder-1\\name-2.mcam\n(line left out)\n");
}

TEST(Redaction, leavesTheWordsOfTheProgram)
{
    Pseudonyms names;
    names.addReport(Report{{"port", Report{{"answers", "unknown"}, {"owner", "unknown"}}}});
    EXPECT_EQ(names.replaceIn(L"commits-unknown: it is unknown"),
              L"commits-unknown: it is unknown");
}

TEST(Redaction, givesAPartOneNameWithAnyExtension)
{
    Pseudonyms names;
    for (const wchar_t* path : {L"C:\\Rocket.mcam", L"C:\\Rocket.CATPart", L"C:\\Rocket.x_t",
                                L"C:\\Rocket.SLDPRT", L"C:\\Rocket.stp", L"C:\\Rocket"})
        names.addPath(path);
    EXPECT_EQ(names.replaceIn(L"Rocket, C:\\Rocket.CATPart"), L"name-1, C:\\name-1.CATPart");
}

TEST(Redaction, replacesTheLongestWholeName)
{
    Pseudonyms names;
    for (const wchar_t* name : {L"ab", L"ab c", L"ab b", L"abc", L"ab cde"})
        names.addText(name);
    EXPECT_EQ(names.replaceIn(L"AB cd, ab c; abcd ab b ab"),
              L"text-1 cd, text-2; abcd text-3 text-1");
}

TEST(FileListing, hasEachFileWithItsHash)
{
    const testing_support::Installation installation;
    testing_support::writeBytes(installation.path(L"sys\\abc.txt"), "abc");
    testing_support::writeBytes(installation.path(L"temp\\empty.dat"), "");
    const Report files = listingReport(describeFiles(installation.root()))["files"];
    ASSERT_EQ(files.size(), 2u);
    EXPECT_EQ(files[0]["path"], "sys\\abc.txt");
    EXPECT_EQ(files[0]["bytes"], 3);
    EXPECT_EQ(files[0]["sha256"],
              "BA7816BF8F01CFEA414140DE5DAE2223B00361A396177A9CB410FF61F20015AD");
    EXPECT_EQ(files[1]["path"], "temp\\empty.dat");
    EXPECT_TRUE(files[1]["sha256"].is_null());
}

TEST(RunningRecording, isFoundWhileItExists)
{
    EXPECT_EQ(findRunningRecording(), L"");
    {
        const RunningRecording running(L"C:\\support\\monday.zip");
        EXPECT_EQ(findRunningRecording(), L"C:\\support\\monday.zip");
        EXPECT_THROW(RunningRecording(L"C:\\other.zip"), std::runtime_error);
        EXPECT_EQ(findRunningRecording(), L"C:\\support\\monday.zip");
    }
    EXPECT_EQ(findRunningRecording(), L"");
}

TEST(Relocation, movesEachPathBelowTheFolder)
{
    const Recording moved = relocated(sampleRecording(), L"D:\\ZEM");
    EXPECT_EQ(moved.folder, L"D:\\ZEM");
    EXPECT_EQ(eventOf(moved, EventKind::requestWritten).file, L"D:\\ZEM\\temp\\mastercam-4711.dat");
    EXPECT_EQ(eventOf(moved, EventKind::requestWritten).bytes, "\xEF\xBB\xBF"
                                                               "17 D:\\ZEM\\work\\Rocket.mcam\n");
    EXPECT_EQ(eventOf(moved, EventKind::commitWritten).bytes,
              eventOf(sampleRecording(), EventKind::commitWritten).bytes);
    EXPECT_EQ(eventOf(moved, EventKind::pictureWritten).bytes, bitmap);
}

TEST(Relocation, leavesOtherFolders)
{
    Recording recording = sampleRecording();
    recording.folder = L"C:\\Users\\wilma\\Qua";
    EXPECT_EQ(eventOf(relocated(recording, L"D:\\ZEM"), EventKind::requestWritten).bytes,
              eventOf(recording, EventKind::requestWritten).bytes);
}

TEST(Relocation, findsTheFolderInAnyCaseAndEverywhere)
{
    Recording recording;
    recording.folder = L"C:\\Quarry";
    recording.events = {event(0, EventKind::notice, {}, "c:\\QUARRY,C:\\Quarry\\C:\\Quarry")};
    EXPECT_EQ(relocated(recording, L"D:\\ZEM").events[0].bytes, "c:\\QUARRY,D:\\ZEM\\D:\\ZEM");
    recording.events[0].bytes = "C:\\QUARRY\\a C:\\Quarry2 c:\\quarry";
    EXPECT_EQ(relocated(recording, L"D:\\ZEM").events[0].bytes, "D:\\ZEM\\a C:\\Quarry2 D:\\ZEM");
}

TEST(Comparison, findsNoneInTheSameSession)
{
    const Recording recording = sampleRecording();
    EXPECT_TRUE(compareExchanges(recording.events, recording.events).empty());
}

TEST(Comparison, ignoresWhatDiffersFromRunToRun)
{
    const Recording recording = sampleRecording();
    std::vector<ExchangeEvent> seen = recording.events;
    for (ExchangeEvent& each : seen) {
        changeTexts(each, [](std::wstring_view text) {
            std::wstring changed(text);
            for (const auto& [from, to] : {std::pair{L"mastercam-4711", L"mastercam-5"},
                                           {L"torvapdm-328", L"torvapdm-77"},
                                           {L"ncqueue-0", L"ncqueue-12"},
                                           {L"000002A1F3C05E40", L"0000000000A05E40"}})
                if (const size_t at = changed.find(from); at != changed.npos)
                    changed.replace(at, std::wstring_view(from).size(), to);
            return changed;
        });
        if (each.kind == EventKind::pictureWritten)
            each.bytes.back() = '?';
        each.process += 4;
    }
    EXPECT_EQ(words(compareExchanges(recording.events, seen)), Words());
}

TEST(Comparison, namesEachDifference)
{
    const std::vector<ExchangeEvent> recorded = {event(0, EventKind::requestTaken),
                                                 event(1000, EventKind::notice, {}, "TOOL-1\n"),
                                                 event(2000, EventKind::loadStep, {}, "step")};
    std::vector<ExchangeEvent> seen = recorded;
    seen[1].bytes = "TOOL-2\n";
    EXPECT_EQ(words(compareExchanges(recorded, seen)), Words({"bytes"}));
    seen = {recorded[0], recorded[2]};
    EXPECT_EQ(words(compareExchanges(recorded, seen)), Words({"missing"}));
    seen = recorded;
    seen.push_back(event(2100, EventKind::notice, {}, "TOOL-1\n"));
    EXPECT_EQ(words(compareExchanges(recorded, seen)), Words({"extra"}));
    seen = recorded;
    std::swap(seen[1].at, seen[2].at);
    EXPECT_EQ(words(compareExchanges(recorded, seen)), Words({"order"}));
    seen = recorded;
    seen[0].at = start + 1001; // recorded within a quarter of a second it would be no difference
    EXPECT_EQ(words(compareExchanges(recorded, seen)), Words({"order"}));
    const std::vector<ExchangeEvent> together = {event(0, EventKind::requestTaken),
                                                 event(249, EventKind::notice, {}, "TOOL-1\n")};
    EXPECT_TRUE(compareExchanges(together, {event(9, EventKind::notice, {}, "TOOL-1\n"),
                                            event(10, EventKind::requestTaken)})
                    .empty());
}
