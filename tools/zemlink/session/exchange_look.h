// One look at everything that the Companion and the hosts exchange.
#pragma once

#include "tools/zemlink/session/command_files.h"
#include "tools/zemlink/session/commit_files.h"
#include "tools/zemlink/session/companion_presence.h"
#include "tools/zemlink/session/exchange_event.h"
#include "tools/zemlink/session/folder_changes.h"
#include "tools/zemlink/session/log_tail.h"
#include "tools/zemlink/session/sent_requests.h"
#include "tools/zemlink/session/whole_files.h"

#include <string>
#include <vector>

namespace zemlink {

class ExchangeLook {
public:
    // The first look then finds what is there; the logs are read from their present ends.
    explicit ExchangeLook(const std::wstring& folder);

    // What has happened since the last look, in order.
    std::vector<ExchangeEvent> look();
    // Signalled when it is time for a look: changes in the folders and processes that end.
    std::vector<HANDLE> handles() const;
    // The time for a look without a signal.
    DWORD nextLookMs() const;
    // Prepares for the next signals. Before the look, so that no change in between is missed.
    void rearm(bool isSlow);

private:
    void lookAtRequests(std::vector<ExchangeEvent>& events);
    bool areFilesWaiting() const;
    // Its notices; its requests are kept for those that are missed.
    std::vector<ExchangeEvent> readCompanionLog();
    std::vector<ExchangeEvent> newSteps();
    void findProcesses(std::vector<ExchangeEvent>& events) const;

    std::wstring folder_;
    std::vector<FolderChanges> folders_;
    CompanionPresence companion_;
    CommandFiles commandFiles_;
    CommitFiles commitFiles_;
    WholeFiles machineSettings_, screenPictures_, toolPictures_, ncQueues_, toolData_, answers_;
    LogTail loadLog_, companionLog_;
    SentRequests sentRequests_;
    std::int64_t lastAt_ = 0; // of the last event
};

} // namespace zemlink
