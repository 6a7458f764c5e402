// The names that the add-in and the Companion share: the namespace base, an address on the vendor's
// web site, followed by a path.
#pragma once

#include <string>

#define TORVA_NAMESPACE_BASE L"https://torva.example"

namespace torvapdm {

// Also the address of the Website command.
inline const std::wstring namespaceBase = TORVA_NAMESPACE_BASE;

// Names for RegisterWindowMessageW.
inline const std::wstring openMessageName =
    TORVA_NAMESPACE_BASE L"/namespace/torvapdm/message/open";
inline const std::wstring commitMessageName =
    TORVA_NAMESPACE_BASE L"/namespace/torvapdm/message/commit";
inline const std::wstring getCheckedOutMessageName =
    TORVA_NAMESPACE_BASE L"/namespace/torvapdm/message/get-checked-out";

// The class of the message window, and the property (value 1) of a host's main window.
inline const std::wstring hostInstanceName =
    TORVA_NAMESPACE_BASE L"/namespace/torvapdm/mastercam-instance";

// The property that the Companion sets on its top-level window.
inline const std::wstring companionInstanceName =
    TORVA_NAMESPACE_BASE L"/namespace/torvapdm/instance";

// The semaphore that a running Companion holds.
inline const std::wstring companionSemaphoreName =
    L"Local\\" TORVA_NAMESPACE_BASE L"/namespace/torvapdm/singleton-token";

} // namespace torvapdm
