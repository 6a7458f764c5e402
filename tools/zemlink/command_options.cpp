#include "tools/zemlink/command_options.h"

#include "tools/zemlink/reports/exchange_kind.h"
#include "tools/zemlink/session/exchange_event.h"
#include "tools/zemlink/session/local_time.h"

#include <limits>

namespace zemlink {
namespace {

constexpr std::int64_t longestTimeoutSeconds = 86400;
constexpr std::int64_t largestProcess = std::numeric_limits<std::uint32_t>::max();

CLI::Validator idRange()
{
    return CLI::Range(std::numeric_limits<std::int32_t>::min(),
                      std::numeric_limits<std::int32_t>::max());
}

// The parser would accept `010` as eight and `0x11` as seventeen.
std::string notDecimal(const std::string& number)
{
    const std::string digits = number.substr(number.starts_with('-') ? 1 : 0);
    const bool isDecimal = !digits.empty() && digits.find_first_not_of("0123456789") == digits.npos;
    const bool isPlain = isDecimal && (digits.front() != '0' || number == "0");
    return isPlain ? "" : number + " is not a decimal number";
}

CLI::Validator decimal()
{
    return CLI::Validator(notDecimal, "");
}

std::string notMinusOne(const std::string& id)
{
    return id == "-1" ? "-1 means no request; the host would open nothing" : "";
}

void addHost(CLI::App& command, Given& given)
{
    command.add_option("--host", given.host, "process id of the host; default: the only one")
        ->check(decimal())
        ->check(CLI::Range(std::int64_t{1}, largestProcess))
        ->type_name("PID");
}

void addDeliveryOptions(CLI::App& command, Given& given)
{
    addHost(command, given);
    command
        .add_option("--timeout", given.timeoutSeconds,
                    "seconds to wait until the command file is empty, and again until the request "
                    "is taken (10)")
        ->check(decimal())
        ->check(CLI::Range(std::int64_t{1}, longestTimeoutSeconds))
        ->type_name("SECONDS");
}

void addRequests(CLI::App& app, Given& given)
{
    CLI::App* open = app.add_subcommand("open", "open a file in a host");
    open->add_option("ID", given.id, "request id")
        ->required()
        ->check(decimal())
        ->check(idRange())
        ->check(CLI::Validator(notMinusOne, ""));
    open->add_option("PATH", given.path, "the file")->required();
    open->add_flag("--until-opened", given.isUntilOpened,
                   "wait until the host has opened the file; --timeout limits this, too");
    CLI::App* newFile = app.add_subcommand("new", "start a new file in a host");
    newFile->add_option("ID", given.id, "request id")
        ->required()
        ->check(decimal())
        ->check(idRange());
    CLI::App* checkIn =
        app.add_subcommand("checkin", "close the file of a host, as after a check-in");
    checkIn->add_option("NAME", given.path, "name of the file, as a comment; the host ignores it");
    for (CLI::App* command : {open, newFile, checkIn})
        addDeliveryOptions(*command, given);
}

void addTimeout(CLI::App& command, Given& given)
{
    command.add_option("--timeout", given.timeoutSeconds, "end after this number of seconds")
        ->check(decimal())
        ->check(CLI::Range(std::int64_t{1}, longestTimeoutSeconds))
        ->type_name("SECONDS");
}

void addListen(CLI::App& app, Given& given)
{
    CLI::App* listen = app.add_subcommand("listen", "show the notices that hosts send to "
                                                    "port 4559; the Companion must not be running");
    listen->add_option("--count", given.count, "end after this number of notices")
        ->check(decimal())
        ->check(CLI::Range(std::int64_t{1}, std::int64_t{1'000'000'000}))
        ->type_name("N");
    addTimeout(*listen, given);
}

void addDecode(CLI::App& app, Given& given)
{
    CLI::App* decode = app.add_subcommand("decode", "show the content of an exchange file");
    decode->add_option("FILE", given.path, "the file")->required();
    decode->add_option("--as", given.kind, "its kind; default: from its name or content")
        ->check(CLI::IsMember(kindWords()))
        ->type_name("KIND");
}

std::string notATime(const std::string& time)
{
    return parseTimeOrDate(time, currentTime())
               ? ""
               : time + " is neither a time such as 10:11 or 10:11:12 nor a date and time such as "
                        "\"2026-11-21 10:11:12\"";
}

std::vector<std::string> eventWords()
{
    std::vector<std::string> all;
    for (int i = 0; i <= static_cast<int>(EventKind::notice); ++i)
        all.emplace_back(eventWord(static_cast<EventKind>(i)));
    return all;
}

void addWatch(CLI::App& app, Given& given)
{
    CLI::App* watch = app.add_subcommand("watch", "show what the Companion and the hosts do, a "
                                                  "line for each event, until Ctrl-C");
    watch->add_option("--only", given.only, "show only these events, separated by commas")
        ->delimiter(',')
        ->check(CLI::IsMember(eventWords()))
        ->type_name("EVENT");
    watch
        ->add_option("--since", given.since,
                     "first show the past since this local time, HH:MM[:SS] of today or "
                     "\"YYYY-MM-DD HH:MM:SS\", from the Companion's log: programs that started "
                     "and ended, requests, commits taken and notices. Load steps, pictures, NC "
                     "queues, tool data and check-out answers are not in it, and nothing is "
                     "without the log")
        ->check(CLI::Validator(notATime, ""))
        ->type_name("TIME");
    watch->add_option("--count", given.count, "end after this number of events")
        ->check(decimal())
        ->check(CLI::Range(std::int64_t{1}, std::int64_t{1'000'000'000}))
        ->type_name("N");
    addTimeout(*watch, given);
}

void addRecord(CLI::App& app, Given& given)
{
    CLI::App* record = app.add_subcommand("record", "record what the Companion and the hosts do, "
                                                    "with all bytes, until Ctrl-C");
    record->add_option("FILE", given.path, "the recording to write; it must not exist")->required();
    record->add_flag("--redact", given.isRedacted,
                     "replace the names of users, folders and parts, the same everywhere");
    addTimeout(*record, given);
}

void addReplay(CLI::App& app, Given& given)
{
    CLI::App* replay = app.add_subcommand(
        "replay", "play the Companion's side of a recording against a host, and show what "
                  "differs; the Companion must not be running");
    replay->add_option("FILE", given.path, "the recording")->required();
    addHost(*replay, given);
    replay->add_flag("--at-once", given.isAtOnce, "without the recorded pauses");
    replay
        ->add_option("--timeout", given.timeoutSeconds,
                     "seconds to wait for each thing that a host was recorded doing (30)")
        ->check(decimal())
        ->check(CLI::Range(std::int64_t{1}, longestTimeoutSeconds))
        ->type_name("SECONDS");
}

void addReport(CLI::App& app, Given& given)
{
    CLI::App* report = app.add_subcommand(
        "report", "write a support archive: status, doctor, logs and a list of the files; never "
                  "the content of a part");
    report->add_option("FILE", given.path, "the new zip file")->required();
    report
        ->add_option("--recording", given.recording,
                     "a recording to include; default: the one under way, if any")
        ->type_name("FILE");
    report->add_flag("--redact", given.isRedacted,
                     "replace the names of users, folders and parts, the same everywhere");
}

void addRequestArguments(CLI::App& verify, const char* option, std::string& arguments,
                         const std::string& request)
{
    verify
        .add_option(option, arguments,
                    "companion: arguments that make a second start of the program send " + request +
                        "; {host} stands for the host's process id")
        ->type_name("ARGUMENTS");
}

void addVerify(CLI::App& app, Given& given)
{
    CLI::App* verify = app.add_subcommand(
        "verify",
        "check a Companion, or the add-in in a host that takes scripts, against the rules "
        "of the exchanges; no other Companion or host may be running");
    verify->add_option("KIND", given.verified, "companion or addin")
        ->required()
        ->check(CLI::IsMember({"companion", "addin"}));
    verify
        ->add_option("PROGRAM", given.path,
                     "companion: the program, whose folder becomes the installation folder "
                     "meanwhile, so give a copy; addin: the host")
        ->required();
    verify->add_option("LIBRARY", given.library, "addin: the add-in");
    addRequestArguments(*verify, "--open", given.openArguments, "an open request");
    addRequestArguments(*verify, "--new-file", given.newFileArguments, "a new-file request");
    addRequestArguments(*verify, "--check-in", given.checkInArguments, "a check-in");
    verify->add_option("--junit", given.junit, "also write the result as a JUnit report")
        ->type_name("FILE");
    verify
        ->add_option("--timeout", given.timeoutSeconds,
                     "seconds to wait for each thing that the program should do (10)")
        ->check(decimal())
        ->check(CLI::Range(std::int64_t{1}, longestTimeoutSeconds))
        ->type_name("SECONDS");
    verify->callback([&given] {
        if ((given.verified == "addin") == given.library.empty())
            throw CLI::ValidationError("LIBRARY", "is for addin, and required there");
    });
}

constexpr const char* exitCodes =
    "Exit codes: 0 done; 1 problem found or another error; 2 wrong usage; 3 no host, or several;\n"
    "4 request not taken; 5 taken, but the file not opened in time; 6 port 4559 in use.";

struct Example {
    const char* command;
    const char* lines;
};

constexpr Example examples[] = {
    {"status", "  zemlink status\n  zemlink --json status\n"},
    {"open", "  zemlink open 17 C:\\TORVA\\ZEM\\work\\bracket.mcam\n"
             "  zemlink open 17 bracket.mcam --host 4711 --until-opened --timeout 60\n"},
    {"new", "  zemlink new 5\n"},
    {"checkin", "  zemlink checkin bracket.mcam --host 4711\n"},
    {"listen", "  zemlink listen --count 1 --timeout 20\n"},
    {"decode", "  zemlink decode C:\\TORVA\\ZEM\\temp\\ncqueue-17.txt\n"
               "  zemlink decode copy-of-settings.txt --as settings\n"},
    {"watch", "  zemlink watch\n"
              "  zemlink watch --only request-written,request-taken --since 10:11\n"},
    {"record", "  zemlink record monday.zip\n"
               "  zemlink record monday.zip --redact --timeout 3600\n"},
    {"replay", "  zemlink replay monday.zip\n  zemlink replay monday.zip --at-once --host 4711\n"},
    {"report", "  zemlink report support.zip\n"
               "  zemlink report support.zip --redact --recording monday.zip\n"},
    {"verify", "  zemlink verify companion C:\\test\\TORVA-ZEM.exe --junit rules.xml\n"
               "  zemlink verify addin Mastercam.exe torvapdm.dll\n"},
    {"doctor", "  zemlink doctor\n  zemlink doctor --all --json\n"},
};

void addExamples(CLI::App& app)
{
    for (const Example& example : examples)
        app.get_subcommand(example.command)
            ->footer(std::string("Examples:\n") + example.lines + '\n' + exitCodes);
}

} // namespace

void describe(CLI::App& app, Given& given, bool& isJson)
{
    app.set_version_flag("--version", "zemlink " ZEMLINK_VERSION);
    app.add_flag("--json", isJson, "output JSON");
    app.require_subcommand(0, 1); // so that an unknown word is reported as such
    app.fallthrough();
    app.footer(exitCodes);
    app.add_subcommand("status", "show the installation and the programs that use it");
    addRequests(app, given);
    addListen(app, given);
    addDecode(app, given);
    addWatch(app, given);
    addRecord(app, given);
    addReplay(app, given);
    addReport(app, given);
    addVerify(app, given);
    app.add_subcommand("doctor", "find common problems and show how to fix each")
        ->add_flag("--all", given.isEverythingShown, "also show what is fine");
    addExamples(app);
}

} // namespace zemlink
