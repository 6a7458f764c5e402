// Receives notices on port 4559 and reads the files that they announce.
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

// A setup sheet to show.
struct ReceivedSheet {
    std::int32_t id = 0;
    std::wstring file;
    std::wstring text;                 // of the whole file
    std::optional<SetupSheet> content; // empty: show the text
};

// What to show for a notice; often nothing.
using Received = std::variant<std::monostate, ReceivedSheet, ReceivedQueue, ReceivedTools>;

// Logs the bytes of a connection and the notice in them, and reads the file that it announces.
// `folder`: the installation folder.
Received receiveNotice(EventLog& log, const std::wstring& folder, std::string_view bytes);

struct NoticeReceiver {
    std::mutex mutex;
    std::vector<std::string> arrived; // guarded by `mutex`
    std::jthread worker;
};

// Opens the port exclusively on all IPv4 addresses, because an add-in sends to the first address of
// the computer, and starts the thread, so that neither the window waits for a host nor a host for
// the window. A connection from another computer is closed without being read. `message` is posted
// to the window when there are new notices. While another program uses the port, the thread keeps
// retrying; the log, which must outlive the receiver, gets port-taken and, once the port is open,
// port-open.
void startListening(NoticeReceiver& listener, EventLog& log, HWND window, UINT message);

// Closes the port and every connection, and joins the thread.
void stopListening(NoticeReceiver& listener);

// All bytes of each connection that has ended since the last call, in the order in which they
// ended. A connection ends when the sender closes it, after 1024 bytes or after five seconds.
std::vector<std::string> takeNotices(NoticeReceiver& listener);

} // namespace companion
