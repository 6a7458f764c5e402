// Planes of an operation, by name. UI thread.
#pragma once

#include "host/host.h"

#include <optional>
#include <string>

namespace torvapdm {

// The first entry of the host's main operation list that is not null, owned by the host; null when
// there is none and when the host raises.
operation* firstMainOperation();

// The name of the operation's plane: selector 0 its construction plane, 1 its tool plane, 3 a third
// one. Empty for any other selector, for an operation without that plane, and when the host raises;
// nothing when the host does not know the plane.
std::optional<std::wstring> getPlaneName(const operation& op, int selector);

} // namespace torvapdm
