// The text of a command file.
#include "fuzz/command_text_rule.h"
#include "fuzz/differences.h"
#include "fuzz/targets.h"

namespace fuzzing {

namespace {

std::string checkCommandText(std::string_view bytes)
{
    const torvapdm::Command answer = torvapdm::parseCommand(bytes);
    const torvapdm::Command expected = plainRequest(bytes);
    Differences differences;
    differences.compare("kind", static_cast<int>(answer.kind), static_cast<int>(expected.kind));
    differences.compare("id", answer.file.id, expected.file.id);
    differences.compare("path", answer.file.path, expected.file.path);
    return differences.text();
}

} // namespace

Target commandTextTarget()
{
    return {"command_text", checkCommandText, commandTextSeeds(), commandTextTokens()};
}

} // namespace fuzzing
