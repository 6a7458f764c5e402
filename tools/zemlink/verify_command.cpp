#include "tools/zemlink/verify_command.h"

#include "peer/files.h"
#include "peer/text.h"
#include "tools/zemlink/interruption.h"
#include "tools/zemlink/output.h"
#include "tools/zemlink/session/companion_role.h"
#include "tools/zemlink/verify/addin_rules.h"
#include "tools/zemlink/verify/companion_rules.h"
#include "tools/zemlink/verify/registered_folder.h"
#include "tools/zemlink/verify/rule_report.h"

#include <windows.h>

namespace zemlink {
namespace {

using peer::fromUtf8;

std::wstring fullPath(const std::string& path)
{
    const std::wstring given = fromUtf8(path);
    std::wstring full(GetFullPathNameW(given.c_str(), 0, nullptr, nullptr), L'\0');
    full.resize(
        GetFullPathNameW(given.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
    return full;
}

Findings findingsOf(const Arguments& arguments, HANDLE stop, const ShowFinding& show)
{
    const std::int64_t boundMs = arguments.timeoutMs.value_or(usualBoundMs);
    if (arguments.verified == VerifiedKind::addIn)
        return verifyAddIn({fullPath(arguments.path), fullPath(arguments.library), boundMs}, stop,
                           show);
    return verifyCompanion({fullPath(arguments.path), fromUtf8(arguments.openArguments),
                            fromUtf8(arguments.newFileArguments),
                            fromUtf8(arguments.checkInArguments), boundMs},
                           stop, show);
}

Outcome outcomeOf(const Arguments& arguments, const Interruption& interruption)
{
    const bool isAddIn = arguments.verified == VerifiedKind::addIn;
    const Verified verified{isAddIn ? "addin" : "companion",
                            isAddIn ? arguments.library : arguments.path};
    const auto show = [&](const Finding& finding) {
        if (!arguments.isJson)
            print(Stream::output, findingText(finding));
    };
    const Findings findings = findingsOf(arguments, interruption.handle(), show);
    if (interruption.isRequested())
        return failure("interrupted", "the verification was interrupted");
    if (!arguments.junit.empty() &&
        !peer::replaceFile(fromUtf8(arguments.junit), junitText(verified, findings)))
        return failure("file-not-writable", arguments.junit + " cannot be written");
    const int exitCode = countOf(findings, RuleState::broken) == 0 ? done : problem;
    if (arguments.isJson)
        return {verifyReport(verified, findings), exitCode};
    print(Stream::output, '\n' + summaryText(findings));
    return {Report(), exitCode};
}

} // namespace

Outcome verify(const Arguments& arguments)
{
    const Interruption interruption;
    for (const std::string& program : {arguments.path, arguments.library})
        if (!program.empty() && !peer::isFile(fullPath(program)))
            return failure("file-missing", "there is no file " + program);
    try {
        return outcomeOf(arguments, interruption);
    } catch (const VerificationIsRunning& error) {
        return failure("verification-running", error.what(), "Wait until it has ended.");
    } catch (const CompanionIsRunning& error) {
        return failure("companion-running", error.what(), "End the Companion.");
    } catch (const HostIsRunning& error) {
        return failure("host-running", error.what(), "End the host.");
    } catch (const FolderIsInUse& error) {
        return failure(
            "folder-in-use", error.what(),
            "Copy the program and what it needs to another folder, and verify the copy.");
    } catch (const PortIsInUse&) {
        return failure("port-in-use", "another program listens on port 4559", "", portInUse);
    }
}

} // namespace zemlink
