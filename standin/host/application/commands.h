// The commands of the main window's menu. UI thread.
#pragma once

#include <windows.h>

namespace standin {

// Sent by the add-in to the main window to save the document. The host defines this number.
constexpr UINT saveAsCommand = 41111;

constexpr UINT newCommand = 41101;
constexpr UINT openCommand = 41102;
constexpr UINT saveCommand = 41103;
constexpr UINT modalDialogCommand = 41104;
constexpr UINT exitCommand = 41105;
constexpr UINT backplotCommand = 41106;
constexpr UINT postCommand = 41107;
constexpr UINT finishingPassCommand = 41108;
constexpr UINT helpCommand = 41109;
constexpr UINT aboutCommand = 41110;
constexpr UINT firstExportCommand = 42000; // in the order of `addInExports`
constexpr UINT firstEventCommand = 43000;  // plus the event's code

// The events that the host can send its add-in.
struct HostEvent {
    int code;
    const wchar_t* effect; // its meaning, or what the add-in does
};
constexpr HostEvent hostEvents[] = {
    {3, L"the add-in forgets the file"}, {4, L"no effect"},  {5, L"file saved"},
    {6, L"the add-in forgets the file"}, {37, L"no effect"}, {52, L"the add-in forgets the file"},
};

// Executes the command and shows its outcome in the status bar; ignores unknown numbers.
void runCommand(UINT command);

// Starts an empty part, like the menu command New.
void runNewCommand();

} // namespace standin
