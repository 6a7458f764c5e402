// What `zemlink verify` found, as a table, as JSON and as a JUnit report.
#pragma once

#include "tools/zemlink/reports/report.h"
#include "tools/zemlink/verify/rules.h"

#include <string>

namespace zemlink {

// What was verified: "companion" or "addin", and its program or library, UTF-8.
struct Verified {
    std::string kind{};
    std::string path{};
};

// A line of the table, and an indented one with what was seen unless the rule is kept.
//
//   kept      commits.lock                  Reads a record only when it holds the lock.
//   broken    commits.file-stays            Leaves the commit file as it is while it runs.
//             It was truncated to 0 bytes.
std::string findingText(const Finding& finding);

// The last line: `27 rules: 25 kept, 1 broken, 1 not seen`.
std::string summaryText(const Findings& findings);

Report verifyReport(const Verified& verified, const Findings& findings);

// The format that continuous integration systems read: a broken rule is a failure, one that was not
// seen is skipped.
std::string junitText(const Verified& verified, const Findings& findings);

} // namespace zemlink
