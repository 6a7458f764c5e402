// MCMill.dll: operations, their tools and groups, NC names and the backplot.
//
// Any of these may raise the framework's exception. All run on the host's user-interface thread.
#pragma once

#include "framework/framework.h"
#include "host/import.h"
#include "host/records.h"

// True while a backplot runs.
MCMILL_API bool BackplotActive();

// Lists of the host. Code 1 with an empty name: mode 0 returns the head of the operation chain
// (null when there is none), mode 1 hands the chain back.
MCMILL_API void list_manager(long code, const wchar_t* name, short mode, operation_node** list);

// The host's tools. Code 5 fills `tool` for its tool number and sets `succeeded`.
MCMILL_API void tool_manager(tp_tool* tool, short code, DB_LIST_ENT** entity, bool* succeeded);

// The operation's cycle time in seconds.
MCMILL_API double CalcCycleTime(operation& op, bool flag);

// Folder prefix and file extension of posted NC programs; a null group means the active one.
MCMILL_API CString NCPrefix(TpGroup* group);
MCMILL_API CString NCSuffix(TpGroup* group);

// The host's list of operations; entries may be null.
class MCMILL_API TpMemLookupList {
public:
    int GetSize() const;
    operation* operator[](int index) const;
};

class MCMILL_API TpOpMgr {
public:
    TpMemLookupList& GetMainOpList();
};

extern MCMILL_API TpOpMgr TpMainOpMgr;

class MCMILL_API TpGrpList {
public:
    // The group with this id, or null.
    TpGroup* GroupByID(int id);
};

class MCMILL_API TpGrpMgr {
public:
    TpGrpList& GetMainGrpList();
};

extern MCMILL_API TpGrpMgr TpMainGrpMgr;
