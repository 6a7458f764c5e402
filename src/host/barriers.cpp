#include "host/barriers.h"

namespace torvapdm {

void discard(CException* exception)
{
    wchar_t message[255];
    exception->GetErrorMessage(message, 255);
    exception->Delete();
}

} // namespace torvapdm
