#include "tools/zemlink/arguments.h"

#include "tools/zemlink/command_options.h"
#include "tools/zemlink/reports/report.h"
#include "tools/zemlink/session/local_time.h"

#include <sstream>

namespace zemlink {
namespace {

Command commandOf(const std::string& word)
{
    constexpr std::pair<std::string_view, Command> words[] = {
        {"status", Command::status},   {"open", Command::open},     {"new", Command::newFile},
        {"checkin", Command::checkIn}, {"listen", Command::listen}, {"decode", Command::decode},
        {"doctor", Command::doctor},   {"watch", Command::watch},   {"replay", Command::replay},
        {"report", Command::report},   {"record", Command::record}, {"verify", Command::verify}};
    for (const auto& [each, command] : words)
        if (each == word)
            return command;
    return Command::none;
}

Arguments argumentsOf(const CLI::App& app, const Given& given, bool isJson)
{
    Arguments arguments;
    arguments.command = commandOf(app.get_subcommands().front()->get_name());
    arguments.isJson = isJson;
    arguments.id = static_cast<std::int32_t>(given.id);
    arguments.path = given.path;
    arguments.kind = kindOfWord(given.kind);
    arguments.isAtOnce = given.isAtOnce;
    arguments.isRedacted = given.isRedacted;
    arguments.recording = given.recording;
    arguments.isEverythingShown = given.isEverythingShown;
    arguments.isUntilOpened = given.isUntilOpened;
    arguments.verified = given.verified == "addin" ? VerifiedKind::addIn : VerifiedKind::companion;
    arguments.library = given.library;
    arguments.junit = given.junit;
    arguments.openArguments = given.openArguments;
    arguments.newFileArguments = given.newFileArguments;
    arguments.checkInArguments = given.checkInArguments;
    if (given.host != 0)
        arguments.host = static_cast<std::uint32_t>(given.host);
    if (given.timeoutSeconds != 0)
        arguments.timeoutMs = given.timeoutSeconds * 1000;
    if (given.count != 0)
        arguments.count = given.count;
    for (const std::string& word : given.only)
        arguments.only.push_back(eventOfWord(word).value());
    arguments.since = parseTimeOrDate(given.since, currentTime());
    return arguments;
}

// The requested help or version, or the error.
Arguments onlyText(const CLI::App& app, const CLI::ParseError& error)
{
    std::ostringstream out;
    const bool isWrong = app.exit(error, out, out) != 0;
    Arguments arguments;
    arguments.text = out.str();
    arguments.exitCode = isWrong ? wrongUsage : done;
    return arguments;
}

constexpr const char* description =
    "Shows and tests the exchanges between the Companion and the hosts' add-in.";

std::vector<std::string> optionsOf(const CLI::App& command)
{
    std::vector<std::string> options;
    for (const CLI::Option* option : command.get_options())
        for (const std::string& name : option->get_lnames())
            if (name != "help")
                options.push_back("--" + name);
    return options;
}

} // namespace

std::vector<CommandSyntax> commandTable()
{
    CLI::App app(description, "zemlink");
    Given given;
    bool isJson = false;
    describe(app, given, isJson);
    std::vector<CommandSyntax> commands;
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; }))
        commands.push_back({command->get_name(), optionsOf(*command), command->help()});
    return commands;
}

Arguments parseArguments(std::vector<std::string> words)
{
    CLI::App app(description, "zemlink");
    Given given;
    bool isJson = false;
    describe(app, given, isJson);
    const bool isJsonAsked = std::ranges::find(words, "--json") != words.end();
    std::reverse(words.begin(), words.end()); // the parser expects them in reverse
    try {
        app.parse(std::move(words));
        if (app.get_subcommands().empty())
            throw CLI::RequiredError("A command");
    } catch (const CLI::ParseError& error) {
        Arguments arguments = onlyText(app, error);
        arguments.isJson = isJsonAsked; // not parsed after an error
        return arguments;
    }
    return argumentsOf(app, given, isJson);
}

} // namespace zemlink
