#include "peer/delivery.h"

#include <gtest/gtest.h>

using namespace peer;

namespace {

constexpr DeliveryBounds bounds{.beforeWritingMs = 100, .untilTakenMs = 200, .missingMs = 50};
constexpr Sight missing{};
constexpr Sight empty{.exists = true, .size = 0};
constexpr Sight filled{.exists = true, .size = 5'000'000'000};

struct Case {
    Sight sight;
    int waitedMs;
    int missingMs;
    Verdict expected;
};

using Judge = Verdict (*)(const Sight&, std::int64_t, std::int64_t, const DeliveryBounds&);

void expectEach(Judge judge, const std::vector<Case>& cases)
{
    for (const Case& c : cases)
        EXPECT_EQ(judge(c.sight, c.waitedMs, c.missingMs, bounds), c.expected)
            << "exists " << c.sight.exists << ", size " << c.sight.size << ", waited " << c.waitedMs
            << ", missing " << c.missingMs;
}

} // namespace

TEST(DeliveryBeforeWriting, writesIntoAnEmptyFile)
{
    expectEach(judgeBeforeWriting, {{empty, 0, 0, Verdict::write}, {empty, 99, 0, Verdict::write}});
}

TEST(DeliveryBeforeWriting, waitsWhileAnEarlierRequestFillsTheFile)
{
    expectEach(judgeBeforeWriting, {{filled, 0, 0, Verdict::wait}, {filled, 99, 0, Verdict::wait}});
}

TEST(DeliveryBeforeWriting, givesUpAFileThatStaysFullOrCannotBeWritten)
{
    expectEach(judgeBeforeWriting,
               {{filled, 100, 0, Verdict::full}, {empty, 100, 0, Verdict::full}});
}

TEST(DeliveryBeforeWriting, givesUpAFileThatStaysMissing)
{
    expectEach(judgeBeforeWriting, {{missing, 0, 0, Verdict::wait},
                                    {missing, 500, 49, Verdict::wait},
                                    {missing, 50, 50, Verdict::missing}});
}

TEST(DeliveryAfterWriting, hasEndedWhenTheFileIsEmptyAgain)
{
    expectEach(judgeAfterWriting,
               {{empty, 0, 0, Verdict::taken}, {empty, 100000, 0, Verdict::taken}});
}

TEST(DeliveryAfterWriting, waitsWhileTheRequestIsThere)
{
    expectEach(judgeAfterWriting, {{filled, 0, 0, Verdict::wait}, {filled, 199, 0, Verdict::wait}});
}

TEST(DeliveryAfterWriting, givesUpARequestThatStays)
{
    expectEach(judgeAfterWriting, {{filled, 200, 0, Verdict::notTaken}});
}

TEST(DeliveryAfterWriting, bearsWithAFileThatIsMissingForAMoment)
{
    expectEach(judgeAfterWriting, {{missing, 0, 0, Verdict::wait},
                                   {missing, 500, 49, Verdict::wait},
                                   {missing, 50, 50, Verdict::lost}});
}

TEST(DeliveryBounds, leaveAHostTenSecondsAndAMissingFileTwo)
{
    const DeliveryBounds usual;
    EXPECT_EQ(usual.beforeWritingMs, 10000);
    EXPECT_EQ(usual.untilTakenMs, 10000);
    EXPECT_EQ(usual.missingMs, 2000);
}
