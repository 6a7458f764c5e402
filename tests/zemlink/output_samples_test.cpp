// The JSON outputs of all commands, for the check against the published schema.
#include "documents/pages.h"
#include "support/companion_program.h"
#include "support/host_program.h"
#include "support/sockets.h"
#include "tools/zemlink/command_options.h"
#include "tools/zemlink/reports/report.h"
#include "zemlink/tool_run.h"

#include <gtest/gtest.h>
#include <set>

using namespace testing_support;

namespace {

// Writes each output to the folder in the environment if there is one, and expects that it is JSON.
class ZemlinkJson : public ::testing::Test {
protected:
    void write(const std::string& name, const std::string& output)
    {
        EXPECT_FALSE(zemlink::Report::parse(output, nullptr, false).is_discarded()) << name << '\n'
                                                                                    << output;
        if (const wchar_t* folder = _wgetenv(L"ZEMLINK_OUTPUTS"))
            writeBytes(folder + (L'\\' + fromUtf8(name)) + L".json", output);
    }
    void run(const std::string& name, const std::wstring& arguments)
    {
        note(arguments);
        write(name, runTool(installation, L"--json " + arguments).output);
    }
    static void note(const std::wstring& arguments)
    {
        commandsRun().insert(toUtf8(arguments.substr(0, arguments.find(L' '))));
    }

    // Each line is an output of its own.
    void runLines(const std::string& name, const std::wstring& arguments)
    {
        note(arguments);
        int number = 0;
        for (const std::wstring& line :
             linesOf(fromUtf8(runTool(installation, L"--json " + arguments).output)))
            write(name + '-' + std::to_string(++number), toUtf8(line));
        EXPECT_GT(number, 2) << name;
    }

    // The check against the schema runs all tests of this suite in one process.
    static void TearDownTestSuite()
    {
        CLI::App app;
        zemlink::Given given;
        bool isJson = false;
        zemlink::describe(app, given, isJson);
        for (const CLI::App* command : app.get_subcommands({}))
            if (_wgetenv(L"ZEMLINK_OUTPUTS"))
                EXPECT_TRUE(commandsRun().contains(command->get_name())) << command->get_name();
    }

    Installation installation{Registry::ofTheUser};

private:
    static std::set<std::string>& commandsRun()
    {
        static std::set<std::string> words;
        return words;
    }
};

constexpr std::pair<const char*, const wchar_t*> kindsOfDumps[] = {
    {"open-request", L"command"},     {"new-file-request", L"command"},
    {"check-in-request", L"command"}, {"machine-settings", L"machine"},
    {"check-out-answer", L"answer"},  {"check-in-answer", L"answer"},
    {"settings", L"settings"},        {"load-log", L"log"},
    {"commit-notice", L"notices"},    {"setup-sheet-notice", L"notices"},
    {"queue-notice", L"notices"},     {"tools-notice", L"notices"},
    {"nc-queue", L"queue"},
};

} // namespace

