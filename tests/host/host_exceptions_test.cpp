#include "host/barriers.h"

#include <gtest/gtest.h>

#include <new>
#include <string>
#include <vector>

using namespace torvapdm;

namespace {

std::vector<std::string> calls;

// An MFC exception that records the calls made to it.
class NotedException : public CException {
public:
    ~NotedException() override { calls.push_back("end"); }
    BOOL GetErrorMessage(LPWSTR buffer, UINT bufferLength, PUINT helpContext) const override
    {
        calls.push_back("message of " + std::to_string(bufferLength) +
                        (helpContext ? " help" : ""));
        for (UINT i = 0; i < bufferLength; ++i)
            buffer[i] = L'm'; // the whole buffer is writable
        return TRUE;
    }
};

const std::vector<std::string> discarding = {"message of 255", "end"};

} // namespace

TEST(HostException, isDeletedAfterItsMessageIsRead)
{
    discard(new NotedException);
    EXPECT_EQ(calls, discarding);
}

TEST(HostCall, returnsFalseWhenTheHostRaises)
{
    EXPECT_TRUE(callHost([] {}));
    EXPECT_EQ(calls, std::vector<std::string>{});
    EXPECT_FALSE(callHost([] { throw new NotedException; }));
    EXPECT_EQ(calls, discarding);
}

TEST(HostCall, passesOnEveryOtherException)
{
    EXPECT_THROW(callHost([] { throw std::bad_alloc(); }), std::bad_alloc);
}
