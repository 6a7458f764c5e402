// The host's state, its document and its save command, through its control interface.
#include "host/host.h"
#include "support/host_fixture.h"

#include <filesystem>

using namespace testing_support;

namespace {

constexpr UINT saveAsCommand = 41111;
std::vector<int> sentEvents;

int rememberEvent(int code)
{
    sentEvents.push_back(code);
    return 7;
}

class HostState : public HostFixture {
protected:
    HostState() { standin::setEventSink(rememberEvent); }
    ~HostState() override { standin::setEventSink(nullptr); }

    std::wstring filledPart(const std::wstring& name)
    {
        const std::wstring path = makePart(name);
        writeBytes(path, partText);
        return path;
    }
    static bool open(const std::wstring& path)
    {
        bool escaped = false;
        return DoFileOpen(path.c_str(), false, false, 1, true, &escaped, nullptr);
    }
    static void runSaveCommand()
    {
        SendMessageW(get_MainFrame()->GetSafeHwnd(), WM_COMMAND, saveAsCommand, 0);
    }

    const std::string partText = "mastercam part 1\n\n[operation]\nid = 1\ncycle-time = 30\n";
};

} // namespace

TEST_F(HostState, startsWithDefaults)
{
    const std::pair<const char*, const wchar_t*> values[] = {
        {"geo_filename", L""},      {"db_changed", L"false"},
        {"backplot", L"false"},     {"main_window_enabled", L"true"},
        {"nc_prefix", L"C:\\NC\\"}, {"nc_suffix", L".NC"},
        {"setup_sheet_files", L""}};
    for (const auto& [name, value] : values)
        EXPECT_EQ(standin::knownState(name), value) << name;
    EXPECT_EQ(standin::state("title").rfind(L"Mastercam", 0), 0u);
}

TEST_F(HostState, keepsValuesAsSet)
{
    const std::pair<const char*, const wchar_t*> values[] = {
        {"geo_filename", L" C:\\a  b.mcam "},
        {"db_changed", L"true"},
        {"backplot", L"true"},
        {"main_window_enabled", L"false"},
        {"title", L" M\u00FC  \u4E2D "},
        {"nc_prefix", L""},
        {"nc_suffix", L" .n c "},
        {"setup_sheet_files", L"C:\\a b.xml;D:\\c"}};
    for (const auto& [name, value] : values) {
        EXPECT_TRUE(standin::setState(name, value)) << name;
        EXPECT_EQ(standin::knownState(name), value) << name;
    }
    EXPECT_STREQ(geo_filename, L" C:\\a  b.mcam ");
    EXPECT_TRUE(has_db_changed());
    EXPECT_TRUE(BackplotActive());
    EXPECT_FALSE(IsWindowEnabled(get_MainFrame()->GetSafeHwnd()));
    EXPECT_STREQ(NCPrefix(nullptr), L"");
    EXPECT_STREQ(NCSuffix(nullptr), L" .n c ");
    EXPECT_EQ(newTrace(2).size(), 2u); // setting is not traced
}

TEST_F(HostState, rejectsUnknownNamesAndValues)
{
    EXPECT_FALSE(standin::setState("Title", L"a"));
    EXPECT_FALSE(standin::setState("", L""));
    for (const char* flag : {"db_changed", "backplot", "main_window_enabled"})
        for (const wchar_t* value : {L"", L"1", L"TRUE", L"true ", L"on"})
            EXPECT_FALSE(standin::setState(flag, value)) << flag << " " << value;
    EXPECT_EQ(standin::knownState("Title"), std::nullopt);
    EXPECT_EQ(standin::state("Title"), L"");
}

TEST_F(HostState, truncatesNameTo260Characters)
{
    standin::setState("geo_filename", std::wstring(300, L'n'));
    EXPECT_EQ(std::wstring(geo_filename, 260), std::wstring(260, L'n'));
    EXPECT_EQ(standin::state("geo_filename"), std::wstring(260, L'n'));
}

TEST_F(HostState, resetsWithEachHost)
{
    standin::setState("nc_prefix", L"D:\\");
    ASSERT_TRUE(standin::putPart(filledPart(L"a.mcam")));
    EXPECT_FALSE(standin::startHost({})); // one host at a time
    standin::stopHost();
    ASSERT_TRUE(standin::startHost({}));
    EXPECT_EQ(standin::state("nc_prefix"), L"C:\\NC\\");
    EXPECT_EQ(standin::state("geo_filename"), L"");
    EXPECT_EQ(TpMainOpMgr.GetMainOpList().GetSize(), 0);
}

