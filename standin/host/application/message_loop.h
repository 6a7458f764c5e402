// The message loop and the request to quit. UI thread.
#pragma once

namespace standin {

// Processes one message, after a short wait if there is none; false when the program is quitting.
bool processOneMessage();

// Makes every message loop end. The main window stays.
void requestQuit();

// Cancels an earlier request to quit.
void resetQuit();

} // namespace standin
