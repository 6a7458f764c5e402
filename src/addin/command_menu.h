// The add-in's popup menu and the commands behind it. UI thread.
#pragma once

namespace torvapdm {

// Shows the menu at the mouse and carries out what is chosen; 0. Passes on the framework's
// exceptions of the setup-sheet hand-over.
int runCommandMenu();

// Starts the Companion's about box over the host's main window. Shows "TORVA ZEM is not installed."
// when its program file is missing; a start that fails shows nothing.
void showAbout();

// Opens the maker's web site. Shows nothing when the shell cannot.
void openWebsite();

} // namespace torvapdm
