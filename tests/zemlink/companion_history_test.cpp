// What the Companion's log has about requests, its port and commits.
#include "tools/zemlink/reports/companion_history.h"

#include <gtest/gtest.h>

using namespace zemlink;

namespace {

// The events, each with the same time.
CompanionEvents logged(std::initializer_list<const char*> events)
{
    std::string bytes;
    for (const char* event : events)
        bytes += std::string("2026-11-21 10:11:12.345 ") + event + '\n';
    return eventsIn(bytes);
}

} // namespace

TEST(CompanionHistory, hasTheOpenRequests)
{
    const auto requests = sentRequests(
        logged({R"(sent id=17 host=4711 file="C:\a.mcam")", "new-file id=5 host=4711",
                "sent id=x host=1", R"(sent id=-2 host=4294967295 file="C:\b c.mcam")"}));
    ASSERT_EQ(requests.size(), 2u);
    EXPECT_EQ(requests[0].id, 17);
    EXPECT_EQ(requests[0].host, 4711u);
    EXPECT_EQ(requests[0].file, "C:\\a.mcam");
    EXPECT_EQ(requests[1].id, -2);
    EXPECT_EQ(requests[1].host, 4294967295u);
}

TEST(CompanionHistory, hasThePortOfTheLastStart)
{
    const char* const started = R"(started folder="C:\ZEM" pid=12)";
    const char* const taken = "port-taken port=4559 error=10048";
    EXPECT_EQ(hasPort(logged({}), 12), std::nullopt);
    EXPECT_EQ(hasPort(logged({started}), 12), true);
    EXPECT_EQ(hasPort(logged({started}), 13), std::nullopt);
    EXPECT_EQ(hasPort(logged({started, taken}), 12), false);
    EXPECT_EQ(hasPort(logged({started, taken, "port-open port=4559"}), 12), true);
    EXPECT_EQ(hasPort(logged({started, taken, started}), 12), true);
}

TEST(CompanionHistory, hasRefusedCommitsUntilCommitted)
{
    const char* const refused =
        R"(refused reason="the running program does not answer: --commit "C:\a b.mcam" --id 17")";
    const auto commits = refusedCommits(logged(
        {refused, R"(refused reason="no host is running")", R"(commit file="C:\b.mcam" id=1)",
         R"(refused reason="the running program does not answer: --about --parentwindow 5")"}));
    ASSERT_EQ(commits.size(), 1u);
    EXPECT_EQ(commits[0].file, "C:\\a b.mcam");
    EXPECT_EQ(commits[0].time, "2026-11-21 10:11:12.345");
    EXPECT_TRUE(refusedCommits(logged({refused, R"(commit file="C:\a b.mcam" id=17)"})).empty());
}
