// The rules of the exchanges that a program can be checked against from outside, and what was seen
// of each.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace zemlink {

// `id` is what the pages explain it under, `commits.lock`; `text` is what a program does that keeps
// it.
struct Rule {
    std::string id{};
    std::string text{};
};

using Rules = std::vector<Rule>;

enum class RuleState {
    kept,
    broken,
    notSeen // nothing happened that could show it
};

// What a check saw: how the rule was broken, or why it could not be seen; empty for a kept one.
struct Sight {
    RuleState state = RuleState::kept;
    std::string what{};
};

inline Sight broken(std::string how)
{
    return {RuleState::broken, std::move(how)};
}
inline Sight notSeen(std::string why)
{
    return {RuleState::notSeen, std::move(why)};
}

inline Sight keptIf(bool isKept, std::string otherwise)
{
    return isKept ? Sight{} : broken(std::move(otherwise));
}

struct Finding {
    Rule rule{};
    Sight sight{};
    std::int64_t tookMs = 0;
};

using Findings = std::vector<Finding>;

size_t countOf(const Findings& findings, RuleState state);

// How long to wait for each thing that a program should do, unless the user says otherwise.
inline constexpr std::int64_t usualBoundMs = 10000;

// Gets each finding as soon as it is known.
using ShowFinding = std::function<void(const Finding&)>;

} // namespace zemlink
