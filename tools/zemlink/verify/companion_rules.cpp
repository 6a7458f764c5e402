#include "tools/zemlink/verify/companion_rules.h"

#include "tools/zemlink/verify/companion_rule_groups.h"

namespace zemlink {
namespace {

CheckedRules allRules()
{
    CheckedRules all;
    for (const CheckedRules& group : {startRules(), commandLineRules(), commitRules(),
                                      noticeRules(), requestRules(), endRules()})
        all.insert(all.end(), group.begin(), group.end());
    return all;
}

// Why the check would see nothing; empty: it can see something.
std::optional<Sight> missing(CompanionStage& stage, Needs needs)
{
    if (needs == Needs::nothing)
        return std::nullopt;
    if (stage.instance() == nullptr)
        return notSeen("hosts do not find the program");
    if (needs == Needs::log && !stage.log().exists())
        return noLog();
    return std::nullopt;
}

Finding findingOf(CompanionStage& stage, const CheckedRule& checked)
{
    const std::int64_t start = monotonicMs();
    const auto sight = missing(stage, checked.needs);
    Finding finding{checked.rule, sight ? *sight : checked.check(stage)};
    finding.tookMs = monotonicMs() - start;
    return finding;
}

} // namespace

Rules companionRules()
{
    Rules rules;
    for (const CheckedRule& checked : allRules())
        rules.push_back(checked.rule);
    return rules;
}

Findings verifyCompanion(const CompanionToVerify& companion, HANDLE stop, const ShowFinding& show)
{
    Findings findings;
    try {
        CompanionStage stage(companion, stop);
        for (const CheckedRule& checked : allRules()) {
            findings.push_back(findingOf(stage, checked));
            show(findings.back());
            stage.restartIfEnded(checked.rule.id);
        }
    } catch (const Interrupted&) {
        return findings;
    }
    return findings;
}

} // namespace zemlink
