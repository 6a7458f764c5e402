// zemlink: shows and tests the exchanges between the Companion and the hosts' add-in.
#include "peer/text.h"
#include "tools/zemlink/commands.h"
#include "tools/zemlink/reports/report.h"
#include "tools/zemlink/output.h"

#include <exception>
#include <string>
#include <vector>

int wmain(int count, wchar_t** words)
{
    std::vector<std::string> arguments;
    for (int i = 1; i < count; ++i)
        arguments.push_back(peer::toUtf8(words[i]));
    try {
        return zemlink::carryOut(zemlink::parseArguments(std::move(arguments)));
    } catch (const std::exception& error) {
        zemlink::print(zemlink::Stream::error,
                       std::string("zemlink: ") + zemlink::visible(error.what()) + '\n');
        return zemlink::problem;
    }
}
