// zemlink's command line, and its messages about requests and the port.
#include "tools/zemlink/reports/answers.h"
#include "tools/zemlink/arguments.h"
#include "tools/zemlink/session/local_time.h"

#include <gtest/gtest.h>

using namespace zemlink;
using peer::Verdict;

namespace {

// The first line of the usage error; empty when the arguments are valid.
std::string usageError(std::vector<std::string> words)
{
    const Arguments arguments = parseArguments(std::move(words));
    EXPECT_EQ(arguments.exitCode, arguments.text.empty() ? 0 : 2);
    EXPECT_EQ(arguments.command == Command::none, !arguments.text.empty());
    return arguments.text.substr(0, arguments.text.find('\n'));
}

Port usedBy(std::uint32_t process, const wchar_t* program)
{
    Port port;
    port.holder = process;
    port.program = program;
    return port;
}

} // namespace

TEST(Arguments, allowOptionsInAnyOrder)
{
    const Arguments open = parseArguments(
        {"open", "--timeout", "3", "-5", "C:\\a b.mcam", "--json", "--host", "4711"});
    EXPECT_EQ(open.command, Command::open);
    EXPECT_EQ(open.id, -5);
    EXPECT_EQ(open.path, "C:\\a b.mcam");
    EXPECT_EQ(open.host, 4711u);
    EXPECT_EQ(open.timeoutMs, 3000);
    EXPECT_TRUE(open.isJson);
    const Arguments decode = parseArguments({"--json", "decode", "x", "--as", "queue"});
    EXPECT_EQ(decode.command, Command::decode);
    EXPECT_EQ(decode.kind, ExchangeKind::ncQueue);
    EXPECT_TRUE(decode.isJson);
}

TEST(Arguments, selectWhatToVerify)
{
    const Arguments companion =
        parseArguments({"verify", "companion", "a.exe", "--open", "--send x --host {host}",
                        "--check-in", "-c", "--junit", "rules.xml", "--timeout", "3"});
    EXPECT_EQ(companion.command, Command::verify);
    EXPECT_EQ(companion.verified, VerifiedKind::companion);
    EXPECT_EQ(companion.path, "a.exe");
    EXPECT_EQ(companion.openArguments, "--send x --host {host}");
    EXPECT_EQ(companion.newFileArguments, "");
    EXPECT_EQ(companion.checkInArguments, "-c");
    EXPECT_EQ(companion.junit, "rules.xml");
    EXPECT_EQ(companion.timeoutMs, 3000);
    const Arguments addIn = parseArguments({"verify", "addin", "host.exe", "a.dll"});
    EXPECT_EQ(addIn.verified, VerifiedKind::addIn);
    EXPECT_EQ(addIn.library, "a.dll");
    EXPECT_NE(usageError({"verify", "addin", "host.exe"}), "");
    EXPECT_NE(usageError({"verify", "companion", "a.exe", "a.dll"}), "");
    EXPECT_NE(usageError({"verify", "host", "a.exe"}), "");
}

TEST(Arguments, selectWhatToReplayAndReport)
{
    const Arguments replay = parseArguments({"replay", "--at-once", "a.zip", "--host", "8"});
    EXPECT_EQ(replay.command, Command::replay);
    EXPECT_EQ(replay.path, "a.zip");
    EXPECT_TRUE(replay.isAtOnce);
    EXPECT_EQ(replay.host, 8u);
    const Arguments report =
        parseArguments({"report", "b.zip", "--redact", "--recording", "a.zip"});
    EXPECT_EQ(report.command, Command::report);
    EXPECT_EQ(report.path, "b.zip");
    EXPECT_TRUE(report.isRedacted);
    EXPECT_EQ(report.recording, "a.zip");
    EXPECT_FALSE(parseArguments({"report", "b.zip"}).isRedacted);
}

TEST(Arguments, selectEventsAndTimes)
{
    const Arguments watch = parseArguments({"watch", "--only", "notice,request-taken", "--since",
                                            "2026-11-21 10:11", "--count", "3", "--timeout", "2"});
    EXPECT_EQ(watch.command, Command::watch);
    EXPECT_EQ(watch.only, (std::vector{EventKind::notice, EventKind::requestTaken}));
    EXPECT_EQ(watch.since, parseLocalTime("2026-11-21 10:11"));
    EXPECT_EQ(watch.count, 3);
    EXPECT_EQ(watch.timeoutMs, 2000);
    const Arguments record = parseArguments({"record", "C:\\a.zip", "--timeout", "3"});
    EXPECT_EQ(record.command, Command::record);
    EXPECT_EQ(record.path, "C:\\a.zip");
    EXPECT_EQ(record.timeoutMs, 3000);
    EXPECT_FALSE(record.isRedacted);
    EXPECT_TRUE(parseArguments({"record", "a", "--redact"}).isRedacted);
}

TEST(Arguments, areEmptyByDefault)
{
    const Arguments watch = parseArguments({"watch"});
    EXPECT_FALSE(watch.since || watch.count || watch.timeoutMs || !watch.only.empty());
    const Arguments listen = parseArguments({"listen"});
    EXPECT_EQ(listen.command, Command::listen);
    EXPECT_FALSE(listen.isJson || listen.count || listen.timeoutMs || listen.host || listen.kind);
    EXPECT_EQ(parseArguments({"checkin"}).path, "");
    EXPECT_EQ(parseArguments({"new", "4294967"}).id, 4294967);
    EXPECT_EQ(parseArguments({"status"}).command, Command::status);
    EXPECT_EQ(parseArguments({"doctor"}).command, Command::doctor);
}

