#include "ncqueue/top_group.h"

#include "host/record_adapter.h"

#include <algorithm>
#include <vector>

namespace torvapdm {

TpGroup* topGroup(TpGrpList& groups, int groupId)
{
    TpGroup* group = groups.GroupByID(groupId);
    std::vector<TpGroup*> passed;
    for (TpGroup* parent = group; parent; parent = groups.GroupByID(host::parentIdOf(*parent))) {
        if (std::find(passed.begin(), passed.end(), parent) != passed.end())
            break;
        passed.push_back(parent);
        group = parent;
    }
    return group;
}

} // namespace torvapdm
