// The hosts and their requests, from the command files.
//
// A host empties its command file by closing it, which deletes it, and creating it again. While
// any other handle is open, the creation fails and the host tries again a cycle later. So a file is
// opened only when it holds a request, and only once for each.
#pragma once

#include "peer/handle.h"
#include "tools/zemlink/session/exchange_event.h"
#include "tools/zemlink/session/file_look.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zemlink {

class CommandFiles {
public:
    explicit CommandFiles(std::wstring folder) : folder_(std::move(folder)) {}

    // Hosts that have started or ended, requests written and taken. A request that was written and
    // taken between two looks has no bytes.
    // `isFollowed`: what hosts do after taking a request has been seen.
    std::vector<ExchangeEvent> look(std::int64_t now, bool isFollowed);
    // The processes of running hosts; each handle is signalled when its process ends.
    std::vector<HANDLE> processes() const;
    // What these have done cannot be told yet: look again soon.
    std::vector<std::uint32_t> undecidedHosts() const;

    // The host that was last sent this request, else the only one, else 0.
    std::uint32_t hostOfRequest(std::int64_t id) const;
    std::uint32_t hostOfPart(std::string_view path) const;
    // 0: there are several, or none. One that has just ended still counts: its last exchanges may
    // be seen after its end.
    std::uint32_t onlyHost() const;

private:
    struct Host {
        FileLook look{};
        peer::OwnHandle process{}; // null where the process may not be opened or has ended
        bool isRunning = false;
        // It is kept while its file exists, or for a while if its request may have been taken.
        bool hasEnded = false;
        FileLook undecided{}; // empty: perhaps another file, perhaps one that is just changing
        std::int64_t undecidedSince = 0;
        std::int64_t emptiedAt = 0;           // the file's time, as it was shown
        std::int64_t missingSince = 0;        // 0: the file exists
        std::optional<std::string> waiting{}; // the request in the file
        std::optional<std::int64_t> lastId{}; // of the requests so far
        std::string lastPart{};
    };
    void lookAtHost(std::uint32_t process, Host& host, std::int64_t now, bool isFollowed,
                    std::vector<ExchangeEvent>& events);
    void lookAtRequest(std::uint32_t process, Host& host, const FileLook& look, std::int64_t now,
                       bool isFollowed, std::vector<ExchangeEvent>& events);
    static bool isSameEmptying(const Host& host, const FileLook& look);
    static bool hasLasted(const std::wstring& path, Host& host, const FileLook& look,
                          std::int64_t now, bool isFollowed);
    static void lookAtEnd(std::uint32_t process, Host& host, std::int64_t now,
                          std::vector<ExchangeEvent>& events);
    template <class Matches>
    std::uint32_t hostWhere(const Matches& matches) const;

    std::wstring folder_;
    std::map<std::uint32_t, Host> hosts_; // by process
};

} // namespace zemlink