TEST_F(HostState, openKeepsNameAsGiven)
{
    const std::wstring path = filledPart(L"a.mcam");
    std::wstring asGiven = path;
    std::replace(asGiven.begin(), asGiven.end(), L'\\', L'/');
    standin::setState("db_changed", L"true");
    standin::setState("title", L"Mastercam  OLD");
    ASSERT_TRUE(open(asGiven));
    pumpMessages();
    EXPECT_EQ(standin::state("geo_filename"), asGiven);
    EXPECT_EQ(standin::state("db_changed"), L"false");
    EXPECT_EQ(standin::state("title"), L"Mastercam  OLD");
    EXPECT_EQ(sentEvents, std::vector<int>{});
}

TEST_F(HostState, saveKeepsNameAndMarksUnchanged)
{
    const std::wstring path = filledPart(L"a.mcam");
    const std::wstring other = installation.path(L"b.mcam");
    ASSERT_TRUE(open(path));
    standin::setState("db_changed", L"true");
    EXPECT_TRUE(CFile_DoFileSave(other.c_str(), nullptr, false, false));
    EXPECT_EQ(standin::state("db_changed"), L"false");
    EXPECT_EQ(standin::state("geo_filename"), path);
    EXPECT_EQ(readBytes(other), partText);
    EXPECT_EQ(SaveFile(installation.path(L"c.mcam").c_str(), get_MainFrame(), true), 1);
    EXPECT_EQ(readBytes(installation.path(L"c.mcam")), partText);
    EXPECT_EQ(sentEvents, std::vector<int>{});
}

TEST_F(HostState, closeKeepsName)
{
    const std::wstring path = filledPart(L"a.mcam");
    ASSERT_TRUE(open(path));
    m_fclose(L"x", 0, nullptr);
    EXPECT_EQ(TpMainOpMgr.GetMainOpList().GetSize(), 1);
    m_fclose(nullptr, 0, nullptr);
    EXPECT_EQ(TpMainOpMgr.GetMainOpList().GetSize(), 0);
    EXPECT_EQ(standin::state("geo_filename"), path);
}

TEST_F(HostState, newFileRunsInMessageLoop)
{
    const std::wstring path = filledPart(L"a.mcam");
    ASSERT_TRUE(open(path));
    post_FT_command(CString(L"Mastercam"), CString(L"OnFileNew2"));
    post_FT_command(CString(L"mastercam"), CString(L"OnFileNew"));
    pumpMessages();
    EXPECT_EQ(standin::state("geo_filename"), path);
    post_FT_command(CString(L"Mastercam"), CString(L"OnFileNew"));
    EXPECT_EQ(standin::state("geo_filename"), path);
    pumpMessages();
    EXPECT_EQ(standin::state("geo_filename"), L"");
    EXPECT_EQ(TpMainOpMgr.GetMainOpList().GetSize(), 0);
}

TEST_F(HostState, saveCommandSavesAndSendsEvent5)
{
    ASSERT_TRUE(open(filledPart(L"a.mcam")));
    const std::wstring path = installation.path(L"t o l d.mcam");
    standin::setState("title", L"Mastercam  OLD");
    newTrace();
    standin::saveDialogNext(path);
    runSaveCommand();
    EXPECT_EQ(readBytes(path), partText);
    EXPECT_EQ(standin::state("geo_filename"), path);
    EXPECT_EQ(standin::state("title"), L"Mastercam  " + path);
    EXPECT_EQ(sentEvents, std::vector<int>{5});
    EXPECT_EQ(newTrace(), Lines{L"ui m_notify(5) -> 7"});
    EXPECT_FALSE(standin::isQuitting());
}

TEST_F(HostState, failedSaveCommandSendsNoEvent)
{
    standin::saveDialogNext(installation.path(L"nowhere\\a.mcam"));
    runSaveCommand();
    runSaveCommand(); // no path is set any more, and no user can be asked
    EXPECT_EQ(sentEvents, std::vector<int>{});
    EXPECT_EQ(standin::state("geo_filename"), L"");
}

TEST_F(HostState, saveCommandWithEmptyPathQuits)
{
    standin::saveDialogNext(L"");
    runSaveCommand();
    EXPECT_TRUE(standin::isQuitting());
    EXPECT_FALSE(standin::pumpFor(60000)); // returns immediately
    EXPECT_FALSE(standin::waitForTrace(L"nothing", 60000));
    EXPECT_FALSE(GetMastercamApp()->position5());
    EXPECT_EQ(sentEvents, std::vector<int>{});
}

TEST_F(HostState, setupSheetReportsGivenFiles)
{
    CStringArray files;
    standin::setState("setup_sheet_files", L"C:\\a b.xml;D:\\c");
    EXPECT_TRUE(RunSetupSheetOnSelectedOpsWithoutUI(files));
    ASSERT_EQ(files.GetSize(), 2);
    EXPECT_STREQ(files[0], L"C:\\a b.xml");
    EXPECT_STREQ(files[1], L"D:\\c");
    standin::setState("setup_sheet_files", L"");
    files.RemoveAll();
    ASSERT_TRUE(standin::putPart(filledPart(L"a.mcam")));
    EXPECT_TRUE(RunSetupSheetOnSelectedOpsWithoutUI(files));
    EXPECT_EQ(files.GetSize(), 0);
}

