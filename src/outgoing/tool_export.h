// The tool export: the tools and operations of the open part, for the Companion. UI thread. No
// command of this release runs it.
#pragma once

#include "host/host.h"

#include <optional>
#include <string>

namespace torvapdm {

// Writes the tool data file of the current request, a tool record for each operation, sorted and
// without duplicates, and announces it. A part without operations makes an empty file. Nothing is
// written or announced when a plane or the part's first operation is unknown, when a record is too
// long, or when the host raises instead of giving its operation chain; an earlier file stays then.
// Nothing is announced when the file cannot be opened.
void exportToolData();

// The first entry of the host's main operation list that is not null, owned by the host; null when
// there is none or the host raises.
operation* firstMainOperation();

// The name of a plane of the operation: selector 0 its construction plane, 1 its tool plane, 3 a
// third plane. Empty for any other selector, for an operation without that plane, and when the host
// raises; nothing when the host does not know the plane.
std::optional<std::wstring> getPlaneName(const operation& op, int selector);

} // namespace torvapdm
