#include "host/barriers.h"

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>

using namespace torvapdm;

namespace {

// An MFC exception that counts its destructor calls.
class WatchedException : public CException {
public:
    ~WatchedException() override { ++ended; }
    static inline int ended = 0;
};

template <class Thrown>
auto throwing(Thrown thrown)
{
    return [thrown]() -> int { throw thrown; };
}

} // namespace

TEST(Barrier, returnsTheBodysResult)
{
    EXPECT_EQ(barrier(
                  0, [] { return 7; }),
              7);
    EXPECT_EQ(barrierExceptFor<CException*>(0, [] { return 7; }), 7);
}

TEST(Barrier, returnsTheDefaultForEveryException)
{
    EXPECT_EQ(barrier(3, throwing(std::bad_alloc())), 3);
    EXPECT_EQ(barrier(3, throwing(5)), 3);
    EXPECT_EQ(barrier(3, []() -> int { throw new WatchedException; }), 3);
    EXPECT_EQ(WatchedException::ended, 1);
}

TEST(Barrier, passesOnOnlyTheNamedException)
{
    const auto outOfRange = throwing(std::out_of_range("short"));
    EXPECT_THROW(barrierExceptFor<const std::out_of_range&>(3, outOfRange), std::out_of_range);
    EXPECT_EQ(barrierExceptFor<const std::out_of_range&>(3, throwing(std::bad_alloc())), 3);
    EXPECT_EQ(
        barrierExceptFor<const std::out_of_range&>(3, []() -> int { throw new WatchedException; }),
        3);
    EXPECT_EQ(WatchedException::ended, 1);
}

TEST(Barrier, passesOnALiveFrameworkException)
{
    EXPECT_EQ(barrierExceptFor<CException*>(3, throwing(std::bad_alloc())), 3);
    try {
        barrierExceptFor<CException*>(3, []() -> int { throw new WatchedException; });
        FAIL() << "nothing passed";
    } catch (CException* exception) {
        EXPECT_EQ(WatchedException::ended, 0);
        exception->Delete();
    }
    EXPECT_EQ(WatchedException::ended, 1);
}
