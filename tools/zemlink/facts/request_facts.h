// What has become of the open requests that hosts have taken.
#pragma once

#include "tools/zemlink/reports/facts.h"

namespace zemlink {

// The machine settings in temp, in order of id.
std::vector<MachineSettingsFile> findMachineSettings(const std::wstring& folder);

// Adds the machine settings, the log of loads and what the Companion's log has about requests,
// commits and its port.
void addRequestFacts(Facts& facts);

} // namespace zemlink
