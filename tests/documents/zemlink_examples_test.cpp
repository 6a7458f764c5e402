// Runs zemlink in the situations that docs/find-the-cause.md describes and compares what it prints
// with the page's blocks. The first line of a block is the command.
#include "documents/pages.h"
#include "support/companion_double.h"
#include "support/companion_program.h"
#include "support/host_program.h"
#include "support/sockets.h"
#include "zemlink/announced_host.h"
#include "zemlink/tool_run.h"

#include <gtest/gtest.h>

#include <map>

using namespace documents;
using namespace testing_support;

namespace {

const std::string page = "find-the-cause.md";
const std::wstring commandMark = L"> zemlink ";

// The process ids of the page.
constexpr char hostOfThePage[] = "4711";
constexpr char companionOfThePage[] = "328";

void replaceAll(std::string& text, const std::string& from, const std::string& to)
{
    for (size_t at = text.find(from); at != text.npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
}

// An installation with the Companion's program and a part, in the folder of the pages.
struct Site {
    Site()
    {
        installation.installCompanion(programFolder() + L"TORVA-ZEM.exe");
        CreateDirectoryW(installation.path(L"work").c_str(), nullptr);
        write(L"work\\bracket.mcam", "");
    }

    // What zemlink prints, with the process ids of the page.
    std::string run(const std::wstring& arguments) const
    {
        const ToolResult result = runTool(installation, arguments);
        return asOnThePage(result.output + result.errors);
    }
    // Repeats it until the output contains the text.
    std::string runUntil(const std::wstring& arguments, const std::string& text) const
    {
        std::string output;
        waitUntil([&] {
            output = run(arguments);
            return output.find(text) != output.npos;
        });
        return output;
    }
    std::string asOnThePage(std::string text) const
    {
        for (const auto& [id, shown] : ids)
            replaceAll(text, std::to_string(id), shown);
        return text;
    }
    void write(const std::wstring& file, const std::string& bytes) const
    {
        writeBytes(installation.path(file), bytes);
    }

    const Sockets sockets;
    const Installation installation{Registry::ofTheUser, installationOfThePages};
    std::map<DWORD, std::string> ids; // to their ids on the page
};

// The site with a host in which the add-in is open.
struct SiteWithHost : Site {
    explicit SiteWithHost(const std::string& script = "") : host(installation, script)
    {
        waitUntil([this] { return host.window() != nullptr; });
        host.waitForCommandFile();
        ids[host.process().id()] = hostOfThePage;
    }
    const HostProgram host;
};

// The bytes of a dump of the pages.
std::string dumped(const std::string& name)
{
    return bytesOf(dumpsOfPages().at(name)).value_or("");
}

// ---- Situations: each returns what the command prints there.

std::string withoutHost(const std::wstring& arguments)
{
    return Site().run(arguments);
}

std::string withHost(const std::wstring& arguments)
{
    const SiteWithHost site;
    return site.run(arguments);
}

// The installation folder was changed after the host was started.
std::string afterMove(const std::wstring& arguments)
{
    const SiteWithHost site;
    const std::wstring folder = site.installation.path(L"new");
    for (const wchar_t* below : {L"", L"\\temp", L"\\commit"})
        CreateDirectoryW((folder + below).c_str(), nullptr);
    writeBytes(folder + L"\\TORVA-ZEM.exe", "");
    registerInstallation(folder);
    return site.run(arguments);
}

std::string withHostThatDoesNotRead(const std::wstring& arguments)
{
    Site site;
    const AnnouncedHost host;
    AnnouncedHost::makeCommandFile(site.installation);
    site.ids[GetCurrentProcessId()] = hostOfThePage;
    return site.run(arguments);
}

std::string withDialog(const std::wstring& arguments)
{
    const SiteWithHost site;
    writeRequest(site.host.commandFile(), openRequest(17, "C:\\none.mcam"));
    waitForWindowTitled(L"TORVA ZEM");
    return site.runUntil(arguments, "host-in-dialog");
}

// A request of the Companion, with its machine settings.
std::string withBackplot(const std::wstring& arguments)
{
    const SiteWithHost site("set backplot true\n");
    const std::string part = toUtf8(site.installation.path(L"work\\bracket.mcam"));
    site.write(L"temp\\mcsettings-17.txt", dumped("machine-settings"));
    site.write(L"sys\\companion.log", "2026-11-21 10:11:12.345 sent id=17 host=" +
                                          std::to_string(site.host.process().id()) + " file=\"" +
                                          part + "\"\n");
    writeRequest(site.host.commandFile(), openRequest(17, part));
    return site.runUntil(arguments, "request-pending");
}

std::string withoutMessageWindow(const std::wstring& arguments)
{
    const SiteWithHost site("call m_close 0\ncall m_open 0\n");
    return site.runUntil(arguments, "host-without-message-window");
}

std::string withHostThatHangs(const std::wstring& arguments)
{
    const SiteWithHost site("wait-for m_notify(37) 60000\nset geo_filename C:\\own.mcam\nnotify 5\n"
                            "call m_save 0\n");
    const CompanionProgram companion(site.installation); // else the save starts it
    companion.waitForWindow();
    site.host.sendEvent(37);
    return site.runUntil(arguments, "host-not-answering");
}

std::string withLoadLog(const std::wstring& arguments)
{
    const Site site;
    std::string log;
    for (const char step : {'1', '2', '3', '4'})
        log += std::string("Loading File #") + step + ": C:\\ZEM\\work\\bracket.mcam\r\n";
    site.write(L"sys\\mcxlog.txt", log);
    return site.run(arguments);
}

// A Companion that ended before it took the second commit.
std::string withCommitsLeft(const std::wstring& arguments)
{
    constexpr DWORD ended = 4294967292;
    Site site;
    const std::string commits = dumped("commit-records");
    const std::wstring file = L"temp\\torvapdm-" + std::to_wstring(ended);
    site.write(file + L".dat", commits);
    site.write(file + L".taken", "taken 0\n");
    site.ids[ended] = companionOfThePage;
    return site.run(arguments);
}

std::string withCommitFile(const std::wstring& arguments)
{
    const Site site;
    site.write(L"temp\\torvapdm-328.dat", dumped("commit-records"));
    return site.run(arguments);
}

std::string withEvents(const std::wstring& arguments, const std::string& lines)
{
    const Site site;
    site.write(L"sys\\companion.log", lines);
    return site.run(arguments);
}

std::string afterFailedCommit(const std::wstring& arguments)
{
    return withEvents(arguments,
                      "2026-11-21 10:11:12.345 commit file=\"C:\\Temp\\a.mcam\" id=17 "
                      "from=torvapdm-328.dat\n"
                      "2026-11-21 10:11:12.346 commit-failed file=\"C:\\Temp\\a.mcam\" id=17 "
                      "reason=\"there is no such file\"\n");
}

std::string withPortInUse(const std::wstring& arguments)
{
    const Site site;
    const LineReceiver other;
    return site.run(arguments);
}

// Listens until this notice has arrived.
template <const char* notice>
std::string afterNotice(const std::wstring& arguments)
{
    const Site site;
    const ToolRun run(site.installation, arguments);
    run.waitForOutput("listening on port 4559");
    sendToCompanion(dumped(notice));
    run.waitForExit();
    return run.output() + run.errors();
}

std::string withoutCommitFolder(const std::wstring& arguments)
{
    const Site site;
    RemoveDirectoryW(site.installation.path(L"commit").c_str());
    return site.run(arguments);
}

std::string withMachineSettings(const std::wstring& arguments)
{
    const Site site;
    site.write(L"temp\\mcsettings-17.txt", dumped("machine-settings"));
    return site.run(arguments);
}

std::string withoutCompanion(const std::wstring& arguments)
{
    const Site site;
    DeleteFileW(site.installation.path(L"TORVA-ZEM.exe").c_str());
    return site.run(arguments);
}

std::string afterCheckOut(const std::wstring& arguments)
{
    return withEvents(arguments,
                      "2026-11-21 10:11:12.345 check-out file=\"C:\\Temp\\\\TORVA ZEM-7.tmp\"\n");
}

constexpr char queueNotice[] = "queue-notice";
constexpr char sheetNotice[] = "setup-sheet-notice";

struct Example {
    const char* name;
    std::string (*print)(const std::wstring& arguments);
};

const Example examples[] = {
    {"doctor", withHost},
    {"open-without-host", withoutHost},
    {"doctor-other-folder", afterMove},
    {"doctor-dialog", withDialog},
    {"doctor-backplot", withBackplot},
    {"open-not-taken", withHostThatDoesNotRead},
    {"doctor-message-window", withoutMessageWindow},
    {"open-taken", withHost},
    {"decode-load-log", withLoadLog},
    {"doctor-commits-left", withCommitsLeft},
    {"decode-commits", withCommitFile},
    {"decode-commit-failed", afterFailedCommit},
    {"doctor-host-hangs", withHostThatHangs},
    {"doctor-commit-folder", withoutCommitFolder},
    {"decode-machine-settings", withMachineSettings},
    {"doctor-port-held", withPortInUse},
    {"listen-setup-sheet", afterNotice<sheetNotice>},
    {"listen-queue", afterNotice<queueNotice>},
    {"doctor-companion-missing", withoutCompanion},
    {"decode-check-out", afterCheckOut},
};

void PrintTo(const Example& example, std::ostream* stream)
{
    *stream << example.name;
}

std::string testName(const std::string& name)
{
    std::string letters = name;
    std::erase(letters, '-');
    return letters;
}

class EachExample : public ::testing::TestWithParam<Example> {};

} // namespace

TEST_P(EachExample, printsWhatThePageShows)
{
    for (const FencedBlock& block : fencedBlocks(pageText(page), "zemlink")) {
        if (block.name != GetParam().name)
            continue;
        ASSERT_FALSE(block.lines.empty());
        const std::wstring command = fromUtf8(block.lines[0]);
        ASSERT_TRUE(command.starts_with(commandMark)) << block.lines[0];
        std::string shown;
        for (size_t i = 1; i < block.lines.size(); ++i)
            shown += block.lines[i] + '\n';
        const std::string printed = GetParam().print(command.substr(commandMark.size()));
        EXPECT_TRUE(shown == printed)
            << page << ": the block as it should stand:\n```zemlink " << block.name << '\n'
            << block.lines[0] << '\n'
            << printed << "```";
        return;
    }
    FAIL() << page << " has no block " << GetParam().name;
}

INSTANTIATE_TEST_SUITE_P(FindTheCause, EachExample, ::testing::ValuesIn(examples),
                         [](const auto& example) { return testName(example.param.name); });

TEST(FindTheCause, showsOnlyTestedExamples)
{
    std::vector<std::string> shown, tested;
    for (const FencedBlock& block : fencedBlocks(pageText(page), "zemlink"))
        shown.push_back(block.name);
    for (const Example& example : examples)
        tested.push_back(example.name);
    EXPECT_EQ(shown, tested);
}
