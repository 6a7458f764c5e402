// The network thread that m_open starts: a greeting service on port 20248 that never serves.
#pragma once

#include "framework/framework.h"

namespace torvapdm {

// The thread's procedure; the parameter is not used. Ends at once with 0.
UINT __cdecl networkThread(LPVOID);

} // namespace torvapdm
