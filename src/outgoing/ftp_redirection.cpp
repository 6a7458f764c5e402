#include "outgoing/ftp_redirection.h"

#include "companion/settings.h"

namespace torvapdm {

bool isFtpServerUsed()
{
    return getSetting("UseFtpServer") == "y" || getSetting("UseFtpServer") == "Y";
}

std::wstring redirectedTo(const std::wstring& folder, const std::wstring& name)
{
    return folder + L"\\tmp\\" + name.substr(name.rfind(L'\\') + 1);
}

} // namespace torvapdm
