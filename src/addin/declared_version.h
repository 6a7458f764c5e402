// The interface version that the add-in declares. No platform header: this is a decision.
#pragma once

namespace torvapdm {

// The version declared to a host of this version: the host's own for 11xx and 21xx, 2100 for every
// other.
int declaredVersion(int hostVersion);

} // namespace torvapdm
