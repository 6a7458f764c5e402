// The resources that calls of the shipped library leave open in the process: each call separately,
// and a thousand mixed calls.
#include "control.h"
#include "support/bytes.h"
#include "support/companion_double.h"
#include "support/counts.h"
#include "support/draw_tool_entry.h"
#include "support/sockets.h"
#include "support/waiting.h"
#include "life/life_table.h"

#include <gtest/gtest.h>
#include <random>

using namespace testing_support;

namespace {

struct LibraryCall {
    std::string name;
    int argument = 0;
    const wchar_t* menuItem = L""; // chosen in the menu that the call opens; empty for none
    int lines = 0;                 // notices sent to the Companion
};

// Which signs of a running Companion the add-in can find.
enum class CompanionMarks { none, semaphore, semaphoreAndWindow };

// The shipped library in the test's process, with the stand-in host's libraries and the signs of a
// running Companion.
class CalledLibrary {
public:
    // Opens the add-in with a part in the host.
    explicit CalledLibrary(CompanionMarks marks = CompanionMarks::semaphoreAndWindow)
    {
        recordCompanionStarts(installation_);
        if (marks != CompanionMarks::none)
            companion_.holdSemaphore();
        if (marks == CompanionMarks::semaphoreAndWindow)
            companion_.showWindow();
        standin::HostOptions options;
        options.answersMessageBoxes = true;
        EXPECT_TRUE(standin::startHost(options));
        EXPECT_TRUE(standin::loadAddIn(programFolder() + L"torvapdm.dll"));
        EXPECT_TRUE(standin::callExport("m_open", 0));
        EXPECT_TRUE(standin::putPart(programFolder() + L"shipped\\host\\example\\bracket.mcam"));
        EXPECT_TRUE(standin::setState("geo_filename", installation_.path(L"part.mcam")));
    }
    ~CalledLibrary()
    {
        standin::callExport("m_close", 0);
        standin::stopHost();
    }
    CalledLibrary(const CalledLibrary&) = delete;
    CalledLibrary& operator=(const CalledLibrary&) = delete;

    // Makes the call and receives its notices. A check-out waits until the previous one is more
    // than a second ago, because its file is named after the second.
    void make(const LibraryCall& call)
    {
        const bool isCheckout = call.name == "m_load";
        if (isCheckout)
            waitUntil([this] { return GetTickCount64() - checkedOutAt_ > betweenCheckoutsMs; });
        standin::chooseNext(call.menuItem);
        if (call.name == "DrawTool")
            EXPECT_EQ(drawToolEntry(GetModuleHandleW(L"torvapdm.dll"))(120, 160, 10, 10, 1, 0, 20,
                                                                       30, 60, 8, 1),
                      0);
        else
            EXPECT_TRUE(standin::callExport(call.name, call.argument));
        for (int i = 0; i < call.lines; ++i)
            EXPECT_TRUE(receiver_.nextConnection());
        if (isCheckout)
            checkedOutAt_ = GetTickCount64();
        pumpMessages();
    }

    // Writes an open request with this machine-settings file and waits until it has been carried
    // out.
    void requestPart(int id, const std::string& machineSettings)
    {
        const std::wstring part = installation_.path(L"requested.mcam");
        const std::wstring commandFile = installation_.commandFile(GetCurrentProcessId());
        const std::wstring line = L"ui CFile_DoFileSave(\"" + part + L"\", main, false, false)";
        writeBytes(part, "");
        writeBytes(installation_.path(L"temp\\mcsettings-" + std::to_wstring(id) + L".txt"),
                   machineSettings);
        const auto saves = [&] { return count(standin::traceLines(), line); };
        const size_t before = saves();
        EXPECT_TRUE(waitUntil([&] { return readBytes(commandFile) == ""; }));
        EXPECT_TRUE(writeRequest(commandFile, openRequest(id, toUtf8(part))));
        EXPECT_TRUE(waitUntil([&] { return saves() > before; }));
    }

private:
    Installation installation_;
    LineReceiver receiver_;
    CompanionDouble companion_;
    unsigned long long checkedOutAt_ = 0; // milliseconds
};

struct Row {
    LibraryCall call;
    const char* name; // in the table
};

const Row rows[] = {
    {{"m_load"}, "m_load"},
    {{"m_about"}, "m_about"},
    {{"m_save", 0, L"", 1}, "m_save"},
    {{"m_tools", 0, L"", 1}, "m_tools"},
    {{"m_main"}, "m_main"},
    {{"m_main", 0, L"Open TORVA ZEM"}, "m_main"},
    {{"m_main", 0, L"About"}, "m_about"},
    {{"m_main", 0, L"Tools", 1}, "m_main"},
    {{"m_notify", 3}, "m_notify"},
    {{"m_notify", 4}, "m_notify"},
    {{"m_notify", 37}, "m_notify"},
    {{"m_notify", 52}, "m_notify"},
    {{"importNCqueue", 0, L"", 1}, "importNCqueue"},
    {{"importNC"}, "importNC"},
    {{"renameNC"}, "renameNC"},
    {{"DrawTool"}, "DrawTool"},
    {{"TestFunction"}, "TestFunction"},
};

size_t perCall(const std::string& row)
{
    return lifeTable().at(row).handles;
}

struct Objects {
    int graphics = countFreeGraphicsObjects();
    int user = countFreeUserObjects();

