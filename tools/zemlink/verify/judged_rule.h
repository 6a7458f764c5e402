// A rule with the function that judges what was seen.
#pragma once

#include "tools/zemlink/verify/rules.h"

#include <cstdint>
#include <vector>

namespace zemlink {

// `Seen` is what was seen of a program while it ran; the judgement needs nothing else.
template <class Seen>
struct JudgedRule {
    const char* id;
    const char* text;
    Sight (*judge)(const Seen& seen);
};

// The rules without their judgements.
template <class Seen>
Rules rulesOf(const std::vector<JudgedRule<Seen>>& judgedRules)
{
    Rules rules;
    for (const JudgedRule<Seen>& each : judgedRules)
        rules.push_back({each.id, each.text});
    return rules;
}

// One finding for each rule. What was seen took this long altogether; the first finding gets that
// time.
template <class Seen>
Findings judged(const std::vector<JudgedRule<Seen>>& judgedRules, const Seen& seen,
                std::int64_t tookMs)
{
    Findings findings;
    for (const JudgedRule<Seen>& each : judgedRules)
        findings.push_back({{each.id, each.text}, each.judge(seen), findings.empty() ? tookMs : 0});
    return findings;
}

} // namespace zemlink
