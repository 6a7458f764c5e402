// The commands on NC files: the NC queue, and the two that do nothing in this release. UI thread.
#pragma once

namespace torvapdm {

// Despite its name, exports: writes the NC queue file of the current request, a line for each
// posted NC file of the part's operations, and announces it to the Companion; always 0. Without
// operations, and when an operation's group is unknown, nothing is written or announced. Framework
// exceptions that the host raises propagate.
int importNcQueue();

// Quirk Q56: neither does anything; the second returns 1.
constexpr int importNcFiles()
{
    return 0;
}
constexpr int renameNcFiles()
{
    return 1;
}

} // namespace torvapdm
