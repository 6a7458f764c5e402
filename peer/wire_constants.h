// The names that this program and the host's add-in agree on.
#pragma once

namespace companion {

// Window property of this program's main window.
inline constexpr wchar_t instanceProperty[] = L"https://torva.example/namespace/torvapdm/instance";
// Window property, with the value 1, of a host's main window whose add-in is open.
inline constexpr wchar_t hostProperty[] =
    L"https://torva.example/namespace/torvapdm/mastercam-instance";
// Name of the semaphore that tells that this program runs.
inline constexpr wchar_t singletonName[] =
    L"Local\\https://torva.example/namespace/torvapdm/singleton-token";

inline constexpr wchar_t registryKey[] = L"SOFTWARE\\TORVA AS\\ZEM";
inline constexpr wchar_t registryValue[] = L"installation folder";
inline constexpr wchar_t productName[] = L"TORVA ZEM";

} // namespace companion