TEST(Arguments, areRejectedWithTheCause)
{
    const std::pair<std::vector<std::string>, const char*> rows[] = {
        {{}, "A command is required"},
        {{"bogus"}, "The following argument was not expected: bogus"},
        {{"open", "17"}, "PATH is required"},
        {{"open", "-1", "x"}, "ID: -1 means no request; the host would open nothing"},
        {{"new", "2147483648"}, "ID: Value 2147483648 not in range -2147483648 to 2147483647"},
        {{"open", "010", "x"}, "ID: 010 is not a decimal number"},
        {{"open", "0x11", "x"}, "ID: 0x11 is not a decimal number"},
        {{"open", "--", "-01", "x"}, "ID: -01 is not a decimal number"},
        {{"new", "5", "--host", "0x10"}, "--host: 0x10 is not a decimal number"},
        {{"checkin", "--host", "0"}, "--host: Value 0 not in range 1 to 4294967295"},
        {{"record"}, "FILE is required"},
        {{"watch", "--since", "25:00"},
         "--since: 25:00 is neither a time such as 10:11 or 10:11:12 nor a date and time such as "
         "\"2026-11-21 10:11:12\""},
        {{"decode", "x", "--as", "y"},
         "--as: y not in "
         "{command,machine,answer,commits,tools,queue,notices,picture,log,events,bookmark,copies,"
         "settings}"},
    };
    for (const auto& [words, error] : rows)
        EXPECT_EQ(usageError(words), error);
    EXPECT_EQ(usageError({"watch", "--only", "notice,hello"}).find("--only: hello not in {"), 0u);
    EXPECT_NE(usageError({"status", "--count", "1"}), "");
    EXPECT_NE(usageError({"listen", "--timeout", "0"}), "");
}

TEST(Arguments, showVersionAndHelp)
{
    const Arguments version = parseArguments({"--version"});
    EXPECT_EQ(version.command, Command::none);
    EXPECT_EQ(version.exitCode, 0);
    EXPECT_EQ(version.text, "zemlink " VERSION_TEXT "\n");
    const Arguments help = parseArguments({"decode", "--help"});
    EXPECT_EQ(help.exitCode, 0);
    EXPECT_NE(help.text.find("Exit codes: 0 done; 1 problem found"), std::string::npos)
        << help.text;
}

TEST(Arguments, areJsonAlsoWhenTheyAreWrong)
{
    EXPECT_TRUE(parseArguments({"open", "--json"}).isJson);
    EXPECT_FALSE(parseArguments({"open"}).isJson);
}

TEST(CommandTable, hasAnExampleForEachCommand)
{
    for (const CommandSyntax& command : commandTable())
        EXPECT_NE(command.help.find("Examples:\n  zemlink " + command.name), std::string::npos)
            << command.help;
}

TEST(HostChoice, isTheOnlyOrTheNamedHost)
{
    const std::vector<peer::Host> two = {{4, L"a"}, {8, L"b"}};
    EXPECT_EQ(chooseHost({two[0]}, {}).process, 4u);
    EXPECT_EQ(chooseHost(two, 8).process, 8u);
    EXPECT_EQ(chooseHost({}, {}).name, "no-host");
    EXPECT_EQ(chooseHost(two, {}).name, "several-hosts");
    EXPECT_EQ(chooseHost(two, 9).name, "not-a-host");
    EXPECT_EQ(chooseHost({}, {}).reason, "no host with the add-in is running");
    EXPECT_FALSE(chooseHost(two, {}).process.has_value());
    EXPECT_EQ(chooseHost(two, {}).reason,
              "several hosts are running, choose one with --host: 4 (a), 8 (b)");
    EXPECT_EQ(chooseHost(two, 9).reason, "process 9 is not a running host with the add-in");
}

TEST(Answer, succeedsOnlyWhenTaken)
{
    const Report request{{"request", "new file"}};
    EXPECT_EQ(answerOutcome(request, 4, Verdict::taken, "").report.dump(),
              R"({"request":"new file","host":4,"taken":true,)"
              R"("answer":"The host has taken the request."})");
    EXPECT_EQ(answerOutcome(request, 4, Verdict::taken, "").exitCode, done);
    for (const Verdict verdict :
         {Verdict::full, Verdict::missing, Verdict::notTaken, Verdict::lost})
        EXPECT_EQ(answerOutcome(request, 4, verdict, "").exitCode, notTaken);
    EXPECT_EQ(answerText(Verdict::full, "Access denied. (error 5)"),
              "Nothing was written, the command file cannot be written: Access denied. (error 5)");
    EXPECT_EQ(answerText(Verdict::lost, ""),
              "The command file disappeared with the request: the host has ended.");
}

TEST(PortTakenText, namesTheProgramIfKnown)
{
    EXPECT_EQ(portTakenText("In use. (error 10048)", usedBy(99, L"C:\\x.exe"), true),
              "port 4559 cannot be opened: In use. (error 10048); process 99 (C:\\x.exe) uses it");
    EXPECT_EQ(portTakenText("e", usedBy(99, L""), false),
              "port 4559 cannot be opened: e; process 99 uses it");
    EXPECT_EQ(portTakenText("e", Port(), true),
              "port 4559 cannot be opened: e; the Companion is running, end it first");
    EXPECT_EQ(portTakenText("e", Port(), false),
              "port 4559 cannot be opened: e; another program seems to use it");
}
