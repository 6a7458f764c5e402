// zemlink: shows and tests the exchanges between the Companion and the hosts' add-in.
#include "peer/text.h"
#include "tools/zemlink/commands.h"
#include "tools/zemlink/output.h"
#include "tools/zemlink/reports/report.h"
#include "tools/zemlink/verify/recorded_start.h"

#include <exception>
#include <string>
#include <vector>

namespace {

// As text where even that output fails.
void printFailure(const char* cause, bool isJson)
{
    try {
        zemlink::printReport(zemlink::failure(cause).report, isJson);
    } catch (const std::exception&) {
        zemlink::printReport(zemlink::failure(cause).report, false);
    }
}

} // namespace

int wmain(int count, wchar_t** words)
{
    if (zemlink::isRecorder())
        return zemlink::recordStart();
    std::vector<std::string> arguments;
    for (int i = 1; i < count; ++i)
        arguments.push_back(peer::toUtf8(words[i]));
    bool isJson = false;
    try {
        const zemlink::Arguments parsed = zemlink::parseArguments(std::move(arguments));
        isJson = parsed.isJson;
        return zemlink::carryOut(parsed);
    } catch (const std::exception& error) {
        printFailure(error.what(), isJson);
        return zemlink::problem;
    }
}
