#include "addin/exports.h"
#include "support/add_in_state.h"
#include "support/host_fixture.h"
#include "addin/host_events.h"
#include "host/host.h"
#include "support/system_calls.h"

#include <algorithm>

using namespace torvapdm;
using namespace testing_support;

namespace {

// The state that the events read and write.
struct Values {
    std::uint32_t zemId = 5;
    const wchar_t* filePath = L"C:\\a.mcam";
    bool isSaveUnreported = true;
    bool event37 = false;
    bool captureEnabled = false;
    bool capturePending = false;
};

class HostEvents : public HostFixture {
protected:
    void set(const Values& values)
    {
        AddInState::setZemId(values.zemId);
        AddInState::setFilePath(values.filePath);
        AddInState::setSaveUnreported(values.isSaveUnreported);
        AddInState::setEvent37Seen(values.event37);
        AddInState::setCaptureOnCloseEnabled(values.captureEnabled);
        AddInState::setCaptureOnClosePending(values.capturePending);
    }
    void expect(const Values& values)
    {
        EXPECT_EQ(AddInState::zemId(), values.zemId);
        EXPECT_EQ(AddInState::filePath(), values.filePath);
        EXPECT_EQ(AddInState::isSaveUnreported(), values.isSaveUnreported);
        EXPECT_EQ(AddInState::event37Seen(), values.event37);
        EXPECT_EQ(AddInState::captureOnCloseEnabled(), values.captureEnabled);
        EXPECT_EQ(AddInState::captureOnClosePending(), values.capturePending);
    }
    std::wstring captured()
    {
        return L"ui screen_to_bitmap_file(\"" + installation.path(L"commit\\screendump.bmp") +
               L"\", false) -> true";
    }
};

// Whether the save was still unreported when the host was asked to save.
bool wasUnreported = true;

bool notingSave(const wchar_t*, CWnd*, bool, bool)
{
    wasUnreported = AddInState::isSaveUnreported();
    return false;
}

constexpr Values none = {.zemId = 0xFFFFFFFF, .filePath = L""};

} // namespace

TEST_F(HostEvents, startWithTheDeclaredFlags)
{
    expect(none);
}

TEST_F(HostEvents, event3ClearsTheFile)
{
    set({.isSaveUnreported = false, .capturePending = true});
    EXPECT_EQ(m_notify(3), 0);
    expect(none);
}

TEST_F(HostEvents, event4DoesNothingWhileDisabled)
{
    EXPECT_EQ(m_notify(4), 0);
    expect(none);
    set({});
    EXPECT_EQ(m_notify(4), 0);
    expect({});
}

TEST_F(HostEvents, event4RequestsAPictureWhenEnabled)
{
    Values on = none;
    on.captureEnabled = true;
    set(on);
    m_notify(4);
    on.capturePending = true;
    expect(on);

    set({.captureEnabled = true});
    m_notify(4);
    expect({.captureEnabled = true});
}

TEST_F(HostEvents, event5ClearsTheFlagsWithoutAFile)
{
    set(none);
    EXPECT_EQ(m_notify(5), 0);
    Values cleared = none;
    cleared.isSaveUnreported = false;
    expect(cleared);
    EXPECT_EQ(newTrace(), Lines{});
}

TEST_F(HostEvents, event5SavesAKnownFile)
{
    standin::setState("geo_filename", L"C:\\nowhere\\a.mcam");
    set({.event37 = true, .capturePending = true});
    EXPECT_EQ(m_notify(5), 0);
    const Lines lines = newTrace();
    ASSERT_GE(lines.size(), 3u);
    EXPECT_EQ(lines[0], LR"(ui CFile_DoFileSave("C:\nowhere\a.mcam", main, false, true) -> false)");
    EXPECT_EQ(lines[1], L"ui CMastercamView.position0()");
    EXPECT_EQ(lines[2], L"ui CMastercamInterface.position3()");
    EXPECT_EQ(std::ranges::count(lines, captured()), 0); // only without a known file
    EXPECT_FALSE(AddInState::isSaveUnreported());
    EXPECT_FALSE(AddInState::event37Seen());
    EXPECT_FALSE(AddInState::captureOnClosePending());
}

TEST_F(HostEvents, event5ReportsTheSaveFirst)
{
    set({});
    standin::redirectImports(GetModuleHandleW(nullptr), &CFile_DoFileSave, &notingSave);
    m_notify(5);
    EXPECT_FALSE(wasUnreported);
}

TEST_F(HostEvents, event5ClearsThePictureOnException)
{
    installation.endStandardInput();
    writeBytes(installation.path(L"cfg\\settings.ini"), "AlwaysSaveTools=y\n");
    set({.capturePending = true});
    AddInState::setRequestId(17);
    ASSERT_TRUE(standin::raiseNext("RunSetupSheetOnSelectedOpsWithoutUI"));
    EXPECT_EQ(m_notify(5), 0);
    EXPECT_EQ(newTrace().back(), LR"(ui message-box("TORVA ZEM", "Failed to save file."))");
    EXPECT_FALSE(AddInState::captureOnClosePending());
    EXPECT_EQ(standin::undeletedExceptions(), 0);
}

TEST_F(HostEvents, event5TakesAPendingPicture)
{
    Values pending = none;
    pending.capturePending = true;
    set(pending);
    EXPECT_EQ(m_notify(5), 0);
    EXPECT_EQ(newTrace(), Lines{captured()});
    EXPECT_FALSE(AddInState::captureOnClosePending());
    EXPECT_TRUE(readBytes(installation.path(L"commit\\screendump.bmp")).has_value());
}

TEST_F(HostEvents, event5SurvivesAFailingPicture)
{
    Values pending = none;
    pending.capturePending = true;
    set(pending);
    standin::raiseNext("screen_to_bitmap_file");
    EXPECT_EQ(m_notify(5), 0);
    EXPECT_FALSE(AddInState::captureOnClosePending());
    EXPECT_EQ(standin::undeletedExceptions(), 0);
}

TEST_F(HostEvents, events6And52ClearTheFile)
{
    for (const int code : {6, 52}) {
        set({.isSaveUnreported = false, .event37 = true, .capturePending = true});
        EXPECT_EQ(m_notify(code), 0);
        Values expected = none;
        expected.isSaveUnreported = false;
        expected.event37 = true;
        expect(expected);
    }
}

TEST_F(HostEvents, event37SetsOnlyItsFlag)
{
    set({.capturePending = true});
    EXPECT_EQ(m_notify(37), 0);
    expect({.event37 = true, .capturePending = true});
    EXPECT_EQ(newTrace(), Lines{});
}

TEST_F(HostEvents, ignoreEveryOtherCode)
{
    for (int code = -1; code <= 100; ++code) {
        if (code == 3 || code == 4 || code == 5 || code == 6 || code == 37 || code == 52)
            continue;
        set({.capturePending = true});
        EXPECT_EQ(m_notify(code), 0);
        expect({.capturePending = true});
    }
    EXPECT_EQ(newTrace(), Lines{});
}
