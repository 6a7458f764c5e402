// The drain of standard input, which belongs to every look-up in the settings file.
#pragma once

namespace torvapdm {

// Reads and drops standard input up to a line feed or its end.
//
// Quirk Q34: called for each line read from the settings file; the read blocks while standard input
// is open and has no line.
void drainStandardInputLine();

} // namespace torvapdm
