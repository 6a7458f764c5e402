// A rule with the function that judges what was seen.
#pragma once

#include "tools/zemlink/verify/rules.h"

#include <cstdint>

namespace zemlink {

// `Seen` is what was seen of a program while it ran; the judgement needs nothing else.
template <class Seen>
struct JudgedRule {
    const char* id;
    const char* text;
    Sight (*judge)(const Seen& seen);
};

// The rules of a table without their judgements.
template <class Seen, size_t count>
Rules rulesOf(const JudgedRule<Seen> (&table)[count])
{
    Rules rules;
    for (const JudgedRule<Seen>& each : table)
        rules.push_back({each.id, each.text});
    return rules;
}

// One finding for each rule of the table. What was seen took this long altogether; the first
// finding gets that time.
template <class Seen, size_t count>
Findings judged(const JudgedRule<Seen> (&table)[count], const Seen& seen, std::int64_t tookMs)
{
    Findings findings;
    for (const JudgedRule<Seen>& each : table)
        findings.push_back({{each.id, each.text}, each.judge(seen), findings.empty() ? tookMs : 0});
    return findings;
}

} // namespace zemlink
