#include "addin/lifecycle.h"

#include <gtest/gtest.h>
#include <type_traits>

namespace {

// Makes the protected accessors public for the test.
struct Opened : CtorvapdmApp {
    using CtorvapdmApp::GetMessageMap;
    using CtorvapdmApp::GetThisMessageMap;
    static const AFX_MSGMAP* basesMessageMap() { return CWinApp::GetThisMessageMap(); }
};

// The class that declares a member function.
template <class Class, class Result>
Class ownerOf(Result (Class::*)());

} // namespace

TEST(Application, startsAndHasNoName)
{
    CtorvapdmApp application;
    EXPECT_EQ(application.InitInstance(), TRUE);
    EXPECT_EQ(application.m_pszAppName, nullptr);
}

TEST(Application, overridesOnlyTheStart)
{
    EXPECT_TRUE((std::is_same_v<decltype(ownerOf(&CtorvapdmApp::InitInstance)), CtorvapdmApp>));
    EXPECT_FALSE((std::is_same_v<decltype(ownerOf(&CtorvapdmApp::ExitInstance)), CtorvapdmApp>));
}

TEST(Application, registersItselfWithTheFramework)
{
    EXPECT_NE(dynamic_cast<CtorvapdmApp*>(AfxGetApp()), nullptr); // the add-in's own
    const CtorvapdmApp application;
    EXPECT_EQ(AfxGetApp(), &application);
}

TEST(Application, hasAnEmptyMessageMapOfItsOwn)
{
    const Opened application;
    EXPECT_EQ(application.GetMessageMap(), Opened::GetThisMessageMap());
    EXPECT_NE(application.GetMessageMap(), Opened::basesMessageMap());
    EXPECT_EQ(application.GetMessageMap()->base(), Opened::basesMessageMap());
    EXPECT_EQ(application.GetMessageMap()->rows[0].handler, nullptr);
}
