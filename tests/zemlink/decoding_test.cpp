// How zemlink recognises exchange files, and how it shows each kind.
#include "tools/zemlink/reports/decode.h"
#include "tools/zemlink/reports/file_reports.h"
#include "tools/zemlink/reports/report.h"

#include <gtest/gtest.h>

using namespace zemlink;
using namespace std::string_literals;

namespace {

struct KindRow {
    std::wstring name;
    std::string bytes;
    const char* word;
};

std::string wordOf(std::wstring_view name, std::string_view bytes)
{
    const auto kind = kindOf(name, bytes);
    return kind ? kindWord(*kind) : "none";
}

const std::string record =
    "TOOLDATA|DATAID=17|TPNAME=000002A1F3C05E40|CPNAME=000002A1F3C05E80|DIA=12.5|TNUM=4"
    "|TTYPE=10|GEOFILE=000002A1F3C05EC0|CRAD=0.5|LOFF=5|DOFF=6|NCNAME=000002A1F3C05F00"
    "|FLUTES=3|OPID=101|RADTYPE=2|TLMATERIAL=1|OPFEED=900|LENGTHOFFSET=7"
    "|LENGTH OVERALL=80|STATION=8|SLOT=9|ADSHLDRANGLE=45|ADDIAM=11.5"
    "|GEOFILE=000002A1F3C05F40|OPERATION NUMBER=1|TIPANGLE=118|PILOTDIA=1.25"
    "|FLUTELENGTH=26|SHLDRLENGTH=30|SHLDRDIAM=13|ARBORDIA=14|HOLDERDIA=50"
    "|HOLDERLENGTH=inf|RPM=8000|FEED=901|PLUNGE=300|RETRACT=1e+06|GROUP=15"
    "|MACHINEGROUP=16|LEVELNUMBER=18|SPINDLEROT=1|COMMENT=End \xC4 mill"
    "|PLANEWOFF=54|OPERATIONCOMMENT=|OPERATIONTYPE=19|HOLDERNO=20|COMPENSATIONTYPE=21"
    "|DEPTH=-12.5|TPTYPE=22|TPX=1|TPY=2|TPZ=3|CPTYPE=23|CPX=4|CPY=5|CPZ=6|OPTIME=61.5\r\n";

} // namespace

TEST(ExchangeKind, isRecognisedByNameFirst)
{
    const KindRow rows[] = {
        {L"mastercam-4711.dat", "", "command"}, {L"McSettings-17.TXT", "", "machine"},
        {L"torvapdm-12.dat", "x=y", "commits"}, {L"torvapdm-12.closed", "", "commits"},
        {L"tool-17.txt", "", "tools"},          {L"ncqueue--5.txt", "", "queue"},
        {L"TORVA ZEM-61501.tmp", "", "answer"}, {L"screendump.bmp", "", "picture"},
        {L"toolimage-4.bmp", "", "picture"},    {L"mcxlog.txt", "", "log"},
        {L"settings.ini", "", "settings"},      {L"companion.log", "", "events"},
        {L"torvapdm-12.taken", "", "bookmark"}, {L"working-copies.txt", "", "copies"},
    };
    for (const KindRow& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.name) + " " + row.bytes);
        EXPECT_EQ(wordOf(row.name, row.bytes), row.word);
    }
}

