// The host's CATIA reader add-in, woken after a load when the settings ask for it. UI thread.
#pragma once

namespace torvapdm {

// When the setting "MCXCATIA" is "y" or "Y": loads "chooks\catread5x.dll" from the host's program
// folder, for good, and calls its `m_notify` with 6. A reader that cannot be loaded is passed over.
void wakeCatiaReaderIfWanted();

} // namespace torvapdm
