// The running hosts: their windows and the add-in that each has loaded.
#pragma once

#include "tools/zemlink/reports/facts.h"

#include <vector>

namespace zemlink {

// In order of process id. A host that does not answer takes two seconds.
std::vector<Host> findHostFacts();

// The processes of the host's program in this session whose add-in is not open, in order of id.
std::vector<HostWithoutAddIn> findHostsWithoutAddIn(const std::vector<Host>& hosts);

// The version in a program's resources, as in `1.0.0`; empty when it has none or cannot be read.
std::string programVersion(const std::wstring& path);

} // namespace zemlink
