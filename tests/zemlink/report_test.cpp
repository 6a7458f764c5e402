#include "tools/zemlink/reports/file_reports.h"
#include "tools/zemlink/reports/report.h"
#include "tools/zemlink/verify/rule_report.h"

#include <gtest/gtest.h>

using namespace zemlink;

TEST(ReportText, showsScalarsListsAndEmptyValues)
{
    EXPECT_EQ(asText({{"ncPath", -1},
                      {"MCXCATIA", true},
                      {"numbers", {1, 2}},
                      {"nothing", nullptr},
                      {"emptyText", ""},
                      {"odd", "a\r\x1F"},
                      {"emptyList", Report::array()},
                      {"pairs", {Report{{"a", "x"}, {"b", {{"c", 0.5}}}}}}}),
              "nc path: -1\nMCXCATIA: yes\nnumbers:\n  - 1\n  - 2\nnothing: none\n"
              "empty text: none\nodd: a<0D><1F>\nempty list: none\npairs:\n  - a: x\n    b:\n      "
              "c: 0.5\n");
}

TEST(ReportText, escapesControlCharacters)
{
    EXPECT_EQ(visible("a\r\x1B[1m\x7F b"), "a<0D><1B>[1m<7F> b");
    EXPECT_EQ(visible("\xC2\x9B"
                      "1m \xE2\x80\xAE"
                      "x \xC3\xA4"),
              "<9B>1m <202E>x \xC3\xA4");
}

TEST(ReportJson, isIndentedOrOneLine)
{
    const Report report{{"number", 1}, {"text", "a\xFF"}}; // not UTF-8
    EXPECT_EQ(jsonText(report, JsonLayout::oneLine), "{\"number\":1,\"text\":\"a\xEF\xBF\xBD\"}\n");
    EXPECT_EQ(jsonText(report, JsonLayout::indented),
              "{\n  \"number\": 1,\n  \"text\": \"a\xEF\xBF\xBD\"\n}\n");
}

TEST(ReportText, hasColoursForATerminal)
{
    EXPECT_EQ(coloured("problems: none\nfine:\n  - a\n"),
              "problems: \x1B[32mnone\x1B[0m\nfine:\n  - a\n");
    EXPECT_EQ(coloured("problems:\n  - name: port-held\n    what: x\n"),
              "problems:\n  - name: \x1B[1;31mport-held\x1B[0m\n    what: x\n");
    EXPECT_EQ(coloured("hosts:\n  - name: x\n"), "hosts:\n  - name: x\n");
}

TEST(SettingsReport, listsTheFourSettings)
{
    const auto inForce = [](std::string_view bytes) { return settingsReport(bytes).dump(); };
    const std::string off =
        R"({"UseFtpServer":false,"AlwaysSaveTools":false,"MCXCATIA":false,"MCXIMPORTNC":true})";
    EXPECT_EQ(inForce(""), off);
    EXPECT_EQ(inForce("AlwaysSaveTools=Y\nMCXIMPORTNC=n\nMCXIMPORTNC=Y\nUseFtpServer=yes\n"), off);
    EXPECT_EQ(
        inForce("AlwaysSaveTools=yes\nMCXIMPORTNC=Y MCXIMPORTNC=n\nUseFtpServer=Y\nMCXCATIA=y\n"),
        R"({"UseFtpServer":true,"AlwaysSaveTools":true,"MCXCATIA":true,"MCXIMPORTNC":false})");
}

namespace {

const Findings findings = {{{"start.window", "Has a window."}, {}, 1234},
                           {{"commits.lock", "Respects \"<locks>\"."}, broken("a & b\r\x1F"), 5},
                           {{"requests.open", "Writes requests."}, notSeen("--open is missing")}};

} // namespace

TEST(VerifyReport, isATableWithWhatWasSeen)
{
    std::string table;
    for (const Finding& finding : findings)
        table += findingText(finding);
    EXPECT_EQ(table, "kept      start.window                    Has a window.\n"
                     "broken    commits.lock                    Respects \"<locks>\".\n"
                     "          a & b<0D><1F>\n"
                     "not seen  requests.open                   Writes requests.\n"
                     "          --open is missing\n");
    EXPECT_EQ(summaryText(findings), "3 rules: 1 kept, 1 broken, 1 not seen\n");
}

TEST(VerifyReport, isWellFormedJUnit)
{
    EXPECT_EQ(junitText({"companion", "C:\\a & b.exe"}, findings),
              R"(<?xml version="1.0" encoding="UTF-8"?>
<testsuites>
  <testsuite name="zemlink verify companion" tests="3" failures="1" errors="0" skipped="1" time="1.239">
    <properties><property name="path" value="C:\a &amp; b.exe"/></properties>
    <testcase classname="companion.start" name="start.window" time="1.234"/>
    <testcase classname="companion.commits" name="commits.lock" time="0.005">
      <failure message="a &amp; b&lt;0D&gt;&lt;1F&gt;">Respects &quot;&lt;locks&gt;&quot;.</failure>
    </testcase>
    <testcase classname="companion.requests" name="requests.open" time="0.000">
      <skipped message="--open is missing"/>
    </testcase>
  </testsuite>
</testsuites>
)");
    EXPECT_NE(junitText({"companion", "C:\\\xE4.exe"}, {}).find("C:\\\xEF\xBF\xBD.exe"),
              std::string::npos);
}
