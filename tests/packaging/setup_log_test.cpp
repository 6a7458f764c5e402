// What a silent setup program and its uninstaller report: their log and their list of options.
#include "packaging/setup_fixture.h"
#include "zemlink/tool_run.h"

using namespace testing_support;

namespace {

// A line's text after its time; the time must be between these two.
std::wstring textOfLine(const std::wstring& line, const std::wstring& first,
                        const std::wstring& last)
{
    const std::wstring time = line.substr(0, first.size());
    return first <= time && time <= last ? line.substr(first.size()) : L"wrong time: " + line;
}

std::wstring logTime()
{
    return localTime(L"yyyy-MM-dd", L" HH:mm:ss");
}

} // namespace

TEST_F(Setup, logsWhatItDid)
{
    const std::wstring start = logTime();
    ASSERT_EQ(site.setUp(earlierSetupProgram(), site.hostFolder), done);
    const std::wstring log = installation.path(L"a log.txt");
    const std::wstring commandLine = quoted(setupProgram()) + L" /S /LOG=" + quoted(log);
    ASSERT_EQ(Process(commandLine).waitForExit(), done);
    const Lines lines = logLines(log);
    // Among others, in this order.
    const Lines inOrder = {
        L"Setup of the TORVA ZEM add-in for the stand-in host, version " VERSION_TEXT,
        L"Command line: " + commandLine,
        L"Mastercam's folder: " + site.hostFolder,
        L"Install folder: " + site.addInFolder,
        L"Earlier version: " EARLIER_VERSION_TEXT " in " + site.addInFolder +
            L", for Mastercam in " + site.hostFolder,
        L"Uninstaller of the TORVA ZEM add-in for the stand-in host, version " EARLIER_VERSION_TEXT,
        L"Removed " + site.library(),
        L"Removed " + site.addInFolder + L"\\docs\\part-file.md",
        L"Wrote " + site.addInFolder + L"\\zemlink.exe",
        L"Wrote " + site.library(),
        L"Removed the folder " + site.addInFolder + L"\\bench",
        L"The add-in is installed. Exit code 0."};
    size_t next = 0;
    for (const std::wstring& expected : inOrder) {
        while (next < lines.size() && textOfLine(lines[next], start, logTime()) != L"  " + expected)
            ++next;
        EXPECT_LT(next++, lines.size()) << toUtf8(expected);
    }
    // A later run is added to the default log, also one that fails.
    ASSERT_EQ(site.uninstallInPlace(), done);
    EXPECT_EQ(count(uninstallLog(), L"Left " + site.addInFolder +
                                        L"\\uninstall.exe: a running program cannot delete itself"),
              1u);
    EXPECT_EQ(site.setUp(setupProgram(), installation.root()), noHost);
    EXPECT_EQ(count(setupLog(), L"version " EARLIER_VERSION_TEXT), 1u);
    EXPECT_EQ(count(setupLog(), L"Error: There is no Mastercam.exe"), 1u);
    EXPECT_TRUE(setupLog().back().ends_with(L"The add-in is not installed. Exit code 3."));
}

TEST_F(Setup, marksALineThatIsTooLongForTheLog)
{
    const std::wstring options = L" /S /HOST=C:\\nowhere /X=" + std::wstring(2000, L'x');
    EXPECT_EQ(Process(quoted(setupProgram()) + options).waitForExit(), noHost);
    const Lines lines = setupLog();
    ASSERT_GE(lines.size(), 4u);
    EXPECT_TRUE(lines[1].ends_with(L"xxx (cut here)")) << toUtf8(lines[1]);
    EXPECT_EQ(count(lines, L"  Mastercam's folder: C:\\nowhere"), 1u);
    EXPECT_TRUE(lines.back().ends_with(L"The add-in is not installed. Exit code 3."));
}

TEST_F(Setup, installsWithoutTheLogItCannotWrite)
{
    const std::wstring log = installation.path(L"nowhere\\log.txt");
    const ToolRun run(installation,
                      L"/S " + quoted(L"/LOG=" + log) + L" /HOST=" + quoted(site.hostFolder) +
                          L" /D=" + site.addInFolder,
                      L"setup", setupProgram());
    EXPECT_EQ(run.waitForExit(), done);
    const std::wstring problem = L"The log " + log + L" cannot be written. The log is " +
                                 site.temporaryFolder + L"\\torvapdm-setup.log.";
    EXPECT_EQ(run.output(), toUtf8(problem) + "\r\n");
    EXPECT_EQ(count(setupLog(), problem), 1u);
    EXPECT_EQ(readBytes(site.library()), packed(L"torvapdm.dll"));
}

TEST_F(Setup, writesNoLogThroughALink)
{
    const std::wstring other = installation.path(L"other.txt");
    writeBytes(other, "another program's");
    const std::wstring log = site.temporaryFolder + L"\\torvapdm-setup.log";
    ASSERT_TRUE(CreateHardLinkW(log.c_str(), other.c_str(), nullptr));
    const ToolRun run(installation,
                      L"/S /HOST=" + quoted(site.hostFolder) + L" /D=" + site.addInFolder, L"setup",
                      setupProgram());
    EXPECT_EQ(run.waitForExit(), done);
    EXPECT_EQ(run.output(), toUtf8(L"The log " + log + L" is a link.") + "\r\n");
    EXPECT_EQ(readBytes(other), "another program's");
    EXPECT_EQ(readBytes(site.library()), packed(L"torvapdm.dll"));
}

TEST_F(Setup, listsItsOptions)
{
    const State before = files();
    for (const wchar_t* option : {L"/?", L"/help"}) {
        const ToolRun run(installation, L"/S /HOST=" + quoted(site.hostFolder) + L' ' + option,
                          L"temporary\\setup", setupProgram());
        EXPECT_EQ(run.waitForExit(), done);
        for (const char* text : {"/S\t", "/HOST=FOLDER\t", "/LOG=FILE\t", "/D=FOLDER\t", "\r\n5  "})
            EXPECT_NE(run.output().find(text), std::string::npos) << text;
    }
    EXPECT_EQ(files(), before);
    EXPECT_EQ(entry(), State());
    EXPECT_EQ(setupLog(), Lines());
}
