// make_recordings FOLDER [NAME]: records the sessions in FOLDER, or one of them: for each
// `NAME.script` there, what passes between the stand-in Companion, which carries out the script's
// `# Companion: ARGUMENTS` lines, and the stand-in host, which runs the script, as `NAME.zip`.
#include "support/companion_program.h"
#include "support/host_program.h"
#include "support/session_script.h"
#include "tools/zemlink/session/recording.h"
#include "zemlink/tool_run.h"

#include <algorithm>
#include <cstdio>

using namespace testing_support;

namespace {

constexpr const char* recordedSeconds = "20"; // longer than any of the sessions takes
constexpr DWORD quietMs = 1500;

// Until neither program has done anything for a while.
void waitForQuiet(const HostProgram& host, const CompanionProgram& companion)
{
    size_t before = 0;
    for (;;) {
        const size_t now = host.trace().size() + companion.log().size();
        if (now == before)
            return;
        before = now;
        Sleep(quietMs);
    }
}

// What exists only for a moment is not seen on a busy machine; the Companion's log has what there
// was.
bool isComplete(const zemlink::Recording& recording, const CompanionProgram& companion)
{
    const auto recorded = [&](zemlink::EventKind kind) {
        return static_cast<size_t>(
            std::ranges::count(recording.events, kind, &zemlink::ExchangeEvent::kind));
    };
    const size_t requests = companion.count(L"sent id=") + companion.count(L"new-file id=") +
                            companion.count(L"check-in id=");
    return recorded(zemlink::EventKind::machineSettingsWritten) ==
               companion.count(L"settings id=") &&
           recorded(zemlink::EventKind::requestWritten) == requests &&
           recorded(zemlink::EventKind::notice) == companion.count(L"line bytes=");
}

bool record(const std::filesystem::path& scriptFile)
{
    const std::string script = readBytes(scriptFile.native()).value_or("");
    const std::filesystem::path file = std::filesystem::path(scriptFile).replace_extension(L".zip");
    std::filesystem::remove(file);
    const Installation installation(Registry::ofTheUser, L"C:\\TORVA\\ZEM");
    const SessionFiles sessionFiles(script);
    installCompanionWithLibrary(installation);
    const CompanionProgram companion(installation);
    companion.waitForWindow();
    const ToolRun recorder(installation, L"record " + quoted(file.native()) + L" --timeout " +
                                             fromUtf8(recordedSeconds));
    if (!recorder.waitForOutput("recording"))
        return false;
    const HostProgram host(installation, script);
    waitUntil([&] { return host.window() != nullptr && host.waitForCommandFile(); });
    for (const std::wstring& arguments : sessionLines(script, L"Companion")) {
        if (companion.run(arguments) != carriedOut)
            return false;
        waitForQuiet(host, companion);
    }
    return recorder.waitForExit() == 0u &&
           isComplete(zemlink::readRecording(file.native()), companion);
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
        const bool isFine = record(each.path());
        std::printf("%ls: %s\n", each.path().stem().c_str(), isFine ? "recorded" : "failed");
        areFine = areFine && isFine;
    }
    return areFine ? 0 : 1;
}
