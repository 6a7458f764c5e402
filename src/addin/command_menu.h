// The add-in's popup menu and its commands. UI thread.
#pragma once

namespace torvapdm {

// Shows the menu at the mouse position and executes the chosen command; always 0. Framework
// exceptions that the host raises for the setup sheet propagate.
int runCommandMenu();

// Starts the Companion's about box over the host's main window. Shows "TORVA ZEM is not installed."
// when the program file is missing; a failed start shows nothing.
void showAbout();

// Opens the vendor's web site. A failure shows nothing.
void openWebsite();

} // namespace torvapdm
