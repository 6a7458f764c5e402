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
constexpr UINT firstExportCommand = 42000; // in the order of `addInExports`
constexpr UINT firstEventCommand = 43000;  // plus the event's code

// The codes of the events that the host can send its add-in.
constexpr int eventCodes[] = {3, 4, 5, 6, 37, 52};

// Executes the command; ignores unknown numbers.
void runCommand(UINT command);

// Starts an empty part, like the menu command New.
void runNewCommand();

} // namespace standin
