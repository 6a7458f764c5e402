// The network thread: a greeting service on port 20248 that ends as soon as it starts.
#pragma once

#include "framework/framework.h"

namespace torvapdm {

// The thread function for AfxBeginThread; the parameter is unused. Returns 0.
UINT __cdecl networkThread(LPVOID);

} // namespace torvapdm
