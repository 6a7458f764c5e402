#include "tools/zemlink/verify/rule_report.h"

#include <cstdio>
#include <string_view>

namespace zemlink {
namespace {

constexpr size_t stateColumn = 10;
constexpr size_t idColumn = 32;

const char* wordOf(RuleState state)
{
    switch (state) {
    case RuleState::kept:
        return "kept";
    case RuleState::broken:
        return "broken";
    case RuleState::notSeen:
        break;
    }
    return "not seen";
}

std::string padded(std::string text, size_t columns)
{
    if (text.size() < columns)
        text.resize(columns, ' ');
    else
        text += ' ';
    return text;
}

// For text and attributes. XML has no way to write control characters, and no bytes but UTF-8,
// which a program that is verified can send.
std::string asXml(const std::string& text)
{
    std::string xml;
    for (const char c : visible(text))
        if (c == '&')
            xml += "&amp;";
        else if (c == '<')
            xml += "&lt;";
        else if (c == '>')
            xml += "&gt;";
        else if (c == '"')
            xml += "&quot;";
        else
            xml += c;
    return xml;
}

std::string attribute(const char* name, const std::string& value)
{
    return std::string(" ") + name + "=\"" + asXml(value) + '"';
}

std::string secondsText(std::int64_t milliseconds)
{
    char text[32];
    std::snprintf(text, sizeof text, "%lld.%03lld", static_cast<long long>(milliseconds / 1000),
                  static_cast<long long>(milliseconds % 1000));
    return text;
}

// The part of the id before the point is the group, which JUnit calls the class.
std::string testCase(const Verified& verified, const Finding& finding)
{
    const std::string& id = finding.rule.id;
    std::string xml = "    <testcase" +
                      attribute("classname", verified.kind + '.' + id.substr(0, id.find('.'))) +
                      attribute("name", id) + attribute("time", secondsText(finding.tookMs));
    if (finding.sight.state == RuleState::kept)
        return xml + "/>\n";
    const bool isBroken = finding.sight.state == RuleState::broken;
    xml += std::string(">\n      <") + (isBroken ? "failure" : "skipped") +
           attribute("message", finding.sight.what);
    xml += isBroken ? '>' + asXml(finding.rule.text) + "</failure>\n" : std::string("/>\n");
    return xml + "    </testcase>\n";
}

} // namespace

std::string findingText(const Finding& finding)
{
    std::string text = padded(wordOf(finding.sight.state), stateColumn) +
                       padded(finding.rule.id, idColumn) + finding.rule.text + '\n';
    if (finding.sight.state != RuleState::kept)
        text += std::string(stateColumn, ' ') + visible(finding.sight.what) + '\n';
    return text;
}

std::string summaryText(const Findings& findings)
{
    return std::to_string(findings.size()) +
           " rules: " + std::to_string(countOf(findings, RuleState::kept)) + " kept, " +
           std::to_string(countOf(findings, RuleState::broken)) + " broken, " +
           std::to_string(countOf(findings, RuleState::notSeen)) + " not seen\n";
}

Report verifyReport(const Verified& verified, const Findings& findings)
{
    Report report{{"verified", verified.kind},
                  {"path", verified.path},
                  {"kept", countOf(findings, RuleState::kept)},
                  {"broken", countOf(findings, RuleState::broken)},
                  {"notSeen", countOf(findings, RuleState::notSeen)},
                  {"rules", Report::array()}};
    for (const Finding& finding : findings) {
        Report rule{{"id", finding.rule.id},
                    {"rule", finding.rule.text},
                    {"result", wordOf(finding.sight.state)}};
        if (!finding.sight.what.empty())
            rule["seen"] = finding.sight.what;
        rule["milliseconds"] = finding.tookMs;
        report["rules"].push_back(rule);
    }
    return report;
}

std::string junitText(const Verified& verified, const Findings& findings)
{
    std::int64_t tookMs = 0;
    for (const Finding& finding : findings)
        tookMs += finding.tookMs;
    std::string xml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites>\n  <testsuite" +
                      attribute("name", "zemlink verify " + verified.kind) +
                      attribute("tests", std::to_string(findings.size())) +
                      attribute("failures", std::to_string(countOf(findings, RuleState::broken))) +
                      attribute("errors", "0") +
                      attribute("skipped", std::to_string(countOf(findings, RuleState::notSeen))) +
                      attribute("time", secondsText(tookMs)) + ">\n    <properties><property" +
                      attribute("name", "path") + attribute("value", verified.path) +
                      "/></properties>\n";
    for (const Finding& finding : findings)
        xml += testCase(verified, finding);
    return xml + "  </testsuite>\n</testsuites>\n";
}

} // namespace zemlink
