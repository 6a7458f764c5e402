#include "incoming/catia_reader.h"

#include "host/adapter.h"
#include "host/host_exceptions.h"
#include "companion/settings.h"

#include <string>

namespace torvapdm {

namespace {

constexpr int wakeUpEvent = 6;

bool isCatiaReaderWanted()
{
    // Two look-ups, the second only when the first is not "y": each reads the file anew.
    return getSetting("MCXCATIA") == "y" || getSetting("MCXCATIA") == "Y";
}

std::wstring catiaReaderPath()
{
    std::wstring path;
    callHost([&] {
        if (CMastercamInterface* const application = GetApp())
            path = std::wstring(host::folder(*application, host::programFolder)) +
                   L"chooks\\catread5x.dll";
    });
    return path;
}

} // namespace

void wakeCatiaReaderIfWanted()
{
    if (!isCatiaReaderWanted())
        return;
    const std::wstring path = catiaReaderPath();
    const HMODULE reader = path.empty() ? nullptr : LoadLibraryW(path.c_str());
    if (!reader)
        return;
    using Notify = int (*)(int);
    const auto notify =
        reinterpret_cast<Notify>(reinterpret_cast<void*>(GetProcAddress(reader, "m_notify")));
    if (notify)
        callHost([&] { notify(wakeUpEvent); });
}

} // namespace torvapdm
