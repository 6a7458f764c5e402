#include "framework/objects.h"

const AFX_MSGMAP* CCmdTarget::GetThisMessageMap()
{
    static const AFX_MSGMAP_ENTRY rows[] = {{0, nullptr}};
    static const AFX_MSGMAP map = {nullptr, rows};
    return &map;
}

const AFX_MSGMAP* CCmdTarget::GetMessageMap() const
{
    return GetThisMessageMap();
}