TEST(ExchangeKind, isRecognisedByContent)
{
    const KindRow rows[] = {
        {L"a",
         "\xEF\xBB\xBF"
         "1 C:\\a\n",
         "command"},
        {L"a", "CHECKIN", "command"},
        {L"a", "17|3|0|C:\\m\r\n", "machine"},
        {L"a", "\1\0\0\0\3\0\0\0C\0:\0\\\0"s, "commits"},
        {L"a", record, "tools"},
        {L"a", "NCPATH|3|C:\\a.NC|\r\n", "queue"},
        {L"a", "C\0A\0D\0"s, "answer"},
        {L"a", "BM", "picture"},
        {L"a", "Loading File #1: C:\\a\n", "log"},
        {L"a", "ZEMID=17|C:\\a\n", "notices"},
        {L"a", "TOOL-17\n", "notices"},
        {L"a", "MCAMXMLIMPORTDATAID=17;C:\\a\n", "notices"},
        {L"a", "IMPORTNCQUEUE|C:\\a\n", "notices"},
        {L"a", "taken 84\nstoring 17 2 bracket\n", "bookmark"},
        {L"a", "2026-11-21 10:11:12.345 sent id=17\n", "events"},
        {L"a", "17 | 17 | C:\\a\n", "copies"},
        {L"a", "UseFtpServer=y\n", "none"},
        {L"companion.txt", "a = b\n", "none"},
        {L"a.taken", "finished\n", "none"},
        {L"a", "1 | 2 | three\n", "none"},
        {L"a", "hello", "none"},
        {L"a", "", "none"},
    };
    for (const KindRow& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.name) + " " + row.bytes);
        EXPECT_EQ(wordOf(row.name, row.bytes), row.word);
    }
}

TEST(ExchangeKind, hasADistinctName)
{
    EXPECT_EQ(kindWords().size(), 13u);
    for (const std::string& word : kindWords())
        EXPECT_EQ(kindWord(kindOfWord(word).value()), word);
    EXPECT_FALSE(kindOfWord("dat").has_value());
}

TEST(Decoding, showsEveryValueOfATool)
{
    const Outcome outcome = decode(ExchangeKind::toolData, record + "nonsense\r\n");
    EXPECT_EQ(outcome.exitCode, problem);
    EXPECT_EQ(outcome.report["badLines"].dump(), "[2]");
    ASSERT_EQ(outcome.report["tools"].size(), 1u);
    EXPECT_EQ(
        outcome.report["tools"][0].dump(),
        R"({"requestId":17,"number":4,"type":10,"comment":"End )"
        "\xC3\x84"
        R"( mill","lengthOffset":5,"diameterOffset":6,"shape":{"diameter":12.5,)"
        R"("additionalDiameter":11.5,"cornerRadius":0.5,"cornerRadiusType":2,"tipAngle":118,)"
        R"("pilotDiameter":1.25,"flutes":3,"fluteLength":26,"shoulderLength":30,)"
        R"("shoulderDiameter":13,"shoulderAngle":45,"overallLength":80,"arborDiameter":14,)"
        R"("holderDiameter":50,"holderLength":"inf","material":1},"table":{"station":8,"slot":9,)"
        R"("lengthOffset":7,"spindleSpeed":8000,"spindleDirection":1,"feed":901,)"
        R"("plungeRate":300,"retractRate":1000000.0},"operation":{"id":101,"place":1,"type":19,)"
        R"("group":15,"machineGroup":16,"level":18,"feed":900,"depth":-12.5,"workOffset":54,)"
        R"("holder":20,"compensation":21,"toolPlane":{"plane":22,"x":1,"y":2,"z":3},)"
        R"("constructionPlane":{"plane":23,"x":4,"y":5,"z":6},"seconds":61.5}})");
}

TEST(Decoding, showsTheProgramsOfAQueue)
{
    const Outcome outcome = decode(ExchangeKind::ncQueue,
                                   "NCPATH|3|C:\\NC\\\xC4.NC|Setup 1\r\nNCPATH|-1|C:\\b.NC|\r\n");
    EXPECT_EQ(outcome.exitCode, done);
    EXPECT_EQ(asText(outcome.report), "kind: queue\nbytes: 49\nprograms:\n  - nc path: 3\n"
                                      "    program: C:\\NC\\\xC3\x84.NC\n    group: Setup 1\n"
                                      "  - nc path: -1\n    program: C:\\b.NC\n    group: none\n");
}

TEST(Decoding, showsCommitsAndForeignBytes)
{
    const std::string commit = "\xFF\xFF\xFF\xFF\4\0\0\0C\0:\0\\\0a\0"s;
    const std::string bytes = std::string(8, '\0') + commit + commit.substr(0, 12);
    const Outcome outcome = decode(ExchangeKind::commitRecords, bytes);
    EXPECT_EQ(outcome.exitCode, problem);
    EXPECT_EQ(outcome.report.dump(), R"({"kind":"commits","bytes":36,"records":[{"at":8,)"
                                     R"("id":null,"file":"C:\\a"}],"foreign":[{"at":0,)"
                                     R"("bytes":8}],"incomplete":12})");
    EXPECT_EQ(decode(ExchangeKind::commitRecords, commit).exitCode, done);
}

