// The trace's format and its file.
#include "host/host.h"
#include "control.h"
#include "support/bytes.h"
#include "support/host_fixture.h"

#include <thread>

using namespace testing_support;

namespace {

class Trace : public HostFixture {};

class TraceFile : public ::testing::Test {
protected:
    ~TraceFile() override { standin::stopHost(); }

    bool startTracing(const std::wstring& file)
    {
        standin::HostOptions options;
        options.tracePath = file;
        options.visible = false;
        return standin::startHost(options);
    }

    Installation installation;
    const std::wstring path = installation.path(L"t r\u00E4ce.txt");
};

} // namespace

TEST_F(Trace, namesThreads)
{
    set_db_unchanged();
    std::thread([] { set_db_unchanged(); }).join();
    EXPECT_EQ(newTrace(), (Lines{L"ui set_db_unchanged()", L"other set_db_unchanged()"}));
}

TEST_F(Trace, formatsWindows)
{
    CWnd desktop;
    desktop.m_hWnd = GetDesktopWindow();
    CWnd closed;
    for (CWnd* window : {static_cast<CWnd*>(get_MainFrame()), GetMastercamApp()->position4(),
                         static_cast<CWnd*>(nullptr), &desktop, &closed})
        SaveFile(nullptr, window, true);
    EXPECT_EQ(newTrace(),
              (Lines{L"ui SaveFile(null, main, true) -> 0", L"ui SaveFile(null, main, true) -> 0",
                     L"ui SaveFile(null, null, true) -> 0", L"ui SaveFile(null, other, true) -> 0",
                     L"ui SaveFile(null, other, true) -> 0"}));
}

TEST_F(Trace, formatsStringsUnescaped)
{
    SetActiveMachine(L"");
    SetActiveMachine(L" \"C:\\a\\\" \u4E2D\u00DF ");
    SetActiveMachine(nullptr);
    EXPECT_EQ(newTrace(), (Lines{L"ui SetActiveMachine(\"\") -> false",
                                 L"ui SetActiveMachine(\" \"C:\\a\\\" \u4E2D\u00DF \") -> true",
                                 L"ui SetActiveMachine(null) -> false"}));
}

TEST_F(Trace, formatsAddressesAndNumbers)
{
    bool escaped = true;
    DoFileOpen(L"", true, true, -1, false, &escaped, reinterpret_cast<FileMergeOptions*>(this));
    m_fclose(L"a", -7, reinterpret_cast<FILE*>(this));
    list_manager(-2147483647 - 1, nullptr, -32768, nullptr);
    tool_manager(nullptr, 0, nullptr, nullptr);
    EXPECT_EQ(newTrace(), (Lines{LR"(ui DoFileOpen("", true, true, -1, false, *, *) -> false)",
                                 LR"(ui m_fclose("a", -7, *))",
                                 L"ui list_manager(-2147483648, null, -32768, null)",
                                 L"ui tool_manager(null, 0, null, null)"}));
    EXPECT_FALSE(escaped);
}

TEST_F(Trace, formatsDoublesExactly)
{
    const std::pair<const char*, const wchar_t*> times[] = {
        {"0", L"0"},         {"14.5", L"14.5"},           {"0.1", L"0.1"},
        {"-2.25", L"-2.25"}, {"1234567.5", L"1234567.5"}, {"1e-05", L"1e-05"}};
    for (const auto& [seconds, text] : times) {
        const std::wstring part = makePart();
        writeBytes(part, std::string("mastercam part 1\n[operation]\nid = 1\ncycle-time = ") +
                             seconds + "\n");
        standin::putPart(part);
        CalcCycleTime(*TpMainOpMgr.GetMainOpList()[0], true);
        EXPECT_EQ(newTrace(), Lines{L"ui CalcCycleTime(*, true) -> " + std::wstring(text)});
    }
}

TEST_F(Trace, keepsCustomLines)
{
    standin::trace(L"a  \"b\" \u4E2D ");
    EXPECT_EQ(newTrace(), Lines{L"ui a  \"b\" \u4E2D "});
}

TEST_F(TraceFile, isUtf8AndFlushed)
{
    ASSERT_TRUE(startTracing(path));
    EXPECT_EQ(readBytes(path), "");
    SetActiveMachine(L"\u00FC \u4E2D");
    const std::string line = "ui SetActiveMachine(\"\xC3\xBC \xE4\xB8\xAD\") -> true\n";
    EXPECT_EQ(readBytes(path), line);
    set_db_unchanged();
    EXPECT_EQ(readBytes(path), line + "ui set_db_unchanged()\n");
}

TEST_F(TraceFile, isRecreatedByEachStart)
{
    writeBytes(path, "left over\n");
    ASSERT_TRUE(startTracing(path));
    set_db_unchanged();
    standin::stopHost();
    EXPECT_EQ(readBytes(path), "ui set_db_unchanged()\n");
    ASSERT_TRUE(startTracing(path));
    EXPECT_EQ(readBytes(path), "");
    EXPECT_EQ(standin::traceLines(), Lines{});
}

TEST_F(TraceFile, failureToOpenPreventsStart)
{
    EXPECT_FALSE(startTracing(installation.path(L"nowhere\\trace.txt")));
    EXPECT_EQ(get_MainFrame(), nullptr);
    EXPECT_TRUE(startTracing(path));
}
