// The text of a command file.
#include "fuzz/command_text_rule.h"
#include "fuzz/differences.h"
#include "fuzz/targets.h"

namespace fuzzing {

namespace {

std::string checkCommandText(std::string_view bytes)
{
    const torvapdm::CommandRequest answer = torvapdm::interpretCommandText(bytes);
    const torvapdm::CommandRequest expected = plainRequest(bytes);
    Differences differences;
    differences.compare("kind", static_cast<int>(answer.kind), static_cast<int>(expected.kind));
    differences.compare("id", answer.id, expected.id);
    differences.compare("path", answer.path, expected.path);
    return differences.text();
}

} // namespace

Target commandTextTarget()
{
    return {"command_text", checkCommandText, commandTextSeeds(), commandTextTokens()};
}

} // namespace fuzzing
