// What the rules for commits, notices and settings look at.
#pragma once

#include "tools/zemlink/verify/addin_commits.h"
#include "tools/zemlink/verify/rules.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace zemlink {

bool hasReached(const CommitsSeen& seen, CommitStep step);

// What the step has added to the commit file.
std::string addedIn(const CommitsSeen& seen, CommitStep step);
// A name as a record has it.
std::string asInRecord(const std::string& name);

size_t countNotices(const CommitsSeen& seen, std::string_view start);
// The starts of notices with the request id of the step: `ZEMID=41|`, `MCAMXMLIMPORTDATAID=41;`.
std::string commitNoticeStart(CommitStep step);
std::string sheetNoticeStart(CommitStep step);

// The first notice that begins like this goes on exactly like that.
Sight judgeNotice(const CommitsSeen& seen, CommitStep step, const std::string& start,
                  const std::string& rest);

// By its record or by its notice, so that a mistake in one of them breaks only the rule for that.
bool isCommittedAs(const CommitsSeen& seen, CommitStep step, const std::string& name);

// A message box with this text was shown after the load of the part.
Sight judgeMessage(const CommitsSeen& seen, CommitStep step, const std::string& part,
                   std::string_view text);

} // namespace zemlink
