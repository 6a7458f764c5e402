// The host operations of MCMill.dll: operations, tools, groups and NC names of the open part.
#include "host/mcmill.h"

#include "core/document.h"
#include "core/host_call.h"

using namespace standin;

TpOpMgr TpMainOpMgr;
TpGrpMgr TpMainGrpMgr;

namespace {

operation_node* firstNode()
{
    const std::shared_ptr<Part> part = openPart();
    return part->operations.empty() ? nullptr : &part->operations.front().node;
}

bool fillTool(tp_tool* tool)
{
    const std::shared_ptr<Part> part = openPart();
    const auto found = part->toolByNumber.find(tool->lead.toolNumber);
    if (found == part->toolByNumber.end())
        return false;
    *tool = *found->second;
    return true;
}

// The host's own record is identified by its address, a copy only by its id.
double cycleSeconds(const operation& op)
{
    const std::shared_ptr<Part> part = openPart();
    if (const auto own = part->operationByRecord.find(&op); own != part->operationByRecord.end())
        return own->second->cycleSeconds;
    const auto found = part->operationById.find(op.operationId);
    return found == part->operationById.end() ? 0.0 : found->second->cycleSeconds;
}

CString ncName(std::string_view name, TpGroup* group, std::wstring HostSettings::*setting)
{
    return act(
        name, callLine(name, group), CString(),
        [&] { return CString((hostSettings().*setting).c_str()); });
}

// The lists are returned by reference and hold no data; their members query the open part. The
// empty ones are the results of a list operation that was set to fail.
TpMemLookupList operationList;
TpMemLookupList emptyOperationList;
TpGrpList groupList;
TpGrpList emptyGroupList;

} // namespace

bool BackplotActive()
{
    return question(
        "BackplotActive", false, [] { return hostSettings().backplotActive; });
}

void list_manager(long code, const wchar_t* name, short mode, operation_node** list)
{
    constexpr long operationChain = 1;
    constexpr short take = 0;
    if (list && mode == take)
        *list = nullptr; // also without a host and when set to fail
    act("list_manager", callLine("list_manager", code, name, mode, list), [&] {
        if (list && code == operationChain && mode == take && (!name || !*name))
            *list = firstNode();
    });
}

void tool_manager(tp_tool* tool, short code, DB_LIST_ENT** entity, bool* succeeded)
{
    constexpr short fillByNumber = 5;
    bool isFilled = false;
    if (entity)
        *entity = nullptr;
    if (succeeded)
        *succeeded = false;
    act("tool_manager", callLine("tool_manager", tool, code, entity, succeeded), [&] {
        isFilled = tool && code == fillByNumber && fillTool(tool);
        if (succeeded)
            *succeeded = isFilled;
    });
}

double CalcCycleTime(operation& op, bool flag)
{
    return act(
        "CalcCycleTime", callLine("CalcCycleTime", &op, flag), 0.0,
        [&] { return cycleSeconds(op); });
}

CString NCPrefix(TpGroup* group)
{
    return ncName("NCPrefix", group, &HostSettings::ncPrefix);
}

CString NCSuffix(TpGroup* group)
{
    return ncName("NCSuffix", group, &HostSettings::ncSuffix);
}

int TpMemLookupList::GetSize() const
{
    return question(
        "GetSize", 0,
        [this] {
            const bool isEmptyList = this == &emptyOperationList;
            return isEmptyList ? 0 : static_cast<int>(openPart()->operationList.size());
        });
}

operation* TpMemLookupList::operator[](int index) const
{
    return question(
        "operator[]", static_cast<operation*>(nullptr),
        [&]() -> operation* {
            const std::shared_ptr<Part> part = openPart();
            const auto place = static_cast<size_t>(index);
            if (this == &emptyOperationList || index < 0 || place >= part->operationList.size() ||
                !part->operationList[place])
                return nullptr;
            return &part->operationList[place]->node.op;
        });
}

TpMemLookupList& TpOpMgr::GetMainOpList()
{
    return *question(
        "GetMainOpList", &emptyOperationList, [] { return &operationList; });
}

TpGroup* TpGrpList::GroupByID(int id)
{
    return question(
        "GroupByID", static_cast<TpGroup*>(nullptr),
        [&]() -> TpGroup* {
            const std::shared_ptr<Part> part = openPart();
            const auto group = part->groupById.find(id);
            const bool isNone = this == &emptyGroupList || group == part->groupById.end();
            return isNone ? nullptr : group->second;
        });
}

TpGrpList& TpGrpMgr::GetMainGrpList()
{
    return *question(
        "GetMainGrpList", &emptyGroupList, [] { return &groupList; });
}
