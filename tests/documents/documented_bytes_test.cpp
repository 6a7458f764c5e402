// Compares the dumps in the pages with the bytes written by the programs.
#include "documents/exchange_runs.h"
#include "documents/pages.h"
#include "tools/zemlink/reports/decode.h"
#include "tools/zemlink/reports/file_reports.h"
#include "tools/zemlink/reports/report.h"

#include <gtest/gtest.h>
#include <set>

using namespace documents;
using namespace testing_support;

namespace testing_support {

// Used by GoogleTest.
static void PrintTo(const ExchangeRun& run, std::ostream* stream)
{
    *stream << run.name;
}
static void PrintTo(const GivenBytes& bytes, std::ostream* stream)
{
    *stream << bytes.dump;
}

} // namespace testing_support

namespace {

void expectShown(const std::string& name, const std::string& bytes)
{
    const auto dumps = dumpsOfPages();
    const auto dump = dumps.find(name);
    const std::string where =
        dump == dumps.end() ? "no page has a sound dump of it" : difference(bytes, dump->second);
    EXPECT_EQ(where, "") << "what was written:\n" << asBlock(name, bytes.substr(0, 1024));
}

class EachRun : public ::testing::TestWithParam<ExchangeRun> {};
class EachGivenDump : public ::testing::TestWithParam<GivenBytes> {};

std::string testName(const std::string& dump)
{
    std::string name = dump;
    std::erase(name, '-');
    return name;
}

// Settings are recognised only by the name of their file.
std::optional<zemlink::ExchangeKind> kindOfDump(std::string_view name, std::string_view bytes)
{
    return zemlink::kindOf(name == "settings" ? L"settings.ini" : L"", bytes);
}

} // namespace

TEST_P(EachRun, writesWhatThePagesShow)
{
    const Made made = GetParam().make();
    std::set<std::string> names;
    for (const auto& [name, bytes] : made) {
        names.insert(name);
        expectShown(name, bytes);
    }
    EXPECT_EQ(names, std::set(GetParam().dumps.begin(), GetParam().dumps.end()));
}

INSTANTIATE_TEST_SUITE_P(Pages, EachRun, ::testing::ValuesIn(exchangeRuns),
                         [](const auto& run) { return std::string(run.param.name); });

TEST_P(EachGivenDump, doesWhatThePageSays)
{
    const auto dumps = dumpsOfPages();
    ASSERT_TRUE(dumps.contains(GetParam().dump)) << "no page has a sound dump of it";
    GetParam().give(bytesOf(dumps.at(GetParam().dump)).value_or(""));
}

INSTANTIATE_TEST_SUITE_P(Pages, EachGivenDump, ::testing::ValuesIn(givenBytes),
                         [](const auto& bytes) { return testName(bytes.param.dump); });

TEST(Pages, haveOnlySoundDumps)
{
    for (const FencedBlock& block : blocksOfPages("dump"))
        EXPECT_EQ(parseDump(block).fault, "") << block.page << ": " << block.name;
}

TEST(Pages, showEachTestedDumpOnce)
{
    std::multiset<std::string> read;
    for (const ExchangeRun& run : exchangeRuns)
        read.insert(run.dumps.begin(), run.dumps.end());
    for (const GivenBytes& bytes : givenBytes)
        read.insert(bytes.dump);
    std::multiset<std::string> shown;
    for (const FencedBlock& block : blocksOfPages("dump"))
        shown.insert(block.name);
    EXPECT_EQ(shown, read);
}

TEST(Pages, showTheSupportToolsDecoding)
{
    const auto dumps = dumpsOfPages();
    const auto blocks = blocksOfPages("decoded");
    EXPECT_FALSE(blocks.empty());
    for (const FencedBlock& block : blocks) {
        ASSERT_TRUE(dumps.contains(block.name)) << block.page << ": " << block.name;
        const std::string bytes = bytesOf(dumps.at(block.name)).value_or("");
        const auto kind = kindOfDump(block.name, bytes);
        ASSERT_TRUE(kind) << block.page << ": " << block.name;
        const std::string text = zemlink::asText(zemlink::decode(*kind, bytes).report);
        std::string shown;
        for (const std::string& line : block.lines)
            shown += line + '\n';
        EXPECT_TRUE(shown == text) << block.page << ": the block as it should stand:\n"
                                   << "```decoded " << block.name << '\n'
                                   << text << "```";
    }
}

TEST(Pages, showOnlySoundExchanges)
{
    const auto dumps = dumpsOfPages();
    for (const char* name : {"open-request", "new-file-request", "check-in-request", "settings",
                             "machine-settings", "commit-records", "nc-queue", "tool-data"}) {
        const std::string bytes = bytesOf(dumps.at(name)).value_or("");
        const auto kind = kindOfDump(name, bytes);
        EXPECT_TRUE(kind && zemlink::decode(*kind, bytes).exitCode == zemlink::done) << name;
    }
    for (const char* name :
         {"commit-notice", "setup-sheet-notice", "queue-notice", "tools-notice"}) {
        const std::string bytes = bytesOf(dumps.at(name)).value_or("");
        EXPECT_NE(zemlink::noticeReport(bytes)["notice"], "unknown") << name;
    }
}
