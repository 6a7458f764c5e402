#include "incoming/machine_activation.h"

#include "companion/installation.h"
#include "formats/machine_settings_file.h"
#include "host/barriers.h"
#include "host/host.h"
#include "incoming/incoming_state.h"
#include "outgoing/nc_queue.h"
#include "platform/files.h"
#include "platform/narrow_text.h"

namespace torvapdm {

namespace {

void storeNumbers(const MachineSettings& settings)
{
    if (settings.ncPathNumber)
        ncPathNumber = *settings.ncPathNumber;
    if (settings.secondNumber)
        secondSettingsNumber = *settings.secondNumber;
}

// Quirk Q40: twice for a file of a CAD system.
void activateMachine(const std::wstring& path)
{
    callHost([&] { SetActiveMachine(path.c_str()); });
    if (isCadFile())
        callHost([&] { SetActiveMachine(path.c_str()); });
}

} // namespace

void transferMachineSettings()
{
    // No best-fit characters: they could name a different file. '?' occurs in no file name.
    const std::string path =
        toNarrow(machineSettingsPath(currentRequestId), GetACP(), WC_NO_BEST_FIT_CHARS);
    OwnFile file(std::fopen(path.c_str(), "r"));
    if (!file)
        return;
    wchar_t line[1024];
    // Quirk Q39: the line is widened in the C runtime's locale; in the standard locale each byte
    // becomes the unit of the same value.
    if (!std::fgetws(line, 1024, file.get())) {
        static_cast<void>(file.release()); // Quirk Q38: an empty file stays, and stays open.
        return;
    }
    const MachineSettings settings = parseMachineSettings(line);
    storeNumbers(settings);
    activateMachine(settings.machinePath);
    renameNcFiles();
    file.reset();
    std::remove(path.c_str());
}

} // namespace torvapdm
