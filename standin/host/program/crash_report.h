// What the host prints when it crashes, instead of the system's error box, which a scripted run
// could not close.
#pragma once

namespace standin {

// From now on a crash writes the exception and the crashed thread's call stack to standard error,
// as modules and offsets that script/symbolize reads, and ends the process with the exception's
// code:
//
//   Mastercam.exe has crashed: exception 0xC0000005
//    0 torvapdm.dll+0x3A91
//    1 Mastercam.dll+0x11B20
void reportCrashes();

} // namespace standin