TEST(Decoding, showsRemarksOnARequest)
{
    const Outcome outcome = decode(ExchangeKind::commandFile, "\xEF\xBB\xBF"
                                                              "12 C:\\ab\r\n");
    EXPECT_EQ(outcome.exitCode, problem);
    EXPECT_EQ(outcome.report.dump(),
              R"({"kind":"command","bytes":13,"request":"open","id":12,"path":"C:\\ab\r",)"
              R"("remarks":["A carriage return stays at the end of the path."]})");
    EXPECT_EQ(decode(ExchangeKind::commandFile, "").report.dump(),
              R"({"kind":"command","bytes":0,"request":"none"})");
    EXPECT_EQ(decode(ExchangeKind::commandFile, "").exitCode, done);
}

TEST(Decoding, showsIncompleteMachineSettings)
{
    EXPECT_EQ(decode(ExchangeKind::machineSettings, "").exitCode, problem);
    EXPECT_EQ(decode(ExchangeKind::machineSettings, "1|2").report.dump(),
              R"({"kind":"machine","bytes":3,"id":"1","ncPath":null,"secondNumber":null,)"
              R"("machine":"2"})");
    EXPECT_EQ(decode(ExchangeKind::machineSettings, "1|2").exitCode, problem);
    EXPECT_EQ(decode(ExchangeKind::machineSettings, "1|2|3|m\r\n").exitCode, done);
}

namespace {

// As in the answer file.
std::string utf16(std::string_view text)
{
    std::string bytes;
    for (const char c : text)
        bytes += {c, '\0'};
    return bytes;
}

std::string answerText(const std::string& bytes)
{
    return decode(ExchangeKind::checkoutAnswer, bytes).report.dump();
}

std::string loadsIn(std::string_view log)
{
    return asText(decode(ExchangeKind::debugLog, log).report);
}

} // namespace

TEST(Decoding, showsACheckOutAnswer)
{
    const std::string bytes = utf16("CAD1234 C:\\Parts\\a b.mcam");
    EXPECT_EQ(answerText(bytes), R"({"kind":"answer","bytes":50,"answer":"file","fileType":"CAD",)"
                                 R"("id":1234,"path":"C:\\Parts\\a b.mcam"})");
    EXPECT_EQ(decode(ExchangeKind::checkoutAnswer, bytes).exitCode, done);
    EXPECT_EQ(answerText(utf16("CHECKIN x")),
              R"({"kind":"answer","bytes":18,"answer":"check-in"})");
    EXPECT_EQ(decode(ExchangeKind::checkoutAnswer, utf16("CHECKIN x")).exitCode, done);
}

TEST(Decoding, showsAnswersThatLoadNothing)
{
    EXPECT_EQ(answerText(utf16("CAD C:\\a")),
              R"({"kind":"answer","bytes":16,"answer":"file","fileType":"CAD","id":0,)"
              R"("path":"C:\\a","remarks":["It has no id: the add-in loads nothing."]})");
    EXPECT_EQ(answerText(utf16("CAD7 ")),
              R"({"kind":"answer","bytes":10,"answer":"file","fileType":"CAD","id":7,"path":"",)"
              R"("remarks":["It has no path: the add-in loads nothing."]})");
    EXPECT_EQ(answerText(utf16("CAD7")),
              R"({"kind":"answer","bytes":8,"answer":"unusable","remarks":)"
              R"(["Its first line has no space: it is not an answer."]})");
    EXPECT_EQ(answerText(utf16("C7 C:\\a")),
              R"({"kind":"answer","bytes":14,"answer":"unusable","remarks":["Its first word has )"
              R"(fewer than three characters: the add-in's command fails."]})");
    EXPECT_EQ(answerText(utf16("CAD7 a\nb") + "x"),
              R"({"kind":"answer","bytes":17,"answer":"file","fileType":"CAD","id":7,)"
              R"("path":"a\nb","remarks":["Lines follow the first; they become part of the )"
              R"(path.","It ends in the middle of a character."]})");
    EXPECT_EQ(decode(ExchangeKind::checkoutAnswer, utf16("CAD7")).exitCode, problem);
}

