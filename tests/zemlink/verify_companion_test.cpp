// `zemlink verify companion` with the stand-in Companion, as it is and with deliberate mistakes.
#include "peer/installation_folder.h"
#include "peer/running_programs.h"
#include "support/bytes.h"
#include "support/installation.h"
#include "support/sockets.h"
#include "tools/zemlink/reports/report.h"
#include "zemlink/announced_host.h"
#include "zemlink/own_console.h"
#include "zemlink/tool_run.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <tlhelp32.h>

using namespace testing_support;
using zemlink::Report;
using Ids = std::vector<std::string>;

namespace {

const std::wstring requestArguments =
    L" --open \"--send bracket --host {host}\" --new-file \"--new-file --host {host}\""
    L" --check-in \"--check-in --host {host}\"";

// Whether a program of this file name is running.
bool isRunning(const std::wstring& name)
{
    const peer::OwnHandle processes(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof entry;
    for (BOOL more = Process32FirstW(processes.get(), &entry); more;
         more = Process32NextW(processes.get(), &entry))
        if (entry.szExeFile == name)
            return true;
    return false;
}

// A folder for the verified program, other than the user's installation folder.
class VerifyCompanion : public ::testing::Test {
protected:
    VerifyCompanion() { std::filesystem::create_directories(folder + L"\\cfg"); }

    void install(const std::wstring& program)
    {
        std::filesystem::copy_file(programFolder() + program, verifiedProgram);
    }
    void installCompanion(const std::wstring& program = L"TORVA-ZEM.exe")
    {
        install(program);
        std::filesystem::copy(programFolder() + L"shipped\\companion\\parts", folder + L"\\library",
                              std::filesystem::copy_options::recursive);
        writeBytes(folder + L"\\cfg\\settings.ini", "UseFtpServer=n\r\n");
    }
    std::wstring verification(const std::wstring& options) const
    {
        return L"--json verify companion " + quoted(verifiedProgram) + options;
    }
    ToolResult verify(const std::wstring& options) const
    {
        return runTool(installation, verification(options));
    }
    static std::string errorOf(const ToolResult& result)
    {
        const Report report = Report::parse(result.output, nullptr, false);
        return report.contains("error") ? report["error"].value("name", "") : result.output;
    }
    // The files that zemlink has made and not removed.
    Ids filesLeft() const
    {
        Ids left;
        std::error_code ignored; // the folders are removed when they are empty
        for (const wchar_t* below : {L"temp", L"tmp"})
            for (const auto& entry :
                 std::filesystem::directory_iterator(folder + L'\\' + below, ignored))
                left.push_back(toUtf8(entry.path().filename().native()));
        return left;
    }
    bool isFolderRegistered() const { return peer::readInstallationFolder().path == folder; }
    bool isEarlierFolderRegistered() const
    {
        return peer::readInstallationFolder().path == installation.root();
    }

    const Installation installation{Registry::ofTheUser};
    const std::wstring folder = installation.path(L"verified");
    const std::wstring verifiedProgram = folder + L"\\TORVA-ZEM.exe";
};

// The ids of the rules with this result, in order.
Ids idsOf(const Report& report, const std::string& result)
{
    Ids ids;
    for (const Report& rule : report.value("rules", Report::array()))
        if (rule.value("result", "") == result)
            ids.push_back(rule.value("id", ""));
    return ids;
}

// What was seen of the rules that are not kept, for a failed test.
std::string problemsIn(const Report& report)
{
    std::string text;
    for (const Report& rule : report.value("rules", Report::array()))
        if (rule.value("result", "") != "kept")
            text += rule.value("id", "") + ": " + rule.value("seen", "") + '\n';
    return text;
}

struct FlawedCompanion {
    const char* flaws;
    Ids broken;
    Ids notSeen{};
    const char* seen = ""; // a part of what was seen
};

void PrintTo(const FlawedCompanion& flawed, std::ostream* stream)
{
    *stream << flawed.flaws;
}

class EachFlaw : public VerifyCompanion, public ::testing::WithParamInterface<FlawedCompanion> {};

// Mistakes in one row have nothing to do with each other.
const FlawedCompanion flawedCompanions[] = {
    {"mutex,writes-in-two",
     {"start.semaphore", "requests.one-write"},
     {"commands.counts", "end.semaphore"}},
    {"stays,ends-no-line", {"commands.check-out", "requests.machine-line"}},
    {"takes-count,locks-nothing,shares-nothing",
     {"commands.counts", "commits.lock", "requests.sharing"},
     {},
     "999 of 1000 before 6 second starts and 993 of 1000 after them."},
    {"locks-everything,forgets,serves-one",
     {"commits.own-lock", "notices.left-open", "restart.not-again"}},
    {"loses-pieces,overwrites-request,empties-commit-file",
     {"commits.file-stays", "notices.pieces", "notices.bytes", "requests.full-file"}},
    {"ends-at-unknown,writes-settings-late", {"notices.unknown", "requests.machine", "end.own"}},
    {"ignores-left-commits,writes-no-mark,creates-command-file",
     {"requests.open", "requests.no-file", "restart.waiting", "restart.late",
      "restart.file-removed"},
     {"requests.file", "requests.machine", "requests.machine-line", "restart.not-again"}},
};

// `stays_and_ends_no_line`
std::string flawName(const std::string& flaws)
{
    std::string name;
    for (const char c : flaws)
        name += c == ',' ? std::string("_and_") : std::string{c == '-' ? '_' : c};
    return name;
}

} // namespace

TEST_P(EachFlaw, breaksOnlyItsRules)
{
    installCompanion(L"flawed_companion.exe");
    SetEnvironmentVariableA("COMPANION_FLAW", GetParam().flaws);
    const ToolResult result = verify(requestArguments + L" --timeout 10");
    const Report report = Report::parse(result.output, nullptr, false);
    EXPECT_EQ(result.exitCode, 1u);
    EXPECT_EQ(idsOf(report, "broken"), GetParam().broken) << problemsIn(report);
    EXPECT_EQ(idsOf(report, "not seen"), GetParam().notSeen);
    EXPECT_NE(problemsIn(report).find(GetParam().seen), std::string::npos) << problemsIn(report);
    EXPECT_EQ(report.value("kept", 0u), idsOf(report, "kept").size());
    EXPECT_TRUE(isEarlierFolderRegistered());
    EXPECT_FALSE(isRunning(L"TORVA-ZEM.exe"));
}

INSTANTIATE_TEST_SUITE_P(VerifyCompanion, EachFlaw, ::testing::ValuesIn(flawedCompanions),
                         [](const auto& flawed) { return flawName(flawed.param.flaws); });

TEST_F(VerifyCompanion, reportsOnlyWhatItCanSee)
{
    installCompanion(L"flawed_companion.exe");
    SetEnvironmentVariableA("COMPANION_FLAW", "logs-nothing");
    const ToolResult result = verify(L""); // and no arguments that lead to requests
    const Report report = Report::parse(result.output, nullptr, false);
    EXPECT_EQ(result.exitCode, 0u) << problemsIn(report);
    EXPECT_EQ(idsOf(report, "kept"),
              (Ids{"start.semaphore",   "start.window",         "start.once",
                   "start.settings",    "commands.none",        "commands.check-out",
                   "commands.commit",   "commands.no-id",       "commands.about",
                   "commands.unknown",  "commands.counts",      "commits.empty-file",
                   "notices.port",      "notices.line",         "notices.pieces",
                   "notices.bytes",     "notices.several",      "notices.left-open",
                   "notices.empty",     "notices.no-line-feed", "notices.too-long",
                   "notices.two-lines", "notices.unknown",      "end.own",
                   "end.semaphore",     "restart.file-removed", "close.nothing-left"}));
    EXPECT_EQ(filesLeft(), Ids{});
}

TEST_F(VerifyCompanion, findsThatAProgramIsNone)
{
    install(L"start_recorder.exe"); // ends at once
    const ToolResult result = verify(requestArguments);
    const Report report = Report::parse(result.output, nullptr, false);
    EXPECT_EQ(result.exitCode, 1u);
    EXPECT_EQ(idsOf(report, "broken"), (Ids{"start.semaphore", "start.window"}));
    EXPECT_EQ(idsOf(report, "kept"), Ids{});
    EXPECT_EQ(report["rules"][0].value("seen", ""),
              "Started without arguments, it ended with exit code 0.");
}

TEST_F(VerifyCompanion, refusesWhatItWouldDisturb)
{
    const Sockets sockets;
    EXPECT_EQ(errorOf(verify(L"")), "file-missing");
    writeBytes(verifiedProgram, "not a program");
    EXPECT_EQ(errorOf(verify(L"")), "failed");
    writeBytes(installation.path(L"TORVA-ZEM.exe"), "");
    EXPECT_EQ(errorOf(runTool(installation, L"--json verify companion " +
                                                quoted(installation.path(L"TORVA-ZEM.exe")))),
              "folder-in-use");
    {
        const peer::OwnHandle semaphore = peer::claimInstance();
        EXPECT_EQ(errorOf(verify(L"")), "companion-running");
    }
    {
        const AnnouncedHost host;
        EXPECT_EQ(errorOf(verify(L"")), "host-running");
    }
    {
        const LineReceiver receiver;
        EXPECT_EQ(errorOf(verify(L"")), "port-in-use");
    }
    EXPECT_TRUE(isEarlierFolderRegistered());
    EXPECT_FALSE(std::filesystem::exists(folder + L"\\temp"));
}

TEST_F(VerifyCompanion, refusesAnotherVerification)
{
    install(L"desktop_keeper.exe");
    const std::wstring secondFolder = installation.path(L"verified too");
    std::filesystem::create_directories(secondFolder);
    writeBytes(secondFolder + L"\\TORVA-ZEM.exe", "not a program");
    const ToolRun first(installation, verification(L""));
    ASSERT_TRUE(waitUntil([&] { return isFolderRegistered(); }));
    EXPECT_EQ(errorOf(runTool(installation, L"--json verify companion " +
                                                quoted(secondFolder + L"\\TORVA-ZEM.exe"))),
              "verification-running");
    EXPECT_TRUE(isFolderRegistered());
    EXPECT_FALSE(std::filesystem::exists(secondFolder + L"\\temp"));
}

TEST_F(VerifyCompanion, restoresTheFolderThatAProgramRegistersAgain)
{
    install(L"desktop_keeper.exe");
    {
        const ToolRun killed(installation, verification(L""));
        ASSERT_TRUE(waitUntil([&] { return isFolderRegistered(); }));
        registerInstallation(folder + L'\\');
    }
    EXPECT_TRUE(waitUntil([] { return !isRunning(L"TORVA-ZEM.exe"); }));
    writeBytes(verifiedProgram, "not a program");
    EXPECT_EQ(errorOf(verify(L"")), "failed");
    EXPECT_TRUE(isEarlierFolderRegistered());
}

TEST_F(VerifyCompanion, restoresTheFolderAtCtrlC)
{
    const OwnConsole console;
    install(L"desktop_keeper.exe"); // neither a Companion nor ends
    const ToolRun run(installation, verification(L""));
    ASSERT_TRUE(waitUntil([&] { return isFolderRegistered() && isRunning(L"TORVA-ZEM.exe"); }));
    console.pressCtrlC();
    EXPECT_EQ(run.waitForExit(), 1u);
    EXPECT_EQ(errorOf({1, run.output(), ""}), "interrupted");
    EXPECT_TRUE(isEarlierFolderRegistered());
    EXPECT_FALSE(isRunning(L"TORVA-ZEM.exe"));
}

TEST_F(VerifyCompanion, restoresTheFolderAfterItWasKilled)
{
    install(L"desktop_keeper.exe");
    {
        const ToolRun killed(installation, verification(L""));
        ASSERT_TRUE(waitUntil([&] { return isFolderRegistered() && isRunning(L"TORVA-ZEM.exe"); }));
    }
    EXPECT_TRUE(waitUntil([] { return !isRunning(L"TORVA-ZEM.exe"); }));
    EXPECT_TRUE(isFolderRegistered());
    writeBytes(verifiedProgram, "not a program");
    EXPECT_EQ(errorOf(verify(L"")), "failed");
    EXPECT_TRUE(isEarlierFolderRegistered());
}

TEST_F(VerifyCompanion, keepsAFolderThatWasRegisteredSinceItWasKilled)
{
    install(L"desktop_keeper.exe");
    {
        const ToolRun killed(installation, verification(L""));
        ASSERT_TRUE(waitUntil([&] { return isFolderRegistered(); }));
    }
    registerInstallation(L"C:\\another folder");
    EXPECT_TRUE(waitUntil([] { return !isRunning(L"TORVA-ZEM.exe"); }));
    writeBytes(verifiedProgram, "not a program");
    EXPECT_EQ(errorOf(verify(L"")), "failed");
    EXPECT_EQ(peer::readInstallationFolder().path, L"C:\\another folder");
}
