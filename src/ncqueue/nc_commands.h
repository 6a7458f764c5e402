// The two NC commands that do nothing in this release.
#pragma once

namespace torvapdm {

// Deliberate: the host's command for importing NC files does nothing and gives 0. One would expect
// an import; the Companion takes NC programs from the queue instead.
int importNcFiles();

// Deliberate: renaming NC files does nothing and gives 1. One would expect 0 like everywhere else;
// the host's function table knows this command by its 1.
int renameNcFiles();

} // namespace torvapdm
