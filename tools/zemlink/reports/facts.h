// The facts of an installation, without an assessment.
#pragma once

#include "peer/debug_log.h"
#include "peer/installation_folder.h"
#include "tools/zemlink/reports/companion_history.h"

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
    std::wstring program{};     // its path; empty when unknown
    std::string version{};      // of that program; empty when unknown
    std::wstring addIn{};       // the path of the library; empty when unknown
    std::string addInVersion{}; // of that library; empty when unknown
};

// A process of the host's program whose add-in is not open.
struct HostWithoutAddIn {
    std::uint32_t process = 0;
    std::wstring program{};      // its path; empty when unknown
    bool areModulesKnown = true; // else the user may not look into the process
    std::wstring addIn{};        // the library that it has loaded without opening it
};

struct CommandFile {
    std::wstring path{};
    std::uint32_t process = 0; // process id in its name
    std::uint64_t bytes = 0;
    bool isProcessRunning = false;
    bool isLeft = false; // its request was not taken within two seconds; not always tested
    std::string content{};
};

struct MachineSettingsFile {
    std::wstring path{};
    std::int32_t id = 0;       // of the request, in its name
    std::uint64_t written = 0; // when, as a file time
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
    Result answer{};                       // whether a program listens where the add-in sends to
    std::optional<std::uint32_t> holder{}; // the listening process, if known
    std::wstring program{};                // its path; empty when unknown
};

struct Companion {
    bool isRunning = false;                 // its semaphore exists
    std::optional<std::uint32_t> process{}; // of its window; empty without a window
    std::wstring title{};
    std::wstring program{};        // its path; empty when unknown
    std::string version{};         // of that program; empty when unknown
    bool isElsewhere = false;      // that is not the program in the installation folder
    std::optional<bool> hasPort{}; // by its log; empty when that does not tell
};

// The entry of the add-in's setup in the list of installed programs.
struct SetupEntry {
    std::wstring hostFolder{}; // of the host for which it installed the add-in
    Result hostFolderFound{}, addInFound{};

    std::wstring addIn() const { return hostFolder + L"\\chooks\\torvapdm.dll"; }
};

// A file or folder that other accounts may write.
struct OpenPath {
    std::wstring path{};
    std::vector<std::wstring> accounts{};
};

struct Facts {
    std::string toolVersion{}; // zemlink's own
    peer::Folder folder{};
    Result folderFound{}, commitFolderFound{}, programFound{};
    Result tempWritable{};                 // a file can be created; not always tested
    std::optional<std::string> settings{}; // the bytes of the file; empty without a file
    std::optional<SetupEntry> setup{};     // empty without one
    std::vector<OpenPath> openPaths{};
    std::vector<std::wstring> workingCopies{}; // in the Companion's list
    Companion companion{};
    std::vector<Host> hosts{};
    std::vector<HostWithoutAddIn> hostsWithoutAddIn{};
    std::vector<CommandFile> commandFiles{};
    std::vector<CommitFile> commitFiles{};
    Port port{};

    // Open requests of the Companion, as its log has them, and which of their files do not exist.
    std::vector<SentRequest> sentRequests{};
    std::vector<std::string> missingFiles{};
    std::vector<MachineSettingsFile> machineSettings{}; // left for requests, in order of id
    std::vector<peer::LoggedLoad> loads{};              // of all hosts
    std::uint64_t lastLoadWritten = 0;                  // when their log was written; 0: no log
    std::vector<RefusedCommit> refusedCommits{};
    bool hasCompanionLog = false;
};

} // namespace zemlink
