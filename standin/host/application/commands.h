// The commands of the main window's menu. All run on the user-interface thread.
#pragma once

#include <windows.h>

namespace standin {

// What the add-in sends the main window to have the document saved: the command's number is the
// host's.
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

// Carries the command out; a number that is no command does nothing.
void runCommand(UINT command);

// Starts an empty part, as the menu's New does.
void runNewCommand();

} // namespace standin
