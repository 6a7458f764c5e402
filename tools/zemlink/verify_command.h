// `zemlink verify`: checks a program against the rules of the exchanges.
#pragma once

#include "tools/zemlink/arguments.h"
#include "tools/zemlink/reports/report.h"

namespace zemlink {

// Prints the table while it checks, unless JSON is wanted, and writes the JUnit report.
Outcome verify(const Arguments& arguments);

} // namespace zemlink
