#include "outgoing/top_group.h"

#include "host/record_adapter.h"

#include <unordered_set>

namespace torvapdm {

TpGroup* topGroup(TpGrpList& groups, int groupId)
{
    TpGroup* group = nullptr;
    std::unordered_set<int> asked;
    for (int id = groupId; asked.insert(id).second; id = host::parentIdOf(*group)) {
        TpGroup* const known = groups.GroupByID(id);
        if (!known)
            break;
        group = known;
    }
    return group;
}

} // namespace torvapdm
