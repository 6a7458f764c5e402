#include "incoming/machine_settings.h"

#include "formats/machine_settings_file.h"
#include "host/host.h"
#include "platform/owners.h"
#include "host/host_exceptions.h"
#include "companion/installation.h"
#include "shared_state.h"
#include "platform/text.h"
#include "outgoing/nc_commands.h"

#include <cstdio>

namespace torvapdm {

namespace {

std::string machineSettingsFile()
{
    return toNarrowAnsi(getInstallationFolder() + L"\\temp\\mcsettings-" +
                        std::to_wstring(currentRequestId) + L".txt");
}

void keepNumbers(const MachineSettings& settings)
{
    if (settings.ncPathNumber)
        ncPathNumber = *settings.ncPathNumber;
    if (settings.secondNumber)
        secondSettingsNumber = *settings.secondNumber;
}

void activateMachine(const std::wstring& path)
{
    callHost([&] { SetActiveMachine(path.c_str()); });
    // Deliberate: a second time for files of a CAD system. One would expect once; both
    // calls are kept.
    if (fileTypePrefix == L"CAD")
        callHost([&] { SetActiveMachine(path.c_str()); });
}

} // namespace

void transferMachineSettings()
{
    const std::string path = machineSettingsFile();
    FileStream file(std::fopen(path.c_str(), "r"));
    if (!file)
        return;
    wchar_t line[1024];
    // Deliberate: the C runtime widens the line in its own locale. One would expect the system's
    // code page; in the runtime's standard locale each byte becomes the unit of the same value, so
    // that the Companion writes the paths of machines in ASCII or Latin-1.
    //
    // Deliberate: an empty file is neither closed nor deleted. One would expect both; it stays, and
    // stays open, until the host ends.
    if (!std::fgetws(line, 1024, file.get())) {
        static_cast<void>(file.release());
        return;
    }
    const MachineSettings settings = parseMachineSettings(line);
    keepNumbers(settings);
    activateMachine(settings.machinePath);
    renameNcFiles();
    file.reset();
    std::remove(path.c_str());
}

} // namespace torvapdm
