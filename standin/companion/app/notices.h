// What becomes of a line that a host's add-in sent.
#pragma once

#include "standin/companion/app/announced_files.h"
#include "standin/companion/app/setup_sheet.h"
#include "standin/companion/log/event_log.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <mutex>
#include <thread>
#include <vector>
#include <windows.h>

namespace companion {

// A setup sheet to be shown.
struct ReceivedSheet {
    std::int32_t id = 0;
    std::wstring file;
    std::wstring text;                 // of the whole file
    std::optional<SetupSheet> content; // empty: show the text
};

// What a line brought that is to be shown; often nothing.
using Received = std::variant<std::monostate, ReceivedSheet, ReceivedQueue, ReceivedTools>;

// Logs a connection's bytes and what they say, and reads the file that they announce. `folder`: the
// installation folder.
Received receiveNotice(EventLog& log, const std::wstring& folder, std::string_view bytes);

struct NoticeReceiver {
    std::mutex mutex;
    std::vector<std::string> arrived; // guarded by `mutex`
    std::jthread worker;
};

// Opens the port on all IPv4 addresses, for this program alone, because a host's add-in sends to
// whichever address the computer names first; and starts the thread: connections are taken from the
// return on. One that comes from another computer is closed unread. `message` is posted to the
// window when there are new lines. While another program has the port nothing is received; the
// thread goes on trying to open it. The log, which outlives the listener, then gets port-taken and,
// once the port is open, port-open.
void startListening(NoticeReceiver& listener, EventLog& log, HWND window, UINT message);

// Closes the port and every connection, and joins the thread.
void stopListening(NoticeReceiver& listener);

// All bytes of each connection that has ended since the last call, in the order in which they
// ended. A connection ends by its peer, after 1024 bytes or after five seconds; those that are
// slow hold up no other.
std::vector<std::string> takeNotices(NoticeReceiver& listener);

} // namespace companion
