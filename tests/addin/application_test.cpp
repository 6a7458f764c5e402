#include "addin/application.h"

#include <gtest/gtest.h>

namespace {

// Opens the protected accessors to the test.
struct Opened : CtorvapdmApp {
    using CtorvapdmApp::GetMessageMap;
    using CtorvapdmApp::GetThisMessageMap;
};

} // namespace

TEST(Application, startsAndHasNoName)
{
    CtorvapdmApp application;
    EXPECT_EQ(application.InitInstance(), TRUE);
    EXPECT_EQ(application.m_pszAppName, nullptr);
}

TEST(Application, registersItselfWithTheFramework)
{
    const CtorvapdmApp application;
    EXPECT_EQ(AfxGetApp(), &application);
}

TEST(Application, hasAnEmptyMessageMapOfItsOwn)
{
    const Opened application;
    EXPECT_EQ(application.GetMessageMap(), Opened::GetThisMessageMap());
    EXPECT_EQ(application.GetMessageMap()->rows[0].handler, nullptr);
}
