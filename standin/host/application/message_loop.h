// The message loop of the user-interface thread, and the wish to quit. Every function runs on that
// thread.
#pragma once

namespace standin {

// Processes one message, waiting a moment for one when there is none; false when the program is
// quitting.
bool processOneMessage();

// Has every loop end as soon as it gets its turn. The main window stays.
void requestQuit();

// Takes back an earlier wish to quit.
void resetQuit();

} // namespace standin
