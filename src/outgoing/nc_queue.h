// The NC import queue: tells the Companion which NC programs are posted for the open part. UI
// thread.
#pragma once

namespace torvapdm {

// Writes the queue file "\temp\ncqueue-<request id>.txt" under the installation folder, a line for
// each NC file on disk, and announces it; always 0. Without operations, and when an operation's
// group is unknown, nothing is written or announced. Passes on the framework's exceptions that the
// host raises, what was written by then stays.
int importNcQueue();

} // namespace torvapdm
