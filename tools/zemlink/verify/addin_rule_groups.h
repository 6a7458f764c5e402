// The groups of rules for the add-in, each with what it is judged by.
#pragma once

#include "tools/zemlink/verify/addin_commits.h"
#include "tools/zemlink/verify/addin_requests.h"
#include "tools/zemlink/verify/addin_starts.h"
#include "tools/zemlink/verify/judged_rule.h"

#include <vector>

namespace zemlink {

std::vector<JudgedRule<RequestsSeen>> addInOpeningRules();
std::vector<JudgedRule<RequestsSeen>> addInRequestRules();
std::vector<JudgedRule<RequestsSeen>> addInLoadRules(); // machine settings and the debug log

std::vector<JudgedRule<CommitsSeen>> addInCommitRules();
std::vector<JudgedRule<CommitsSeen>> addInNoticeRules();
std::vector<JudgedRule<CommitsSeen>> addInSettingRules();

std::vector<JudgedRule<StartsSeen>> addInStartRules(); // of the Companion

} // namespace zemlink
