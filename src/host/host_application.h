// The host's application interface, asked for quietly. UI thread.
#pragma once

class CMastercamInterface;

namespace torvapdm {

// The interface, owned by the host; null when the host has none or raises.
CMastercamInterface* hostApplication();

} // namespace torvapdm
