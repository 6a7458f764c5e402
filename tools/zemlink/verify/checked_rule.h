// A rule with the function that judges it.
#pragma once

#include "tools/zemlink/verify/rules.h"

#include <cstdint>
#include <string>
#include <vector>

namespace zemlink {

// `Seen` is what was seen of a program while it ran; the judgement needs nothing else.
template <class Seen>
struct CheckedRule {
    const char* id;
    const char* text;
    Sight (*judge)(const Seen& seen);
};

inline Sight keptIf(bool isKept, std::string otherwise)
{
    return isKept ? Sight() : broken(std::move(otherwise));
}

// The rules of a table without their checks.
template <class Seen, size_t count>
std::vector<Rule> rulesOf(const CheckedRule<Seen> (&table)[count])
{
    std::vector<Rule> rules;
    for (const CheckedRule<Seen>& each : table)
        rules.push_back({each.id, each.text});
    return rules;
}

// One finding for each rule of the table. What was seen took this long altogether; the first
// finding gets that time.
template <class Seen, size_t count>
Findings judged(const CheckedRule<Seen> (&table)[count], const Seen& seen, std::int64_t tookMs)
{
    Findings findings;
    for (const CheckedRule<Seen>& each : table)
        findings.push_back({{each.id, each.text}, each.judge(seen), findings.empty() ? tookMs : 0});
    return findings;
}

} // namespace zemlink