TEST_F(HostState, failedSetupSheetReportsGivenFiles)
{
    CStringArray files;
    ASSERT_TRUE(standin::putPart(filledPart(L"a.mcam")));
    standin::failNext("RunSetupSheetOnSelectedOpsWithoutUI");
    EXPECT_FALSE(RunSetupSheetOnSelectedOpsWithoutUI(files));
    EXPECT_EQ(files.GetSize(), 0);
    standin::setState("setup_sheet_files", L"C:\\a b.xml;D:\\c");
    standin::failNext("RunSetupSheetOnSelectedOpsWithoutUI");
    EXPECT_FALSE(RunSetupSheetOnSelectedOpsWithoutUI(files));
    ASSERT_EQ(files.GetSize(), 2);
    EXPECT_STREQ(files[0], L"C:\\a b.xml");
    EXPECT_STREQ(files[1], L"D:\\c");
}

TEST_F(HostState, setupSheetWritesFileByDefault)
{
    CStringArray files;
    EXPECT_TRUE(RunSetupSheetOnSelectedOpsWithoutUI(files));
    EXPECT_EQ(files.GetSize(), 0); // an empty part has no sheet
    ASSERT_TRUE(standin::putPart(filledPart(L"a & b.mcam")));
    EXPECT_TRUE(RunSetupSheetOnSelectedOpsWithoutUI(files));
    ASSERT_EQ(files.GetSize(), 1);
    const std::string sheet = readBytes(files[0].GetString()).value_or("");
    EXPECT_NE(sheet.find("a &amp; b.mcam"), sheet.npos);
    EXPECT_NE(sheet.find("<operation id=\"1\""), sheet.npos);
    DeleteFileW(files[0]);
}

TEST_F(HostState, setupSheetNamesOperationTypes)
{
    const std::wstring path = makePart();
    writeBytes(path, "mastercam part 1\n\n[operation]\nid = 1\ntype = 2\n\n"
                     "[operation]\nid = 2\ntype = 7\n\n[operation]\nid = 3\ntype = 8\n");
    ASSERT_TRUE(standin::putPart(path));
    CStringArray files;
    EXPECT_TRUE(RunSetupSheetOnSelectedOpsWithoutUI(files));
    ASSERT_EQ(files.GetSize(), 1);
    const std::string sheet = readBytes(files[0].GetString()).value_or("");
    EXPECT_NE(sheet.find(R"(<operation id="1" type="Contour")"), sheet.npos) << sheet;
    EXPECT_NE(sheet.find(R"(<operation id="2" type="Chamfer")"), sheet.npos) << sheet;
    EXPECT_NE(sheet.find(R"(<operation id="3" type="Type 8")"), sheet.npos) << sheet;
    DeleteFileW(files[0]);
}

TEST_F(HostState, screenPictureShowsPart)
{
    const std::wstring path = installation.path(L"view.bmp");
    ASSERT_TRUE(screen_to_bitmap_file(path.c_str(), false));
    const std::string before = readBytes(path).value_or("");
    ASSERT_TRUE(standin::putPart(programFolder() + L"shipped\\host\\example\\bracket.mcam"));
    ASSERT_TRUE(screen_to_bitmap_file(path.c_str(), false));
    const std::string after = readBytes(path).value_or("");
    ASSERT_GT(after.size(), sizeof(BITMAPFILEHEADER) + sizeof(BITMAPINFOHEADER));
    const auto* const file = reinterpret_cast<const BITMAPFILEHEADER*>(after.data());
    const auto* const header = reinterpret_cast<const BITMAPINFOHEADER*>(file + 1);
    RECT client{};
    GetClientRect(get_MainFrame()->GetSafeHwnd(), &client);
    EXPECT_EQ(after.substr(0, 2), "BM");
    EXPECT_EQ(file->bfSize, after.size());
    EXPECT_EQ(header->biWidth, client.right);
    EXPECT_EQ(header->biHeight, client.bottom);
    EXPECT_EQ(before.size(), after.size());
    EXPECT_NE(before, after);
}

TEST_F(HostState, screenPictureFailsIfNotWritable)
{
    EXPECT_FALSE(screen_to_bitmap_file(installation.path(L"no\\a.bmp").c_str(), false));
    EXPECT_FALSE(screen_to_bitmap_file(nullptr, true));
}

TEST_F(HostState, waitFindsLinesAfterLastMatch)
{
    standin::trace(L"one");
    standin::trace(L"two");
    standin::trace(L"one");
    EXPECT_TRUE(standin::waitForTrace(L"one", 0));
    EXPECT_TRUE(standin::waitForTrace(L"one", 0));
    EXPECT_FALSE(standin::waitForTrace(L"two", 0));
    EXPECT_FALSE(standin::waitForTrace(L"one", 10));
}
