#include "tooldata/setup_sheet.h"

#include "addin/exports.h"
#include "framework/framework.h"
#include "link/shared_values.h"
#include "support/host_fixture.h"
#include "support/line_receiver.h"

using namespace torvapdm;
using namespace testing_support;

namespace {

class SetupSheet : public HostFixture {
protected:
    const LineReceiver companion;
    const Lines ran = {L"ui RunSetupSheetOnSelectedOpsWithoutUI(*) -> true"};
};

} // namespace

TEST_F(SetupSheet, lineHasNoSeparatorBetweenItsWords)
{
    EXPECT_EQ(setupSheetLine(42, L"C:\\P.xml"), L"MCAMXMLIMPORTDATAID=42;C:\\P.xml");
    EXPECT_EQ(setupSheetLine(-1, L""), L"MCAMXMLIMPORTDATAID=-1;");
}

TEST_F(SetupSheet, isAnnouncedByItsFirstFileAlone)
{
    standin::setState("setup_sheet_files", L"C:\\one.xml;C:\\two.xml;C:\\three.xml");
    currentRequestId = 17;
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

TEST_F(SetupSheet, isAnnouncedAlsoWhenTheHostReportsFailureButNamesAFile)
{
    standin::setState("setup_sheet_files", L"C:\\one.xml");
    EXPECT_EQ(m_tools(0), 0);
    EXPECT_EQ(companion.nextConnection(), "MCAMXMLIMPORTDATAID=0;C:\\one.xml\n");
}

TEST_F(SetupSheet, goesOutInTheThreadsCodePage)
{
    standin::setState("setup_sheet_files", L"C:\\\u00C4\u4E00.xml");
    SetThreadLocale(MAKELCID(MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US), SORT_DEFAULT));
    sendSetupSheet();
    EXPECT_EQ(companion.nextConnection(), "MCAMXMLIMPORTDATAID=0;C:\\\xC4?.xml\n");
}

TEST_F(SetupSheet, passesTheHostsExceptionOnToItsCaller)
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

TEST_F(SetupSheet, ofTheToolsEntryHasItsExceptionsSwallowed)
{
    standin::raiseNext("RunSetupSheetOnSelectedOpsWithoutUI");
    EXPECT_EQ(m_tools(0), 0);
    EXPECT_EQ(newTrace(), Lines{L"ui RunSetupSheetOnSelectedOpsWithoutUI(*) raised"});
    EXPECT_EQ(standin::undeletedExceptions(), 0);
    EXPECT_TRUE(companion.isIdle());
}
