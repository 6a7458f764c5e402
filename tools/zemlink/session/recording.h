// A recording of a session: one zip file with a readable `index.json` and, for each exchange that
// has bytes, one entry in `exchanges/`.
//
//   {"format": 1, "zemlink": "1.0.0", "started": "2026-11-21T10:11:12.345Z", "redacted": false,
//    "finished": true, "folder": "C:\\TORVA\\ZEM", "status": {…},
//    "events": [
//      {"at": 120, "event": "request-written", "by": "companion", "to": "host", "process": 4711,
//       "file": "C:\\TORVA\\ZEM\\temp\\mastercam-4711.dat", "bytes": 45, "meaning": {…},
//       "entry": "exchanges/0001-mastercam-4711.dat"}, …]}
//
// `at` is in milliseconds since the start. `status` is what `zemlink status --json` shows at the
// start, and `meaning` what `zemlink decode --json` shows of the bytes; the latter is for people
// and is not read back. An index of more than 16 MB has no meanings.
#pragma once

#include "tools/zemlink/reports/report.h"
#include "tools/zemlink/session/exchange_event.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zemlink {

inline constexpr size_t longestPath = 32767; // that Windows allows, in UTF-16 units

struct Recording { // NOLINT(bugprone-exception-escape) // the JSON library's move throws nothing
    std::int64_t startedAt = 0; // milliseconds since 1970, UTC
    bool isRedacted = false;
    bool isFinished = true; // false: the recorder was ended before it wrote the end
    std::wstring folder{};  // the installation folder, without a trailing backslash
    Report status{};
    std::vector<ExchangeEvent> events{}; // in order of time
};

// The bytes of the zip file. The same recording gives the same bytes.
std::string formatRecording(const Recording& recording);

// Throws std::runtime_error, with the cause, when the bytes are not a recording or are damaged.
Recording parseRecording(std::string_view bytes);

// Writes the file, or replaces it as a whole. Throws std::runtime_error, with the cause, when it
// cannot be written.
void writeRecording(const std::wstring& path, const Recording& recording);

// Throws std::runtime_error, with the cause, when the file is not a recording or is damaged.
Recording readRecording(const std::wstring& path);

} // namespace zemlink
