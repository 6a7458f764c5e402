#include "peer/delivery.h"

#include <gtest/gtest.h>

using namespace peer;

namespace {

constexpr DeliveryBounds bounds{.beforeWritingMs = 100, .untilTakenMs = 200, .missingMs = 50};
constexpr CommandFileState missing{};
constexpr CommandFileState empty{.exists = true, .size = 0};
constexpr CommandFileState filled{.exists = true, .size = 5'000'000'000};

struct VerdictCase {
    CommandFileState state;
    int waitedMs;
    int missingMs;
    Verdict expected;
};

using Judge = Verdict (*)(const CommandFileState&, std::int64_t, std::int64_t,
                          const DeliveryBounds&);

void expectEach(Judge judge, const std::vector<VerdictCase>& cases)
{
    for (const VerdictCase& c : cases)
        EXPECT_EQ(judge(c.state, c.waitedMs, c.missingMs, bounds), c.expected)
            << "exists " << c.state.exists << ", size " << c.state.size << ", waited " << c.waitedMs
            << ", missing " << c.missingMs;
}

} // namespace

TEST(PeerBeforeWriting, writesIntoAnEmptyFile)
{
    expectEach(judgeBeforeWriting, {{empty, 0, 0, Verdict::write}, {empty, 99, 0, Verdict::write}});
}

TEST(PeerBeforeWriting, waitsForAnEarlierRequest)
{
    expectEach(judgeBeforeWriting, {{filled, 0, 0, Verdict::wait}, {filled, 99, 0, Verdict::wait}});
}

TEST(PeerBeforeWriting, givesUpWhenTheFileStaysFull)
{
    expectEach(judgeBeforeWriting,
               {{filled, 100, 0, Verdict::full}, {empty, 100, 0, Verdict::full}});
}

TEST(PeerBeforeWriting, givesUpWhenTheFileStaysMissing)
{
    expectEach(judgeBeforeWriting, {{missing, 0, 0, Verdict::wait},
                                    {missing, 500, 49, Verdict::wait},
                                    {missing, 50, 50, Verdict::missing}});
}

TEST(PeerAfterWriting, endsWhenTheFileIsEmpty)
{
    expectEach(judgeAfterWriting,
               {{empty, 0, 0, Verdict::taken}, {empty, 100000, 0, Verdict::taken}});
}

TEST(PeerAfterWriting, waitsWhileTheFileIsFull)
{
    expectEach(judgeAfterWriting, {{filled, 0, 0, Verdict::wait}, {filled, 199, 0, Verdict::wait}});
}

TEST(PeerAfterWriting, givesUpARequestThatStays)
{
    expectEach(judgeAfterWriting, {{filled, 200, 0, Verdict::notTaken}});
}

TEST(PeerAfterWriting, toleratesABrieflyMissingFile)
{
    expectEach(judgeAfterWriting, {{missing, 0, 0, Verdict::wait},
                                   {missing, 500, 49, Verdict::wait},
                                   {missing, 50, 50, Verdict::lost}});
}

TEST(PeerDeliveryBounds, areTenAndTwoSeconds)
{
    const DeliveryBounds usual;
    EXPECT_EQ(usual.beforeWritingMs, 10000);
    EXPECT_EQ(usual.untilTakenMs, 10000);
    EXPECT_EQ(usual.missingMs, 2000);
}
