// The report of `zemlink doctor`.
#pragma once

#include "tools/zemlink/reports/check.h"
#include "tools/zemlink/reports/report.h"

#include <string>
#include <vector>

namespace zemlink {

// The names of all problems, in the order in which to fix them.
std::vector<std::string> problemNames();

// In that order.
Problems findProblems(const Facts& facts);

// One sentence for each check that was made and found nothing.
std::vector<std::string> findFine(const Facts& facts);

// With `fine` if everything is shown. Exit code `problem` unless there is no problem.
Outcome doctorOutcome(const Facts& facts, bool isEverythingShown);

} // namespace zemlink
