// make_recordings FOLDER [NAME]: records the sessions in FOLDER, or one of them: for each
// `NAME.script` there with steps of the Companion's side, what passes between that side and the
// stand-in hosts, which run the script, as `NAME.zip`.
#include "peer/wire_constants.h"
#include "support/companion_program.h"
#include "support/session_script.h"
#include "tools/zemlink/session/recording.h"
#include "zemlink/tool_run.h"

#include <algorithm>
#include <cstdio>

using namespace testing_support;
using zemlink::EventKind;

namespace {

constexpr const char* recordedSeconds = "30"; // longer than any of the sessions takes
constexpr DWORD quietMs = 1500;

// ---- Steps of the Companion's side --------------------------------------------------------------

struct Step {
    std::wstring word;
    std::wstring text;
};

std::vector<Step> stepsOf(const std::string& script)
{
    std::vector<Step> steps;
    for (const std::wstring& line : linesOf(fromUtf8(script)))
        for (const wchar_t* word : {L"Companion", L"zemlink", L"Answer"})
            for (const std::wstring& text : sessionLines(toUtf8(line), word))
                steps.push_back({word, text});
    return steps;
}

std::wstring replaced(std::wstring text, const std::wstring& from, const std::wstring& to)
{
    const size_t at = text.find(from);
    return at == text.npos ? text : text.replace(at, from.size(), to);
}

// Not the file that the add-in has named: the add-in keeps that one open, shared with nobody.
std::filesystem::path answerPath()
{
    return std::filesystem::temp_directory_path() /
           (std::wstring(peer::checkoutAnswerStart) + L"1.tmp");
}

void writeAnswer(const std::wstring& text)
{
    writeBytes(answerPath().native(),
               {reinterpret_cast<const char*>(text.data()), text.size() * sizeof(wchar_t)});
}

// ---- A session ----------------------------------------------------------------------------------

class Session {
public:
    Session(const Installation& installation, const CompanionProgram& companion,
            const std::string& script)
        : installation_(installation),
          companion_(companion),
          steps_(stepsOf(script)),
          first_(startFirstHost(installation, script))
    {
        waitForHost(*first_);
        second_ = startSecondHost(installation, script);
        if (second_)
            waitForHost(*second_);
    }
    ~Session()
    {
        std::error_code ignored;
        std::filesystem::remove(answerPath(), ignored);
    }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    // False when one could not be carried out.
    bool carryOutSteps() const
    {
        return std::ranges::all_of(
            steps_,
            [this](const Step& step) {
                const bool isCarriedOut = carryOut(step);
                waitForQuiet();
                return isCarriedOut;
            });
    }

    // What exists only for a moment is not seen on a busy machine; the Companion's log and the
    // steps have what there was.
    bool isComplete(const zemlink::Recording& recording) const
    {
        const auto recorded = [&](EventKind kind) {
            return static_cast<size_t>(
                std::ranges::count(recording.events, kind, &zemlink::ExchangeEvent::kind));
        };
        const auto isUnknown = [](const zemlink::ExchangeEvent& event) {
            return event.kind == EventKind::requestWritten && event.bytes.empty();
        };
        const size_t requests = companion_.count(L"sent id=") + companion_.count(L"new-file id=") +
                                companion_.count(L"check-in id=") + count(L"zemlink");
        return recorded(EventKind::machineSettingsWritten) == companion_.count(L"settings id=") &&
               recorded(EventKind::requestWritten) == requests &&
               std::ranges::none_of(recording.events, isUnknown) &&
               recorded(EventKind::notice) == companion_.count(L"line bytes=") &&
               recorded(EventKind::answerWritten) == count(L"Answer");
    }

private:
    static void waitForHost(const HostProgram& host)
    {
        waitUntil([&] { return host.window() != nullptr && host.waitForCommandFile(); });
    }

    bool carryOut(const Step& step) const
    {
        if (step.word == L"Companion")
            return companion_.run(withHosts(step.text)) == carriedOut;
        if (step.word == L"zemlink")
            return ToolRun(installation_, withHosts(step.text), L"step").waitForExit() == 0u;
        writeAnswer(step.text);
        return true;
    }

    std::wstring withHosts(const std::wstring& arguments) const
    {
        const auto option = [](const HostProgram& host) {
            return L"--host " + std::to_wstring(host.process().id());
        };
        const std::wstring text = replaced(arguments, L"--host first", option(*first_));
        return second_ ? replaced(text, L"--host second", option(*second_)) : text;
    }

    // Until no program has done anything for a while.
    void waitForQuiet() const
    {
        size_t before = 0;
        for (;;) {
            const size_t now = first_->trace().size() + (second_ ? second_->trace().size() : 0) +
                               companion_.log().size();
            if (now == before)
                return;
            before = now;
            Sleep(quietMs);
        }
    }

    size_t count(const std::wstring& word) const
    {
        return static_cast<size_t>(std::ranges::count(steps_, word, &Step::word));
    }

    const Installation& installation_;
    const CompanionProgram& companion_;
    const std::vector<Step> steps_;
    std::unique_ptr<HostProgram> first_, second_{};
};

bool record(const std::string& script, const std::filesystem::path& file)
{
    std::filesystem::remove(file);
    const Installation installation(Registry::ofTheUser, L"C:\\TORVA\\ZEM");
    const SessionFiles sessionFiles(installation, script);
    installCompanionWithLibrary(installation);
    const CompanionProgram companion(installation);
    companion.waitForWindow();
    const ToolRun recorder(installation, L"record " + quoted(file.native()) + L" --timeout " +
                                             fromUtf8(recordedSeconds));
    if (!recorder.waitForOutput("recording"))
        return false;
    const Session session(installation, companion, script);
    return session.carryOutSteps() && recorder.waitForExit() == 0u &&
           session.isComplete(zemlink::readRecording(file.native()));
}

} // namespace

int wmain(int count, wchar_t** words)
{
    if (count != 2 && count != 3)
        return 2;
    bool areFine = true;
    for (const auto& each : std::filesystem::directory_iterator(words[1])) {
        const bool isWanted = count == 2 || each.path().stem() == words[2];
        if (each.path().extension() != L".script" || !isWanted)
            continue;
        const std::string script = readBytes(each.path().native()).value_or("");
        if (stepsOf(script).empty())
            continue; // a site's session
        const bool isFine =
            record(script, std::filesystem::path(each.path()).replace_extension(L".zip"));
        std::printf("%ls: %s\n", each.path().stem().c_str(), isFine ? "recorded" : "failed");
        areFine = areFine && isFine;
    }
    return areFine ? 0 : 1;
}
