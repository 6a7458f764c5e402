// The two NC commands that do nothing in this release.
#pragma once

namespace torvapdm {

// Deliberate: the host's command for importing NC files does nothing and gives 0. One would expect
// an import; it is kept as a command without effect.
int importNcFiles();

// Deliberate: renaming NC files does nothing and gives 1. One would expect 0 like everywhere else;
// the 1 is what the host has always got.
int renameNcFiles();

} // namespace torvapdm
