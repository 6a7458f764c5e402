#include "outgoing/setup_sheet.h"

#include "addin/exports.h"
#include "framework/framework.h"
#include "support/add_in_state.h"
#include "platform/narrow_text.h"
#include "support/host_fixture.h"
#include "support/sockets.h"
#include "support/system_calls.h"
#include "host/host.h"

using namespace torvapdm;
using namespace testing_support;

namespace {

class SetupSheet : public HostFixture {
protected:
    const LineReceiver companion;
    const Lines ran = {L"ui RunSetupSheetOnSelectedOpsWithoutUI(*) -> true"};
};

bool meanwhileRequest23(CStringArray& files)
{
    AddInState::setRequestId(23);
    files.Add(L"C:\\s.xml");
    return true;
}

} // namespace

TEST_F(SetupSheet, carriesTheIdAfterTheHostsRun)
{
    AddInState::setRequestId(17);
    standin::redirectImports(GetModuleHandleW(nullptr), &RunSetupSheetOnSelectedOpsWithoutUI,
                             &meanwhileRequest23);
    sendSetupSheet();
    EXPECT_EQ(companion.nextConnection(), "MCAMXMLIMPORTDATAID=23;C:\\s.xml\n");
}

TEST_F(SetupSheet, isAnnouncedByItsFirstFileOnly)
{
    standin::setState("setup_sheet_files", L"C:\\one.xml;C:\\two.xml;C:\\three.xml");
    AddInState::setRequestId(17);
    sendSetupSheet();
    EXPECT_EQ(companion.nextConnection(), "MCAMXMLIMPORTDATAID=17;C:\\one.xml\n");
    EXPECT_TRUE(companion.isIdle());
    EXPECT_EQ(newTrace(), ran);
}

TEST_F(SetupSheet, isNotAnnouncedWithoutAFile)
{
    standin::setState("setup_sheet_files", L"");
    sendSetupSheet();
    EXPECT_TRUE(companion.isIdle());
    EXPECT_EQ(newTrace(), ran);
}

TEST_F(SetupSheet, isAnnouncedDespiteAFailure)
{
    standin::setState("setup_sheet_files", L"C:\\one.xml");
    standin::failNext("RunSetupSheetOnSelectedOpsWithoutUI");
    EXPECT_EQ(m_tools(0), 0);
    EXPECT_EQ(companion.nextConnection(), "MCAMXMLIMPORTDATAID=0;C:\\one.xml\n");
    EXPECT_EQ(newTrace(), Lines{L"ui RunSetupSheetOnSelectedOpsWithoutUI(*) -> false"});
}

TEST_F(SetupSheet, isAnnouncedUnderItsExactName)
{
    for (const char* name : {R"(..\..\a.xml)", R"(\\server.invalid\share\a.xml)", "CON",
                             R"(\\.\pipe\nobodys)", "a.xml:stream", "a|b", "a\nZEMID=1|b"}) {
        standin::setState("setup_sheet_files", fromUtf8(name));
        sendSetupSheet();
        EXPECT_EQ(companion.nextConnection(), "MCAMXMLIMPORTDATAID=0;" + std::string(name) + '\n');
    }
}

TEST_F(SetupSheet, isNotAnnouncedUnderALongName)
{
    const std::wstring longest(1023 - 23, L'x'); // less "MCAMXMLIMPORTDATAID=0;" and the line feed
    standin::setState("setup_sheet_files", longest + L'x');
    sendSetupSheet();
    EXPECT_TRUE(companion.isIdle());
    standin::setState("setup_sheet_files", longest);
    sendSetupSheet();
    EXPECT_EQ(companion.nextConnection().value_or("").size(), 1023u);
}

TEST_F(SetupSheet, isSentInTheThreadsCodePage)
{
    standin::setState("setup_sheet_files", L"C:\\\u0416\u4E00.xml");
    // The Russian locale uses code page 1251; the system code page lacks this letter.
    ASSERT_EQ(toNarrowAnsi(L"\u0416"), "?");
    SetThreadLocale(MAKELCID(MAKELANGID(LANG_RUSSIAN, SUBLANG_DEFAULT), SORT_DEFAULT));
    sendSetupSheet();
    EXPECT_EQ(companion.nextConnection(), "MCAMXMLIMPORTDATAID=0;C:\\\xC6?.xml\n");
}

TEST_F(SetupSheet, passesOnTheHostsException)
{
    standin::raiseNext("RunSetupSheetOnSelectedOpsWithoutUI");
    CException* raised = nullptr;
    try {
        sendSetupSheet();
    } catch (CException* exception) {
        raised = exception;
    }
    ASSERT_NE(raised, nullptr);
    raised->Delete();
    EXPECT_TRUE(companion.isIdle());
}

TEST_F(SetupSheet, swallowsExceptionsInTheToolsEntry)
{
    standin::raiseNext("RunSetupSheetOnSelectedOpsWithoutUI");
    EXPECT_EQ(m_tools(0), 0);
    EXPECT_EQ(newTrace(), Lines{L"ui RunSetupSheetOnSelectedOpsWithoutUI(*) raised"});
    EXPECT_EQ(standin::undeletedExceptions(), 0);
    EXPECT_TRUE(companion.isIdle());
}