TEST(Decoding, showsNoticesInSequence)
{
    const Outcome outcome = decode(ExchangeKind::notices, "TOOL-17\nZEMID=5|C:\\a\n");
    EXPECT_EQ(outcome.exitCode, done);
    EXPECT_EQ(outcome.report.dump(),
              R"({"kind":"notices","bytes":21,"notices":[{"notice":"tool data","id":17},)"
              R"({"notice":"commit","id":5,"file":"C:\\a"}]})");
    EXPECT_EQ(decode(ExchangeKind::notices, "TOOL-17\nTOOL-17").exitCode, problem);
    EXPECT_EQ(decode(ExchangeKind::notices, "hello\nTOOL-17\n").exitCode, problem);
}

TEST(Decoding, showsTheFormatOfAPicture)
{
    std::string bitmap = "BM" + std::string(12, '\0');
    bitmap[10] = 54; // offset of the pixels
    bitmap += "\x28\0\0\0\2\0\0\0\3\0\0\0\1\0\x18\0"s + std::string(24, '\0');
    const std::string whole = bitmap + std::string(3 * 8, 'p');
    EXPECT_EQ(decode(ExchangeKind::picture, whole).report.dump(),
              R"({"kind":"picture","bytes":78,"width":2,"height":3,"bitsPerPixel":24,)"
              R"("firstRow":"bottom"})");
    EXPECT_EQ(decode(ExchangeKind::picture, whole).exitCode, done);
    const Outcome cut = decode(ExchangeKind::picture, whole.substr(0, 77));
    EXPECT_EQ(cut.exitCode, problem);
    EXPECT_FALSE(cut.report.contains("width"));
}

TEST(Decoding, showsEventsOfTheCompanion)
{
    const Outcome outcome =
        decode(ExchangeKind::companionLog,
               "2026-11-21 10:11:12.345 taken id=-7 after=83.1ms request=open file=\"C:\\a b\"\n"
               "2026-11-21 10:11:12.346 line bytes=1 hex=31 text=\"1\"\nhello\n");
    EXPECT_EQ(outcome.exitCode, problem);
    EXPECT_EQ(outcome.report.dump(),
              R"({"kind":"events","bytes":135,"events":[{"time":"2026-11-21 10:11:12.345",)"
              R"("event":"taken","id":-7,"after":"83.1ms","request":"open","file":"C:\\a b"},)"
              R"({"time":"2026-11-21 10:11:12.346","event":"line","bytes":1,"hex":"31",)"
              R"("text":"1"}],"badLines":[3]})");
}

TEST(Decoding, showsABookmark)
{
    const auto bookmark = [](std::string_view bytes) {
        return decode(ExchangeKind::bookmark, bytes).report.dump();
    };
    EXPECT_EQ(bookmark("taken 84\n"),
              R"({"kind":"bookmark","bytes":9,"finished":false,"taken":84})");
    EXPECT_EQ(bookmark("taken 84\nstoring 17 2 pump cover\n"),
              R"({"kind":"bookmark","bytes":33,"finished":false,"taken":84,)"
              R"("storing":{"part":17,"version":2,"name":"pump cover"}})");
    EXPECT_EQ(bookmark("finished\n"), R"({"kind":"bookmark","bytes":9,"finished":true})");
    EXPECT_EQ(decode(ExchangeKind::bookmark, "taken 84\n").exitCode, done);
    EXPECT_EQ(decode(ExchangeKind::bookmark, "taken\n").exitCode, problem);
}

