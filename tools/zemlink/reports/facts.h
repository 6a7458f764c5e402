// The facts of an installation, without an assessment.
#pragma once

#include "peer/installation_folder.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace zemlink {

// The result of a call: 0, or a system error code and its text, UTF-8.
struct Result {
    std::uint32_t code = 0;
    std::string text{};

    bool isFine() const { return code == 0; }
};

// A host whose add-in is open.
struct Host {
    std::uint32_t process = 0;
    std::wstring title{};    // of its main window
    bool isAnswering = true; // its UI thread answers messages
    bool isBlocked = false;  // its main window takes no input
    std::wstring dialog{};   // the dialog that blocks it; empty when none is found
    bool hasMessageWindow = true;
    std::wstring addIn{};       // the path of the library; empty when unknown
    std::string addInVersion{}; // of that library; empty when unknown
};

struct CommandFile {
    std::wstring path{};
    std::uint32_t process = 0; // process id in its name
    std::uint64_t bytes = 0;
    bool isProcessRunning = false;
    bool isLeft = false; // its request was not taken within two seconds; not always tested
};

// The commit file of one process of the Companion.
struct CommitFile {
    std::wstring path{};
    std::uint32_t process = 0;
    bool isProcessRunning = false;
    std::uint64_t taken = 0;              // bytes at the start that are known to have been handled
    std::optional<std::string> waiting{}; // the bytes after them; empty while a host writes
    bool hasBookmark = false;             // else it is unknown how far the file has been taken
};

struct Port {
    Result answer{}; // whether a connection as the add-in makes it is accepted
    std::optional<std::uint32_t> holder{}; // the listening process, if known
    std::wstring program{};                // its path; empty when unknown
};

struct Companion {
    bool isRunning = false;                 // its semaphore exists
    std::optional<std::uint32_t> process{}; // of its window; empty without a window
    std::wstring title{};
    std::wstring program{};   // its path; empty when unknown
    bool isElsewhere = false; // that is not the program in the installation folder
};

struct Facts {
    std::string toolVersion{}; // zemlink's own
    peer::Folder folder{};
    Result folderFound{}, commitFolderFound{}, programFound{};
    Result tempWritable{};                 // a file can be created; not always tested
    std::optional<std::string> settings{}; // the bytes of the file; empty without a file
    Companion companion{};
    std::vector<Host> hosts{};
    std::vector<CommandFile> commandFiles{};
    std::vector<CommitFile> commitFiles{};
    Port port{};
};

} // namespace zemlink
