// The random steps of a soak for one host, and their expected effects. Pure: the same facts and
// seed give the same steps.
#pragma once

#include "support/bytes.h"

#include <random>
#include <set>
#include <string>
#include <vector>

namespace testing_support {

// A part of the Companion's library as shipped, and its newest version.
struct SoakPart {
    std::wstring name;
    std::int32_t number;
    size_t programs; // posted for it
    int version = 1;
};

// One of several hosts that share the Companion but no part of its library.
struct SoakHostFacts {
    std::wstring folder; // of the installation
    std::uint32_t processId;
    std::int32_t firstRequestId; // of the requests written by the test; unique per host
    std::vector<SoakPart> parts;
};

struct PlannedStep {
    std::string kind;
    // The actions, in order: `command N` of the host's menu; `companion ARGUMENTS` starts the
    // Companion with them; `busy` and `ready` switch whether the host accepts requests; `request ID
    // PATH` and `push` (not a request) write a command file; `await` waits for the trace.
    Lines acts{};
    Lines trace{};                    // the host's new lines, in order
    Lines events{};                   // the Companion's, in the short form
    std::vector<std::string> calls{}; // rows of the table of what stays open
    std::wstring version{};           // new library version, without extension
};

class SoakPlan {
public:
    SoakPlan(SoakHostFacts facts, std::uint64_t seed);
    SoakPlan(const SoakPlan&) = delete;
    SoakPlan& operator=(const SoakPlan&) = delete;

    // The number of initial steps, which make every call once.
    static size_t warmUpSteps();
    PlannedStep next();
    // Requests replaced by a later one: their machine settings are never removed.
    const std::set<std::int32_t>& requestsNeverOpened() const { return neverOpened_; }

private:
    struct Kind;
    static const Kind kinds[];

    // Kinds of steps, or what precedes their call of the add-in.
    void sendFirst() { send(facts_.parts.front()); }
    void sendLast() { send(facts_.parts.back()); }
    void send(SoakPart& part);
    void startCompanion() { step_.events.emplace_back(L"command"); }
    void postPrograms();
    void sendSetupSheet();
    void openMenu();
    void commit();
    void saveInHost();
    void sendWhileBusy();
    void withdrawRequests();
    void forgetFile();
    void newFile();
    void checkIn();

    bool isPossible(const Kind& kind) const;
    void call(unsigned command, const wchar_t* line, const char* row);
    void tellCompanion(const std::wstring& words, std::int32_t id);
    void expectOpening(SoakPart& part, std::int32_t id);
    void expectNewFile();
    void expectHostSave();
    SoakPart& parkRequests(unsigned most);
    std::wstring workFile(const SoakPart& part) const;
    std::wstring document() const { return part_ ? L'"' + workFile(*part_) + L'"' : L"\"\""; }

    SoakHostFacts facts_;
    std::mt19937_64 random_;
    size_t steps_ = 0;
    size_t menus_ = 0;
    PlannedStep step_;

    // Expected state of the add-in and the host's document.
    std::int32_t requestId_ = 0;
    bool isKnown_ = false;     // the file is one of the Companion's
    bool isNotified_ = true;   // the save-notified flag
    SoakPart* part_ = nullptr; // the open part; null for an empty document without a name
    std::int32_t nextRequestId_;
    std::set<std::int32_t> neverOpened_;
};

// The choice in the n-th menu of a host, counted from 0, made by the host's script.
std::wstring menuChoice(size_t n);

} // namespace testing_support
