// What all host operations have in common: default results without a running host, scripted
// failures and exceptions, one exact trace line.
#include "standin_host/operation_table.h"
#include "support/host_fixture.h"

#include <set>

using namespace testing_support;
using Kind = HostOperation::Kind;

namespace {

bool endsWithoutException(void (*call)())
{
    try {
        call();
        return true;
    } catch (CException* exception) {
        exception->Delete();
        return false;
    }
}

class HostOperations : public HostFixture {
protected:
    HostOperations()
    {
        const std::wstring part = makePart();
        writeBytes(part, tablePart);
        standin::putPart(part);
        standin::setState("setup_sheet_files", L"");
        operations = hostOperations(
            {part, installation.path(L"out.mcam"), GetMastercamApp(), Planes.GetPlanePtrByID(1)});
        part_ = part;
        newTrace();
    }
    Lines lineEndingIn(const HostOperation& operation, const std::wstring& end)
    {
        return operation.kind == Kind::question ? Lines{} : Lines{L"ui " + operation.line + end};
    }
    Lines lineWith(const HostOperation& operation, const std::wstring& answer)
    {
        return lineEndingIn(operation, operation.kind == Kind::result ? L" -> " + answer : L"");
    }
    void expectWorks(const HostOperation& operation)
    {
        EXPECT_EQ(operation.call(), operation.works) << operation.name;
        EXPECT_EQ(newTrace(), lineWith(operation, operation.works)) << operation.name;
        restorePart();
    }
    void expectFails(const HostOperation& operation)
    {
        EXPECT_EQ(operation.call(), operation.fails) << operation.name;
        EXPECT_EQ(newTrace(), lineWith(operation, operation.fails)) << operation.name;
    }
    void expectRaises(const HostOperation& operation)
    {
        bool raised = false;
        try {
            operation.call();
        } catch (CException* exception) {
            raised = true;
            EXPECT_EQ(standin::undeletedExceptions(), 1) << operation.name;
            exception->Delete();
        }
        EXPECT_TRUE(raised) << operation.name;
        EXPECT_EQ(standin::undeletedExceptions(), 0) << operation.name;
        EXPECT_EQ(newTrace(), lineEndingIn(operation, L" raised")) << operation.name;
    }

    std::vector<HostOperation> operations;

private:
    // Not after every call: the host keeps only a few replaced parts, and the plane belongs to one.
    void restorePart()
    {
        if (TpMainOpMgr.GetMainOpList().GetSize() != 3 || part_ != geo_filename)
            standin::putPart(part_);
    }

    std::wstring part_;
};

void expectDefaults(const std::vector<HostOperation>& operations)
{
    for (const HostOperation& operation : operations) {
        const std::wstring answer = operation.call();
        const bool hasResult = operation.kind != Kind::action;
        EXPECT_EQ(hasResult ? answer : operation.fails, operation.fails) << operation.name;
    }
}

} // namespace

TEST_F(HostOperations, traceOneLineExceptQueries)
{
    for (const HostOperation& operation : operations)
        expectWorks(operation);
}

TEST_F(HostOperations, areAllTested)
{
    std::set<std::string> names;
    for (const HostOperation& operation : operations)
        names.insert(operation.name);
    EXPECT_EQ(names.size(), 34u);
    EXPECT_EQ(names.size(), operations.size());
}

TEST_F(HostOperations, failOnceByName)
{
    for (const HostOperation& operation : operations) {
        ASSERT_TRUE(standin::failNext(operation.name)) << operation.name;
        expectFails(operation);
        expectWorks(operation);
    }
}

TEST_F(HostOperations, raiseOnceByName)
{
    for (const HostOperation& operation : operations) {
        ASSERT_TRUE(standin::raiseNext(operation.name)) << operation.name;
        expectRaises(operation);
        expectWorks(operation);
    }
}

TEST_F(HostOperations, failGivenNumberOfTimes)
{
    standin::failNext("SetActiveMachine", 2);
    EXPECT_FALSE(SetActiveMachine(L"a"));
    EXPECT_FALSE(SetActiveMachine(L"a"));
    EXPECT_TRUE(SetActiveMachine(L"a"));
    standin::failNext("SetActiveMachine", 2);
    standin::failNext("SetActiveMachine", 0);
    EXPECT_TRUE(SetActiveMachine(L"a"));
}

TEST_F(HostOperations, raiseOnlyAtGivenCall)
{
    const auto raises = [] { return !endsWithoutException([] { SetActiveMachine(L"a"); }); };
    ASSERT_TRUE(standin::raiseAt("SetActiveMachine", 3));
    for (const bool expected : {false, false, true, false})
        EXPECT_EQ(raises(), expected);
    standin::raiseAt("SetActiveMachine", 1);
    EXPECT_TRUE(raises());
    standin::raiseAt("SetActiveMachine", 1);
    standin::raiseAt("SetActiveMachine", 0);
    EXPECT_FALSE(raises());
    EXPECT_EQ(standin::undeletedExceptions(), 0);
}

TEST_F(HostOperations, rejectUnknownNames)
{
    for (const char* name : {"", "dofileopen", "DoFileOpen()", "position0", "m_open"}) {
        EXPECT_FALSE(standin::failNext(name)) << name;
        EXPECT_FALSE(standin::raiseNext(name)) << name;
        EXPECT_FALSE(standin::raiseAt(name, 1)) << name;
    }
    EXPECT_FALSE(standin::failNext("DoFileOpen", -1));
}

TEST_F(HostOperations, callerOwnsException)
{
    standin::raiseNext("GetApp", 2);
    CException* held[2]{};
    for (CException*& exception : held)
        try {
            GetApp();
        } catch (CException* caught) {
            exception = caught;
        }
    ASSERT_TRUE(held[0] && held[1]);
    EXPECT_EQ(standin::undeletedExceptions(), 2);
    wchar_t text[100] = L"";
    EXPECT_TRUE(held[0]->GetErrorMessage(text, 100));
    EXPECT_STRNE(text, L"");
    held[0]->Delete();
    EXPECT_EQ(standin::undeletedExceptions(), 1);
    held[1]->Delete();
    EXPECT_EQ(standin::undeletedExceptions(), 0);
}

TEST_F(HostOperations, returnDefaultsAfterStop)
{
    standin::stopHost();
    newTrace();
    expectDefaults(operations);
    EXPECT_EQ(newTrace(), Lines{});
    EXPECT_FALSE(readBytes(installation.path(L"out.mcam")).has_value());
}

TEST(HostNotRunning, operationsReturnDefaults)
{
    const Installation installation;
    const std::wstring part = installation.path(L"part.mcam");
    writeBytes(part, tablePart);
    expectDefaults(hostOperations({part, installation.path(L"out.mcam")}));
    EXPECT_FALSE(standin::putPart(part));
    EXPECT_FALSE(standin::setState("title", L"a"));
    EXPECT_EQ(standin::knownState("title"), std::nullopt);
    standin::trace(L"line");
    EXPECT_EQ(standin::traceLines(), Lines{});
    EXPECT_FALSE(readBytes(installation.path(L"out.mcam")).has_value());
    EXPECT_EQ(geo_filename[0], L'\0');
}
