// The group that stands above all others of an operation. UI thread.
#pragma once

struct TpGroup;
class TpGrpList;

namespace torvapdm {

// The group with this id, or the last of its parents that the list knows, owned by the host; null
// when the list does not know the id. Parents that lead back to a group passed already end the way
// there. Passes on the framework's exceptions that the host raises.
TpGroup* topGroup(TpGrpList& groups, int groupId);

} // namespace torvapdm