TEST(Decoding, showsWorkingCopies)
{
    const Outcome outcome =
        decode(ExchangeKind::workingCopies, "17 | 42 | C:\\\xC3\xA4\n- | 43 | C:\\b\n5 | 0 | \n");
    EXPECT_EQ(outcome.exitCode, done);
    EXPECT_EQ(outcome.report["copies"].dump(), R"([{"id":17,"part":42,"file":"C:\\)"
                                               "\xC3\xA4"
                                               R"("},{"id":null,"part":43,"file":"C:\\b"},)"
                                               R"({"id":5,"part":null,"file":null}])");
    EXPECT_EQ(decode(ExchangeKind::workingCopies, "17 | 42\n").report["badLines"].dump(), "[1]");
}

TEST(Decoding, showsTheProgressOfLoads)
{
    const std::string steps =
        "steps:\n"
        "  1: asked for\n"
        "  2: opened by the host, and named\n"
        "  3: machine settings taken\n"
        "  4: marked unchanged\n"
        "  5: nothing has happened since step 4\n"
        "  6: nothing has happened since step 4\n"
        "  7: ready to be named in the title and saved\n"
        "  3 again: a file of a CAD system, ready to be saved and committed\n";
    EXPECT_EQ(loadsIn("Loading File #1: C:\\a\r\nLoading File #2: C:\\a\r\n"
                      "Loading File #1: C:\\b.CATPart\r\nLoading File #2: C:\\b.CATPart\r\n"
                      "Loading File #3: C:\\b.CATPart\r\nLoading File #3: CAD\r\n"),
              "kind: log\nbytes: 161\nloads:\n  - file: C:\\a\n    finished: no\n    last step: 2\n"
              "    reached: opened by the host, and named\n"
              "  - file: C:\\b.CATPart\n    finished: yes\n    cad system: CAD\n"
              "    reached: a file of a CAD system, ready to be saved and committed\n" +
                  steps);
    std::string whole;
    for (const char step : {'1', '2', '3', '4', '5', '6', '7'})
        whole += std::string("Loading File #") + step + ": C:\\a\n";
    EXPECT_EQ(loadsIn(whole), "kind: log\nbytes: 154\nloads:\n  - file: C:\\a\n    finished: yes\n"
                              "    last step: 7\n"
                              "    reached: ready to be named in the title and saved\n" +
                                  steps);
}

TEST(Decoding, explainsEachStepOfALoad)
{
    std::string log;
    for (const char step : {'1', '2', '3', '4', '5', '6', '7'}) {
        log += std::string("Loading File #") + step + ": C:\\a\n";
        const Report report = decode(ExchangeKind::debugLog, log).report;
        EXPECT_EQ(report["loads"][0]["reached"], report["steps"][std::string{step}]) << step;
    }
}

TEST(Decoding, separatesInterleavedLoads)
{
    const Outcome outcome =
        decode(ExchangeKind::debugLog, "Loading File #1: a\nLoading File #1: b\n"
                                       "Loading File #2: a\nLoading File #2: b\n"
                                       "Loading File #3: a\n");
    EXPECT_EQ(outcome.exitCode, done);
    EXPECT_EQ(outcome.report["loads"].dump(), R"([{"file":"a","finished":false,"lastStep":3,)"
                                              R"("reached":"machine settings taken"},)"
                                              R"({"file":"b","finished":false,"lastStep":2,)"
                                              R"("reached":"opened by the host, and named"}])");
}

TEST(Decoding, showsBadLinesOfALog)
{
    const Outcome outcome = decode(ExchangeKind::debugLog,
                                   "Loading File #2: a\nLoading File #1: a\nLoading File #3: a\n"
                                   "Loading File #8: a\nhello\nLoading File #2:\n");
    EXPECT_EQ(outcome.exitCode, problem);
    EXPECT_EQ(outcome.report["badLines"].dump(), "[1,3,4,5,6]");
    EXPECT_EQ(outcome.report["loads"][0]["lastStep"], 1);
}

TEST(NoticeReport, showsUnknownBytes)
{
    EXPECT_EQ(noticeReport("TOOL-017\n").dump(),
              R"({"notice":"unknown","hex":"544F4F4C2D3031370A","text":"TOOL-017 "})");
    EXPECT_EQ(noticeReport("ZEMID=4294967295|C:\\a\n").dump(),
              R"({"notice":"commit","id":null,"file":"C:\\a"})");
}