TEST_F(ZemlinkJson, isWrittenForEachStateOfTheSystem)
{
    run("doctor-empty", L"doctor --all");
    run("status-empty", L"status");
    run("no-host", L"new 3");
    run("wrong-usage", L"open seventeen");
    run("no-file", L"decode C:\\nowhere.txt");
    installCompanionWithLibrary(installation);
    writeBytes(installation.path(L"cfg\\settings.ini"), "UseFtpServer=n\n");
    writeBytes(installation.path(L"temp\\torvapdm-4294967292.dat"),
               std::string("\1\0\0\0\1\0\0\0a\0", 10));
    const std::wstring part = installation.path(L"plate.mcam");
    writeBytes(part, "");
    const CompanionProgram companion(installation);
    const HostProgram host(installation, "wait-for OnFileNew 60000\nset backplot true\n");
    ASSERT_TRUE(waitUntil([&] { return host.window() != nullptr; }) && host.waitForCommandFile());
    ASSERT_NE(companion.waitForWindow(), nullptr);
    run("status", L"status");
    run("open", L"open 17 " + quoted(part) + L" --until-opened --timeout 60");
    run("port", L"listen --count 1");
    run("checkin", L"checkin plate.mcam");
    ASSERT_TRUE(host.waitForTrace(L"OnFileNew"));
    run("pending", L"open 19 " + quoted(part) + L" --until-opened --timeout 1");
    ASSERT_EQ(companion.run(L"--send bracket --id 18"), carriedOut);
    ASSERT_TRUE(companion.waitForLog(L"taken id=18"));
    run("status-waiting", L"status");
    run("doctor-waiting", L"doctor --all");
    run("events", L"decode " + quoted(installation.path(L"sys\\companion.log")));
    run("copies", L"decode " + quoted(installation.path(L"sys\\working-copies.txt")));
    runLines("watch", L"watch --since \"2026-11-01 00:00\" --timeout 1");
    run("recorded", L"record " + quoted(installation.path(L"session.zip")) + L" --timeout 1");
    run("archive", L"report " + quoted(installation.path(L"support.zip")) + L" --recording " +
                       quoted(installation.path(L"session.zip")));
    run("log", L"decode " + quoted(installation.path(L"sys\\mcxlog.txt")));
}

TEST_F(ZemlinkJson, isWrittenForEachKindOfFile)
{
    const auto dumps = documents::dumpsOfPages();
    for (const auto& [dump, kind] : kindsOfDumps) {
        const auto found = dumps.find(dump);
        ASSERT_NE(found, dumps.end()) << dump;
        const auto bytes = documents::bytesOf(found->second);
        if (!bytes)
            continue; // the page leaves some of them out
        writeBytes(installation.path(L"x.bin"), *bytes);
        run(std::string("decoded-") + dump,
            L"decode " + quoted(installation.path(L"x.bin")) + L" --as " + kind);
    }
    for (const wchar_t* kind :
         {L"command", L"machine", L"answer", L"commits", L"tools", L"queue", L"notices", L"picture",
          L"log", L"events", L"bookmark", L"copies", L"settings"}) {
        writeBytes(installation.path(L"x.bin"), "odd\r\nTOOL-5\n");
        run("odd-" + toUtf8(kind),
            L"decode " + quoted(installation.path(L"x.bin")) + L" --as " + kind);
    }
}

TEST_F(ZemlinkJson, isWrittenForAReplay)
{
    const std::wstring recording = programFolder() + L"shipped\\recordings\\new-file.zip";
    run("replayed", L"replay " + quoted(recording) + L" --at-once --timeout 1"); // without a host
}

TEST_F(ZemlinkJson, isWrittenForAVerification)
{
    const std::wstring folder = installation.path(L"a & b");
    CreateDirectoryW(folder.c_str(), nullptr);
    const std::wstring program = folder + L"\\TORVA-ZEM.exe";
    const std::wstring junit = installation.path(L"rules.xml");
    CopyFileW((programFolder() + L"start_recorder.exe").c_str(), program.c_str(), TRUE);
    run("verified", L"verify companion " + quoted(program) + L" --junit " + quoted(junit));
    const std::string xml = readBytes(junit).value_or("");
    EXPECT_TRUE(xml.starts_with("<?xml"));
    if (const wchar_t* outputs = _wgetenv(L"ZEMLINK_OUTPUTS"))
        writeBytes(outputs + std::wstring(L"\\verified.xml"), xml);
}

TEST_F(ZemlinkJson, isWrittenForEachNotice)
{
    const Sockets sockets;
    note(L"listen");
    const ToolRun listening(installation, L"listen --count 2 --json");
    ASSERT_TRUE(listening.waitForOutput("{\"listening\":4559}\n"));
    EXPECT_TRUE(sendToCompanion("TOOL-17\n"));
    EXPECT_TRUE(sendToCompanion("hello\n"));
    EXPECT_EQ(listening.waitForExit(), 0u);
    int number = 0;
    for (const std::wstring& line : linesOf(fromUtf8(listening.output())))
        write("notice-" + std::to_string(++number), toUtf8(line));
    EXPECT_EQ(number, 3);
}
