// The random steps of a soak for one host, and their expected effects. Pure: the same facts and
// seed give the same steps.
#pragma once

#include "support/bytes.h"

#include <map>
#include <random>
#include <set>

namespace testing_support {

// A part of the Companion's library as shipped, and what the steps have made of it.
struct SoakPart {
    std::wstring name;
    std::int32_t number;
    int operations;
    std::wstring machine; // also the name of its top group
    std::int32_t ncPath;
    Lines programs; // posted for it, in alphabetical order
    int version = 1;
    int passesSaved = 0; // finishing passes
};

// One of several hosts that share the Companion but no part of its library.
struct SoakHostFacts {
    std::wstring folder; // of the installation
    std::wstring temporaryFolder;
    std::wstring ncFolder;
    std::uint32_t processId;
    std::uint32_t window;        // low 32 bits
    std::int32_t firstRequestId; // of the requests written by the test; unique per host
    std::vector<SoakPart> parts;
};

struct PlannedStep {
    std::string kind;
    // The actions, in order: `command N` of the host's menu; `companion ARGUMENTS` starts the
    // Companion with them; `busy` and `ready` switch whether the host accepts requests; `request ID
    // PATH` and `push` (not a request) write a command file; `await` waits for the trace.
    Lines acts{};
    Lines trace{};                            // the host's new lines, in order
    Lines events{};                           // the Companion's, in the short form
    std::map<std::string, size_t> leftOpen{}; // number of calls by row of the table
    std::wstring version{};                   // new library version, without extension
    bool checksOut = false;                   // asks the Companion for a file
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
    bool isPossible(const std::string& kind) const;
    bool isSaved() const { return part_ && (isKnown_ || !isChanged_); }
    std::wstring workFile(const SoakPart& part) const;
    void open(SoakPart& part, std::int32_t id, const std::wstring& machine, std::int32_t ncPath);
    void parkRequests(unsigned most, bool areWithdrawn);
    void prepare(const std::string& kind, int part);
    void describeState();
    void add(PlannedStep& step, const std::wstring& text) const;
    std::wstring filled(std::wstring line) const;
    void conclude(const std::string& kind);

    SoakHostFacts facts_;
    std::mt19937_64 random_;
    std::mt19937_64 menuRandom_;
    size_t steps_ = 0;
    std::map<std::wstring, std::wstring> values_; // of the placeholders
    std::map<std::wstring, bool> guards_;

    // Expected state of the add-in and the host's document.
    std::int32_t requestId_ = 0;
    bool isKnown_ = false;   // the file is one of the Companion's
    bool isNotified_ = true; // the save-notified flag
    bool isChanged_ = false;
    SoakPart* part_ = nullptr; // the open part; null for an empty document without a name
    int passes_ = 0;           // finishing passes added to it
    Lines recentFiles_;
    std::int32_t nextRequestId_;
    std::set<std::int32_t> neverOpened_;
};

// The next choice in the add-in's menu, made by the host's script; the plan predicts it with the
// same random numbers.
std::wstring nextMenuChoice(std::mt19937_64& random);

// The machine in a request's machine settings.
std::wstring soakMachine(std::int32_t requestId);

} // namespace testing_support
