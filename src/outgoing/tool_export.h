// The tool data export: the tools and operations of the open part for the Companion. UI thread.
#pragma once

namespace torvapdm {

// Writes "\temp\tool-<request id>.txt" under the installation folder, a record for each operation,
// sorted and without repeats, and sends the line "TOOL-<request id>". A part without operations
// gives an empty file. Nothing is written or sent when a plane or the part's first operation is
// unknown, when a record is too long or when the host raises in place of its operation chain; an
// earlier file stays then. Nothing is sent when the file cannot be opened. No command leads here in
// this release.
void exportToolData();

} // namespace torvapdm
