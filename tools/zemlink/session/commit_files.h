// The commits in the commit files, and how far the Companion has taken them.
#pragma once

#include "tools/zemlink/session/exchange_event.h"
#include "tools/zemlink/session/file_look.h"

#include <map>
#include <string>
#include <vector>

namespace zemlink {

class CommitFiles {
public:
    explicit CommitFiles(std::wstring folder) : folder_(std::move(folder)) {}

    // The records that have been appended, and those that have been taken: passed by the bookmark,
    // or in a file that was removed. A file that a Companion renames when it ends stays the same
    // file. A record that comes and is taken between two looks is both, as long as its file stays.
    // A record of which only the first part is there is left for a later look.
    std::vector<ExchangeEvent> look(std::int64_t now);

private:
    struct Record {
        std::uint64_t end = 0; // in the file
        std::string bytes{};
    };
    struct File {
        std::wstring path{};
        FileLook look{};
        std::uint64_t end = 0; // of the records that are known
        std::vector<Record> waiting{};
    };
    // The files of one process of the Companion.
    struct Queue {
        File live{}, closed{};
        FileLook bookmark{};
    };
    void lookAtQueue(std::uint32_t process, Queue& queue, std::int64_t now,
                     std::vector<ExchangeEvent>& events) const;
    static void readNew(std::uint32_t process, File& file, std::vector<ExchangeEvent>& events);
    static void take(std::uint32_t process, File& file, std::uint64_t end, std::int64_t at,
                     std::vector<ExchangeEvent>& events);

    std::wstring folder_;
    std::map<std::uint32_t, Queue> queues_; // by process
    bool hasLooked_ = false; // what had been taken before the first look is not reported
};

} // namespace zemlink
