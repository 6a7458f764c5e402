#include "tools/zemlink/verify/addin_rule_groups.h"

#include "peer/command_line.h"
#include "peer/numbers.h"
#include "peer/text.h"
#include "peer/wire_constants.h"

#include <algorithm>
#include <string_view>

namespace zemlink {
namespace {

std::string startsText(const StartsSeen& seen)
{
    std::string text;
    for (const RecordedStart& start : seen.starts)
        text += (text.empty() ? "" : ", ") + ('<' + peer::toUtf8(start.arguments) + '>');
    return text.empty() ? "there was none" : "there were: " + text;
}

const RecordedStart* findStart(const StartsSeen& seen, std::wstring_view word)
{
    for (const RecordedStart& start : seen.starts)
        if (word.empty() ? start.arguments.empty() : start.arguments.starts_with(word))
            return &start;
    return nullptr;
}

// Exactly these arguments.
Sight judgeArguments(const StartsSeen& seen, StartStep step, const std::wstring& expected)
{
    if (seen.reached < step)
        return notSeen(seen.cut);
    for (const RecordedStart& start : seen.starts)
        if (start.arguments == expected)
            return {};
    return broken("no start had the arguments <" + peer::toUtf8(expected) + ">; " +
                  startsText(seen));
}

Sight judgePlainStart(const StartsSeen& seen)
{
    return judgeArguments(seen, StartStep::notRunning, L"");
}

Sight judgeAbout(const StartsSeen& seen)
{
    if (seen.reached < StartStep::notRunning)
        return notSeen(seen.cut);
    const RecordedStart* about = findStart(seen, L"--about");
    if (!about)
        return broken("none had the word --about; " + startsText(seen));
    for (const HostWindow& window : seen.windows) {
        const auto number = static_cast<std::uint32_t>(reinterpret_cast<UINT_PTR>(window.handle));
        if (about->arguments == L"--about --parentwindow " + std::to_wstring(number))
            return {};
    }
    return broken("its arguments were <" + peer::toUtf8(about->arguments) +
                  ">, whose number is not that of a window of the host");
}

// `--checkout "C:\Temp\\TORVA ZEM-40317.tmp"`
bool isCheckOut(std::wstring_view arguments, const std::wstring& folder)
{
    const std::wstring start = L"--checkout \"" + folder + L'\\' + peer::checkoutAnswerStart;
    constexpr std::wstring_view end = L".tmp\"";
    if (!arguments.starts_with(start) || !arguments.ends_with(end) ||
        arguments.size() < start.size() + end.size())
        return false;
    arguments.remove_prefix(start.size());
    arguments.remove_suffix(end.size());
    constexpr std::int64_t mostNumber = 65535;
    return peer::parsePrintedNumber(peer::toUtf8(arguments), 0, mostNumber).has_value();
}

Sight judgeCheckOut(const StartsSeen& seen)
{
    if (seen.reached < StartStep::notRunning)
        return notSeen(seen.cut);
    const RecordedStart* checkOut = findStart(seen, L"--checkout");
    if (!checkOut)
        return broken("none had the word --checkout; " + startsText(seen));
    if (isCheckOut(checkOut->arguments, seen.temporaryFolder))
        return {};
    return broken("its arguments were <" + peer::toUtf8(checkOut->arguments) + '>');
}

std::wstring commitArguments(const StartsSeen& seen)
{
    return L"--commit \"" + peer::fromUtf8(seen.committed) + L'"';
}

Sight judgeCommit(const StartsSeen& seen)
{
    return judgeArguments(seen, StartStep::noWindow, commitArguments(seen));
}

Sight judgeCommitWithoutId(const StartsSeen& seen)
{
    return judgeArguments(seen, StartStep::noId,
                          commitArguments(seen) + L" --id " + std::to_wstring(peer::noZemId));
}

// The window is requested as normal without arguments and as hidden with arguments.
Sight judgeShow(const StartsSeen& seen)
{
    if (seen.starts.empty())
        return notSeen(seen.cut.empty() ? "the Companion was not started" : seen.cut);
    for (const RecordedStart& start : seen.starts) {
        const int expected = start.arguments.empty() ? SW_SHOWNORMAL : SW_HIDE;
        if (start.show != expected)
            return broken("the start <" + peer::toUtf8(start.arguments) + "> requested it as " +
                          std::to_string(start.show));
    }
    return {};
}

Sight judgeBox(const StartsSeen& seen, std::string_view text)
{
    if (seen.reached < StartStep::notInstalled)
        return notSeen(seen.cut);
    const std::string box = "message-box(\"TORVA ZEM\", \"" + std::string(text) + "\")";
    return keptIf(seen.trace.has(box), "no message box \"" + std::string(text) + "\" was shown");
}

Sight judgeNotInstalled(const StartsSeen& seen)
{
    return judgeBox(seen, "TORVA ZEM is not installed.");
}

Sight judgeNotStarted(const StartsSeen& seen)
{
    return judgeBox(seen,
                    "Failed to start TORVA ZEM. Please make sure TORVA ZEM is properly installed.");
}

} // namespace

std::vector<JudgedRule<StartsSeen>> addInStartRules()
{
    return {
        {"messages.not-installed", "Shows a message when About finds no Companion to start.",
         judgeNotInstalled},
        {"messages.not-started", "Shows a message when a save cannot start the Companion.",
         judgeNotStarted},
        {"companion.started", "Starts the Companion without arguments when it is not running.",
         judgePlainStart},
        {"companion.check-out", "Starts it with --checkout and the file for the answer.",
         judgeCheckOut},
        {"companion.about", "Starts it with --about and the host's window.", judgeAbout},
        {"companion.commit", "Starts it with --commit and the file when it shows no window.",
         judgeCommit},
        {"companion.commit-without-id", "Adds --id 4294967295 after a request with the id -1.",
         judgeCommitWithoutId},
        {"companion.window", "Requests its window as normal without arguments, else as hidden.",
         judgeShow},
    };
}

} // namespace zemlink
