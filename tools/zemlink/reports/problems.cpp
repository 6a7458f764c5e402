#include "tools/zemlink/reports/problems.h"

#include "tools/zemlink/reports/companion_checks.h"
#include "tools/zemlink/reports/host_checks.h"
#include "tools/zemlink/reports/installation_checks.h"
#include "tools/zemlink/reports/request_checks.h"

namespace zemlink {
namespace {

std::vector<Check> allChecks()
{
    std::vector<Check> all;
    for (const auto& part :
         {installationChecks(), requestChecks(), hostChecks(), companionChecks()})
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

Problems problemsOf(const Check& check, const Facts& facts)
{
    Problems problems;
    if (check.isMade(facts))
        check.find(problems, facts);
    return problems;
}

} // namespace

std::vector<std::string> problemNames()
{
    std::vector<std::string> names;
    for (const Check& check : allChecks())
        names.emplace_back(check.name);
    return names;
}

Problems findProblems(const Facts& facts)
{
    Problems problems;
    for (const Check& check : allChecks())
        for (Problem& each : problemsOf(check, facts))
            problems.push_back(std::move(each));
    return problems;
}

std::vector<std::string> findFine(const Facts& facts)
{
    std::vector<std::string> fine;
    for (const Check& check : allChecks())
        if (check.isMade(facts) && problemsOf(check, facts).empty())
            fine.emplace_back(check.fine);
    return fine;
}

Outcome doctorOutcome(const Facts& facts, bool isEverythingShown)
{
    const Problems problems = findProblems(facts);
    Report report{{"problems", Report::array()}};
    for (const Problem& each : problems) {
        report["problems"].push_back(
            Report{{"name", each.name}, {"what", each.what}, {"do", each.advice}});
    }
    if (isEverythingShown)
        report["fine"] = findFine(facts);
    return {report, problems.empty() ? done : problem};
}

} // namespace zemlink