    bool operator==(const Objects&) const = default;
};

} // namespace

TEST(LifeOfCalls, leavesOpenWhatTheTableSays)
{
    CalledLibrary library;
    for (const Row& row : rows) {
        library.make(row.call);
        library.make(row.call); // handles the system opens once and keeps
        const size_t before = countHandles();
        for (int i = 0; i < 3; ++i)
            library.make(row.call);
        EXPECT_EQ(countHandles(), before + 3 * perCall(row.name))
            << row.call.name << ' ' << row.call.argument;
    }
}

TEST(LifeOfCalls, leavesAHandlePerCompanionStart)
{
    CalledLibrary library(CompanionMarks::none);
    const LibraryCall openCompanion = {"m_main", 0, L"Open TORVA ZEM"};
    library.make(openCompanion);
    const size_t before = countHandles();
    library.make(openCompanion);
    EXPECT_EQ(countHandles(), before + perCall("a start of the Companion"));
}

TEST(LifeOfCalls, leavesAHandlePerCommandLineCommit)
{
    CalledLibrary library(CompanionMarks::semaphore);
    library.make({"m_save"});
    const size_t before = countHandles();
    library.make({"m_save"});
    EXPECT_EQ(countHandles(), before + perCall("a commit on the command line"));
}

TEST(LifeOfCalls, leavesAnEmptySettingsFileOpen)
{
    CalledLibrary library;
    library.requestPart(1, "1|3|0|C:\\a.mcam-mmd\r\n");
    library.requestPart(2, "");
    const size_t before = countHandles();
    library.requestPart(3, "");
    EXPECT_EQ(countHandles(), before + perCall("an empty machine-settings file"));
    library.requestPart(4, "4|3|0|C:\\a.mcam-mmd\r\n");
    EXPECT_EQ(countHandles(), before + perCall("an empty machine-settings file"));
}

// The thread that m_open starts for the network ends by itself a little later. The test's and the
// listener's stay.
bool waitForTheNetworkThread()
{
    return waitUntil([] { return countThreads(GetCurrentProcessId()) == 2; });
}

TEST(LifeOfCalls, leavesTheNetworkSocketOpen)
{
    CalledLibrary library;
    const auto opened = [&] {
        library.make({"m_open"});
        EXPECT_TRUE(waitForTheNetworkThread());
        return countHandles();
    };
    const size_t before = opened();
    EXPECT_EQ(opened(), before + perCall("m_open"));
}

TEST(LifeOfCalls, leavesNothingElseAfter300Calls)
{
    CalledLibrary library;
    for (const Row& row : rows)
        library.make(row.call);
    EXPECT_TRUE(waitForTheNetworkThread());
    const size_t handles = countHandles();
    const Objects before;
    std::mt19937_64 random(20'262);
    size_t onPurpose = 0;
    for (int i = 0; i < 300; ++i) {
        const Row* row = &rows[random() % std::size(rows)];
        // Check-outs are picked less often: each waits until a second has passed since the
        // previous one.
        while (row->call.name == "m_load" && random() % 10 != 0)
            row = &rows[random() % std::size(rows)];
        library.make(row->call);
        onPurpose += perCall(row->name);
    }
    EXPECT_TRUE(waitForTheNetworkThread());
    EXPECT_EQ(countHandles(), handles + onPurpose);
    // Menus and windows of a program that has just ended are destroyed with a short delay.
    Objects after;
    waitUntil([&] { return (after = Objects()) == before; });
    EXPECT_EQ(after.graphics, before.graphics);
    EXPECT_EQ(after.user, before.user);
}
