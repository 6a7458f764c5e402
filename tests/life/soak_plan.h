// The random steps of a soak for one host, and what comes of each. Pure: the same facts and seed
// give the same steps.
#pragma once

#include "fuzz/random.h"
#include "support/bytes.h"

#include <array>
#include <map>
#include <set>

namespace testing_support {

// A part of the Companion's library, as it ships.
struct SoakPart {
    std::wstring name;
    std::int32_t number;
    int operations;
    std::wstring machine; // also the name of its top group
    std::int32_t ncPath;
    Lines programs; // that are posted for it, in alphabetical order
};

// One host of several, which share the Companion and no part of its library.
struct SoakHostFacts {
    std::wstring folder; // of the installation
    std::wstring temporaryFolder;
    std::wstring ncFolder;
    std::uint32_t processId;
    std::uint32_t window;        // low 32 bits
    std::int32_t firstRequestId; // of the requests that no Companion's start sends; none shares it
    std::array<SoakPart, 2> parts;
};

struct PlannedStep {
    std::string kind;
    // What is done, in order: `command N` of the host's menu, `companion WORDS` starts it with
    // these words, `busy` and `ready` switch whether the host takes requests, `request ID PATH` and
    // `push` (no request) write a command file, `await` waits for the trace.
    Lines acts{};
    Lines trace{};                            // the host's new lines, in their order
    Lines events{};                           // the Companion's, in the short form
    std::map<std::string, size_t> leftOpen{}; // how often each row of the table of calls
    std::wstring version{};                   // that the library has then, without its extension
    bool checksOut = false;                   // asks the Companion for a file
};

// What is chosen in the add-in's menu each time it opens; the host's script chooses it.
class SoakMenu {
public:
    explicit SoakMenu(std::uint64_t seed) : random_(seed) {}
    std::wstring nextChoice();

private:
    fuzzing::Random random_;
};

class SoakPlan {
public:
    SoakPlan(SoakHostFacts facts, std::uint64_t seed);

    // How many steps come first that make every call once.
    static size_t warmUpSteps();
    PlannedStep next();
    // The requests that another one replaced: their machine settings stay for good.
    const std::set<std::int32_t>& requestsNeverOpened() const { return neverOpened_; }

private:
    struct Kind;
    static const Kind kinds[];

    PlannedStep planned(const Kind& kind);
    bool isPossible(const std::string& kind) const;
    bool isNamed() const { return part_ >= 0; }
    bool isSaved() const { return isNamed() && (isKnown_ || !isChanged_); }
    std::wstring workFile(int part) const;
    void open(int part, std::int32_t id, const std::wstring& machine, std::int32_t ncPath);
    void parkRequests(unsigned most);
    void prepare(const Kind& kind);
    void describeState();
    void add(PlannedStep& step, const std::wstring& text) const;
    std::wstring filled(std::wstring line) const;
    void conclude(const std::string& name);

    const SoakHostFacts facts_;
    fuzzing::Random random_;
    SoakMenu menu_;
    size_t steps_ = 0;
    std::map<std::wstring, std::wstring> values_; // of the placeholders
    std::map<std::wstring, bool> guards_;

    // The add-in and the host's document, as they should be.
    std::int32_t requestId_ = 0;
    bool isKnown_ = false;   // a file of the Companion
    bool isNotified_ = true; // the save-notified flag
    bool isChanged_ = false;
    int part_ = -1;  // that is open; -1: a document without a name, which holds nothing
    int passes_ = 0; // added to it
    Lines recentFiles_;
    std::array<int, 2> passesSaved_{};
    std::array<int, 2> versions_ = {1, 1};
    std::int32_t nextRequestId_;
    std::set<std::int32_t> neverOpened_;
};

// The machine that a request's settings name.
std::wstring soakMachine(std::int32_t requestId);

} // namespace testing_support
