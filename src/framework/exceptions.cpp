#include "framework/exceptions.h"

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
