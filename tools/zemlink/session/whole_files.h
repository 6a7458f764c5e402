// Exchange files that are reported as a whole: machine settings, pictures, NC queues, tool data and
// check-out answers.
#pragma once

#include "tools/zemlink/session/exchange_event.h"
#include "tools/zemlink/session/file_look.h"

#include <map>
#include <string>
#include <vector>

namespace zemlink {

// A writer that is at work cannot be told from one that has finished, because the files are only
// opened shared. So a file counts as written once it is complete by its own content or has not
// changed for a moment, or once what follows it has been seen. Of empty files, NC queues and tool
// data that stay empty for a moment count as written.
class WholeFiles {
public:
    // Files of one kind in one folder. `pattern`: with wildcards, without the folder.
    WholeFiles(EventKind written, std::wstring folder, std::wstring pattern);

    // The files that have been written, and of machine settings those that were removed, as
    // machineSettingsTaken. `isFollowed`: what hosts do after writing such a file has been seen.
    std::vector<ExchangeEvent> look(std::int64_t now, bool isFollowed);
    // A file has changed and is not complete: look again soon.
    bool isWaiting() const;

private:
    struct Known {
        FileLook look{};
        std::string bytes{}; // until they are reported; those of machine settings also after it
        std::int64_t changedAt = 0;
        bool isReported = false;
    };
    void refresh(const std::wstring& path, Known& known, std::int64_t now) const;
    bool mayBeEmpty() const;
    bool isComplete(const Known& known, std::int64_t now, bool isFollowed) const;
    void addGone(std::vector<ExchangeEvent>& events, std::int64_t now);

    EventKind written_;
    std::wstring folder_, pattern_;
    std::map<std::wstring, Known> files_;
};

} // namespace zemlink
