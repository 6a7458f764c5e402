// The random steps of a soak for one host, and what the requirements say that comes of each. Pure:
// the same facts and seed give the same steps.
#pragma once

#include "fuzz/random.h"
#include "life/planned_step.h"

#include <array>
#include <set>

namespace testing_support {

// A part of the Companion's library, as it ships.
struct SoakPart {
    std::wstring name;
    std::int32_t number;
    int operations;
    std::wstring machine;
    std::int32_t ncPath;
    std::wstring topGroup;
    std::vector<std::wstring> programs; // that are posted for it, in alphabetical order
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
    // The requests that another one replaced: their machine settings lie there for good.
    const std::set<std::int32_t>& requestsNeverOpened() const { return neverOpened_; }

private:
    struct Kind;
    static const Kind kinds[];

    // The add-in and the host's document, as they should be.
    struct Model {
        std::int32_t requestId = 0;
        bool isKnown = false;   // a file of the Companion
        bool isNotified = true; // the save-notified flag
        int part = -1;          // that is open; -1: a document without a name, which holds nothing
        int passes = 0;         // added to it
        bool isChanged = false;
        std::int32_t ncPath = -1; // NC-path number
        std::wstring sentName;    // what a check-in is told
        Lines recentFiles;
    };

    const Kind& anyKind();
    bool isPossible(const Kind& kind) const;
    bool isNamed() const { return model_.part >= 0; }
    const SoakPart& openPart() const { return facts_.parts[static_cast<size_t>(model_.part)]; }
    std::wstring workFile(int part) const;
    std::wstring documentName() const { return isNamed() ? workFile(model_.part) : L""; }

    PlannedStep send(int part);
    PlannedStep sendFirst() { return send(0); }
    PlannedStep sendSecond() { return send(1); }
    PlannedStep requestsToABusyHost();
    PlannedStep withdrawnRequests();
    PlannedStep checkIn();
    PlannedStep newFile();
    PlannedStep save();
    PlannedStep hostSave();
    PlannedStep finishingPass();
    PlannedStep ncQueue();
    PlannedStep toolPicture();
    PlannedStep tools();
    PlannedStep menu();
    PlannedStep about();
    PlannedStep checkOut();
    PlannedStep forgettingEvent();
    PlannedStep otherCalls();

    PlannedStep commanded(const char* kind, std::int32_t command) const;
    std::int32_t parkRequests(PlannedStep& step, std::uint64_t count);
    void open(PlannedStep& step, int part, std::int32_t id, const std::wstring& machine,
              std::int32_t ncPath);
    void closePart();
    void addSaveFlow(PlannedStep& step);
    void addSaveThroughHost(PlannedStep& step);
    void addSetupSheet(PlannedStep& step) const;
    void addAbout(PlannedStep& step) const;
    void addCommit(PlannedStep& step);
    void addQueue(PlannedStep& step) const;
    void addTold(PlannedStep& step, const std::wstring& words) const;
    void addTaken(PlannedStep& step, std::int32_t id, const std::wstring& request) const;

    const SoakHostFacts facts_;
    fuzzing::Random random_;
    SoakMenu menu_;
    size_t steps_ = 0;
    Model model_;
    std::array<int, 2> passesSaved_{};
    std::array<int, 2> versions_ = {1, 1};
    std::int32_t nextRequestId_;
    int lastRequested_ = 0; // the part of the request that was written last
    std::set<std::int32_t> neverOpened_;
};

// The machine that a request's settings name.
std::wstring soakMachine(std::int32_t requestId);

} // namespace testing_support
