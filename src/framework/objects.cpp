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

BOOL CException::GetErrorMessage(LPWSTR buffer, UINT bufferLength, PUINT helpContext) const
{
    if (helpContext)
        *helpContext = 0;
    if (buffer && bufferLength > 0)
        buffer[0] = L'\0';
    return FALSE;
}

void CException::Delete()
{
    delete this;
}
