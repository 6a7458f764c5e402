#include "peer/debug_log.h"

#include "peer/lines.h"
#include "peer/wire_constants.h"

#include <algorithm>
#include <iterator>

namespace peer {
namespace {

constexpr std::string_view separator = ": ";
constexpr std::ptrdiff_t mostAtOnce = 64; // concurrent loads in one log

bool isNext(const LoggedLoad& load, const LoadStep& step)
{
    return !load.isFinished() && step.number == load.lastStep + 1 && step.text == load.file;
}

bool isSystemOf(const LoggedLoad& load, const LoadStep& step)
{
    return !load.isFinished() && load.lastStep == 3 && step.number == 3 && !step.text.empty();
}

// Adds the step to the latest load that it continues. False when there is none.
bool continueLoad(std::vector<LoggedLoad>& loads, const LoadStep& step)
{
    const auto end = loads.rbegin() + std::min(mostAtOnce, std::ssize(loads));
    for (auto load = loads.rbegin(); load != end; ++load) {
        if (isNext(*load, step)) {
            ++load->lastStep;
            return true;
        }
        if (isSystemOf(*load, step)) {
            load->system = step.text;
            return true;
        }
    }
    return false;
}

} // namespace

LoadStep parseLoadStep(std::string_view line)
{
    const std::vector<std::string_view> lines = fileLines(line);
    line = lines.empty() ? line : lines.front();
    const size_t textAt = debugLogLineStart.size() + 1 + separator.size();
    if (line.size() < textAt || !line.starts_with(debugLogLineStart) ||
        line.substr(debugLogLineStart.size() + 1, separator.size()) != separator)
        return {};
    const char digit = line[debugLogLineStart.size()];
    return digit >= '1' && digit <= '7' ? LoadStep{digit - '0', std::string(line.substr(textAt))}
                                        : LoadStep{};
}

DebugLog parseDebugLog(std::string_view bytes)
{
    DebugLog log;
    size_t number = 0;
    for (const std::string_view line : fileLines(bytes)) {
        ++number;
        const LoadStep step = parseLoadStep(line);
        if (step.number == 1)
            log.loads.push_back({step.text, 1});
        else if (step.number == 0 || !continueLoad(log.loads, step))
            log.badLines.push_back(number);
    }
    return log;
}

} // namespace peer
