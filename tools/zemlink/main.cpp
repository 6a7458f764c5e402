// zemlink: speaks the exchanges between the Companion and the hosts' add-in from outside.
#include "peer/text.h"
#include "tools/zemlink/commands.h"
#include "tools/zemlink/report.h"
#include "tools/zemlink/report_text.h"
#include "tools/zemlink/output.h"

#include <exception>
#include <string>
#include <vector>

int wmain(int count, wchar_t** words)
{
    std::vector<std::string> arguments;
    for (int i = 1; i < count; ++i)
        arguments.push_back(companion::toUtf8(words[i]));
    try {
        return zemlink::carryOut(zemlink::readArguments(std::move(arguments)));
    } catch (const std::exception& error) {
        zemlink::print(zemlink::Stream::error,
                       std::string("zemlink: ") + zemlink::visible(error.what()) + '\n');
        return zemlink::trouble;
    }
}
