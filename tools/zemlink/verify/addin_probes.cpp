#include "tools/zemlink/verify/addin_probes.h"

#include "peer/handle.h"

#include <memory>
#include <type_traits>

namespace zemlink {
namespace {

constexpr const char* exportNames[] = {
    "m_version", "m_open",        "m_close",  "m_notify", "m_main",   "m_about",      "m_tools",
    "m_load",    "importNCqueue", "importNC", "renameNC", "DrawTool", "TestFunction", "m_save"};

struct LibraryCloser {
    using pointer = HMODULE;
    void operator()(HMODULE library) const { FreeLibrary(library); }
};

} // namespace

std::optional<std::vector<std::string>> findMissingExports(const std::wstring& library)
{
    const std::unique_ptr<std::remove_pointer_t<HMODULE>, LibraryCloser> loaded(
        LoadLibraryExW(library.c_str(), nullptr, DONT_RESOLVE_DLL_REFERENCES));
    if (!loaded)
        return std::nullopt;
    std::vector<std::string> names;
    for (const char* name : exportNames)
        if (!GetProcAddress(loaded.get(), name))
            names.emplace_back(name);
    return names;
}

// A port that can be bound exclusively is not in use.
bool isPortFree(std::uint16_t port)
{
    const peer::SocketsLibrary library;
    const peer::OwnSocket tried(socket(AF_INET, SOCK_STREAM, IPPROTO_TCP));
    const BOOL isExclusive = TRUE;
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_ANY);
    address.sin_port = htons(port);
    return setsockopt(tried.get(), SOL_SOCKET, SO_EXCLUSIVEADDRUSE,
                      reinterpret_cast<const char*>(&isExclusive), sizeof isExclusive) == 0 &&
           bind(tried.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
}

std::uint32_t sharingErrorOf(const std::wstring& file)
{
    const peer::OwnHandle opened =
        peer::ownFile(CreateFileW(file.c_str(), GENERIC_READ | GENERIC_WRITE | DELETE,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                  OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    return opened ? 0 : GetLastError();
}

} // namespace zemlink
