// The Companion's installation folder: the root of every exchange path.
#pragma once

#include <string>

namespace torvapdm {

// The folder from the registry (current user, "SOFTWARE\TORVA AS\ZEM", value "installation
// folder"), or "C:\TORVA\ZEM". Read on the first call and then kept for the life of the process.
// Creates the key when it is missing. Any thread, once the first call (in m_open) has returned.
std::wstring getInstallationFolder();

} // namespace torvapdm
