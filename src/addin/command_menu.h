// The add-in's popup menu and the commands behind it. UI thread.
#pragma once

namespace torvapdm {

// Shows the menu at the mouse and carries out what is chosen; 0. Passes on the framework's
// exceptions of the setup-sheet hand-over.
int runCommandMenu();

// Starts the Companion's about box over the host's main window.
void showAbout();

// Opens the maker's web site.
void openWebsite();

} // namespace torvapdm
