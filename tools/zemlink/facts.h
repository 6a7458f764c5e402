// What there is to see of an installation, without a judgement.
#pragma once

#include "peer/hosts.h"
#include "peer/installation_folder.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace zemlink {

// How something went: 0, or the system's error code and its text, UTF-8.
struct Result {
    std::uint32_t code = 0;
    std::string text{};

    bool isFine() const { return code == 0; }
};

struct CommandFile {
    std::wstring path{};
    std::uint32_t process = 0; // whose file it is
    std::uint64_t bytes = 0;
    bool isProcessThere = false;
};

// The commit requests for one process of the Companion.
struct CommitFile {
    std::wstring path{};
    std::uint32_t process = 0;
    bool isProcessThere = false;
    std::uint64_t taken = 0;              // bytes in front that are dealt with
    std::optional<std::string> waiting{}; // the bytes behind; empty while a host writes them
};

struct Port {
    Result answer{};                       // of a connection, as the add-in makes one
    std::optional<std::uint32_t> holder{}; // the process that listens, when the system tells
    std::wstring program{};                // its file; empty when it cannot be told
};

struct Companion {
    bool isRunning = false;                 // it holds its semaphore
    std::optional<std::uint32_t> process{}; // of its window; empty: it has none
    std::wstring title{};
};

struct Facts {
    Folder folder{};
    Result folderThere{}, commitThere{}, programThere{}; // looks at what should be there
    Result tempWritable{};                               // a file could be made; not always tried
    std::optional<std::string> settings{};               // the bytes of the file; empty: no file
    Companion companion{};
    std::vector<companion::Host> hosts{};
    std::vector<CommandFile> commandFiles{};
    std::vector<CommitFile> commitFiles{};
    Port port{};
};

} // namespace zemlink
