#include "tools/zemlink/facts/system.h"

#include "peer/text.h"

namespace zemlink {

namespace {

// Not every system has words for these.
std::string socketErrorText(std::uint32_t code)
{
    switch (code) {
    case WSAEACCES:
        return "Access to the port is denied.";
    case WSAEADDRINUSE:
        return "Another program uses the port.";
    case WSAEADDRNOTAVAIL:
        return "The address is not one of this computer.";
    case WSAENETDOWN:
        return "The network is down.";
    case WSAENETUNREACH:
    case WSAEHOSTUNREACH:
        return "The address cannot be reached.";
    case WSAECONNRESET:
        return "The connection was reset.";
    case WSAENOBUFS:
        return "The system has no memory for another socket.";
    case WSAETIMEDOUT:
        return "The connection attempt was not answered.";
    case WSAECONNREFUSED:
        return "The connection was refused.";
    default:
        return {};
    }
}

} // namespace

std::string systemErrorText(std::uint32_t code)
{
    wchar_t words[512];
    const DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS |
                                            FORMAT_MESSAGE_MAX_WIDTH_MASK, // no line ends
                                        nullptr, code, 0, words, 512, nullptr);
    std::string text = peer::toUtf8(std::wstring_view(words, length));
    while (text.ends_with(' '))
        text.pop_back();
    if (text.empty() || text.starts_with("Unknown error"))
        text = socketErrorText(code);
    return (text.empty() ? "Unknown error." : text) + " (error " + std::to_string(code) + ")";
}

Result resultOf(bool isFine, std::uint32_t code)
{
    return isFine ? Result{} : Result{code, systemErrorText(code)};
}

bool isRunning(std::uint32_t process)
{
    const peer::OwnHandle handle(
        OpenProcess(SYNCHRONIZE | PROCESS_QUERY_LIMITED_INFORMATION, FALSE, process));
    if (!handle)
        return GetLastError() == ERROR_ACCESS_DENIED;
    // Windows rounds an id down to a multiple of four.
    return GetProcessId(handle.get()) == process &&
           WaitForSingleObject(handle.get(), 0) == WAIT_TIMEOUT;
}

std::uint64_t ageMs(std::uint32_t process)
{
    const peer::OwnHandle handle(OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, process));
    FILETIME created{}, ended{}, inKernel{}, inUser{}, now{};
    if (!handle || !GetProcessTimes(handle.get(), &created, &ended, &inKernel, &inUser))
        return 0;
    GetSystemTimeAsFileTime(&now);
    constexpr std::uint64_t perMs = 10000;
    return ticksOf(now) > ticksOf(created) ? (ticksOf(now) - ticksOf(created)) / perMs : 0;
}

std::wstring programOf(std::uint32_t process)
{
    const peer::OwnHandle handle(OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, process));
    std::wstring path(MAX_PATH, L'\0');
    DWORD length = MAX_PATH;
    const bool isKnown =
        handle && QueryFullProcessImageNameW(handle.get(), 0, path.data(), &length);
    path.resize(isKnown ? length : 0);
    return path;
}

std::wstring fullPath(const std::wstring& path)
{
    std::wstring full(GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0');
    full.resize(
        GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
    return full;
}

std::uint64_t ticksOf(const FILETIME& time)
{
    return std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime;
}

} // namespace zemlink
