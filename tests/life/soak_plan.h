// The random steps of a soak for one host, and their expected effects. Pure: the same facts and
// seed give the same steps.
#pragma once

#include "support/bytes.h"
#include "support/message_boxes.h"

#include <algorithm>
#include <iterator>
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

// The choice in the n-th menu of a host, counted from 0, made by the host's script.
inline std::wstring menuChoice(size_t n)
{
    static const wchar_t* const choices[] = {L"Open TORVA ZEM", L"About", L"Tools",
                                             L"Import NC-Files", L""};
    return choices[n % std::size(choices)];
}

class SoakPlan {
public:
    SoakPlan(SoakHostFacts facts, std::uint64_t seed)
        : facts_(std::move(facts)), random_(seed), nextRequestId_(facts_.firstRequestId)
    {
    }
    SoakPlan(const SoakPlan&) = delete;
    SoakPlan& operator=(const SoakPlan&) = delete;

    // The number of initial steps, which make every call once.
    static size_t warmUpSteps() { return kinds().size(); }
    PlannedStep next()
    {
        static const std::vector<const Kind*> byWeight = [] {
            std::vector<const Kind*> all;
            for (const Kind& kind : kinds())
                all.insert(all.end(), kind.weight, &kind);
            return all;
        }();
        const Kind* kind = &kinds()[std::min(steps_, warmUpSteps() - 1)];
        if (steps_++ >= warmUpSteps())
            do
                kind = byWeight[random_() % byWeight.size()];
            while (!isPossible(*kind));
        step_ = {kind->name};
        if (kind->add)
            (this->*kind->add)();
        if (kind->row)
            call(kind->command, kind->line, kind->row);
        return step_;
    }

    // Requests replaced by a later one: their machine settings are never removed.
    const std::set<std::int32_t>& requestsNeverOpened() const { return neverOpened_; }

private:
    // A kind of step: `add` plans its actions, then a menu command of the host calls the add-in.
    struct Kind {
        const char* name;
        unsigned weight; // relative frequency
        void (SoakPlan::*add)();
        unsigned command = 0;
        const wchar_t* line = nullptr; // the host's last line
        const char* row = nullptr;     // its row in life_table.h
    };

    // Each kind runs once in this order before the random steps.
    static const std::vector<Kind>& kinds()
    {
        static const std::vector<Kind> all = {
            {"send the first part", 2, &SoakPlan::sendFirst},
            {"send the last part", 2, &SoakPlan::sendLast},
            {"check-out", 1, &SoakPlan::startCompanion, 42001, L"ui m_load(0) -> 0", "m_load"},
            {"about", 1, &SoakPlan::startCompanion, 42003, L"ui m_about(0) -> 0", "m_about"},
            {"NC queue", 3, &SoakPlan::postPrograms, 42005, L"ui importNCqueue() -> 0",
             "importNCqueue"},
            {"tool picture", 3, nullptr, 42008,
             L"ui DrawTool(300, 400, 4, 10, 0, 59, 47, 50, 89, 12, 1)", "DrawTool"},
            {"tools", 2, &SoakPlan::sendSetupSheet, 42004, L"ui m_tools(0) -> 0", "m_tools"},
            {"menu", 4, &SoakPlan::openMenu, 43037, L"ui m_main(0) -> 0", "m_main"},
            {"save", 12, &SoakPlan::commit, 42002, L"ui m_save(0) -> 0", "m_save"},
            {"host's own save", 2, &SoakPlan::saveInHost, 41103, L"ui m_notify(5) -> 0",
             "m_notify"},
            {"requests to a busy host", 3, &SoakPlan::sendWhileBusy},
            {"requests that a check-out withdraws", 1, &SoakPlan::withdrawRequests},
            {"importNC", 1, nullptr, 42006, L"ui importNC() -> 0", "importNC"},
            {"renameNC", 1, nullptr, 42007, L"ui renameNC() -> 1", "renameNC"},
            {"TestFunction", 1, nullptr, 42009, L"ui TestFunction() -> 1", "TestFunction"},
            {"event without effect", 1, nullptr, 43004, L"ui m_notify(4) -> 0", "m_notify"},
            {"end of a save", 1, &SoakPlan::forgetFile, 43003, L"ui m_notify(3) -> 0", "m_notify"},
            {"event 6", 1, &SoakPlan::forgetFile, 43006, L"ui m_notify(6) -> 0", "m_notify"},
            {"event 52", 1, &SoakPlan::forgetFile, 43052, L"ui m_notify(52) -> 0", "m_notify"},
            {"new file", 2, &SoakPlan::newFile},
            {"check-in", 2, &SoakPlan::checkIn},
            // A document without a name, which cannot be saved: the first message box makes the
            // system open handles that it keeps.
            {"save without a name", 0, &SoakPlan::commit, 42002, L"ui m_save(0) -> 0", "m_save"},
        };
        return all;
    }

    void sendFirst() { send(facts_.parts.front()); }
    void sendLast() { send(facts_.parts.back()); }
    void startCompanion() { step_.events.emplace_back(L"command"); }
    bool isPossible(const Kind& kind) const
    {
        // For a document without a name, saving waits for the user. For a document that is not the
        // Companion's, it does not return once the host has reported a save.
        if (kind.add == &SoakPlan::commit)
            return isKnown_ || (part_ && isSaveUnreported_);
        // Only event 3 reports the end of a save; without it, an unknown document is not saved.
        if (kind.add == &SoakPlan::forgetFile)
            return isSaveUnreported_ || kind.command == 43003;
        if (kind.add == &SoakPlan::postPrograms)
            return part_ != nullptr;
        return kind.add != &SoakPlan::saveInHost || (isKnown_ && part_);
    }

    void call(unsigned command, const wchar_t* line, const char* row)
    {
        step_.acts.push_back(L"command " + std::to_wstring(command));
        step_.trace.emplace_back(line);
        step_.calls.emplace_back(row);
    }

    void send(SoakPart& part)
    {
        sendCommand(L"--send \"" + part.name + L'"', part.number);
        expectOpening(part, part.number);
    }

    void postPrograms()
    {
        step_.acts.emplace_back(L"command 41107");
        step_.events = {L"line", L"nc-queue file=\"" + facts_.folder + L"\\temp\\ncqueue-" +
                                     std::to_wstring(requestId_) + L".txt\""};
        step_.events.insert(step_.events.end(), part_->programs, L"nc-program");
    }

    void sendSetupSheet()
    {
        if (part_)
            step_.events.insert(step_.events.end(),
                                {L"line", L"setup-sheet id=" + std::to_wstring(requestId_)});
    }

    void openMenu()
    {
        step_.trace.emplace_back(L"ui m_notify(37) -> 0");
        const std::wstring choice = menuChoice(menus_++);
        if (choice == L"Tools" || choice == L"Import NC-Files")
            sendSetupSheet();
        if (choice != L"About")
            return;
        startCompanion();
        step_.calls.emplace_back("m_about");
    }

    void commit()
    {
        if (requestId_ != 0)
            sendSetupSheet();
        if (isKnown_)
            expectHostSave();
        if (!part_) {
            step_.trace.push_back(notSaved);
            return;
        }
        isKnown_ = true;
        const std::wstring request = L"id=" + std::to_wstring(requestId_);
        const std::wstring file = L"file=" + document();
        const std::wstring version = std::to_wstring(++part_->version);
        step_.events.insert(step_.events.end(),
                            {L"line", L"commit-notice " + request + L' ' + file,
                             L"commit " + file + L' ' + request,
                             L"version name=\"" + part_->name + L"\" version=" + version +
                                 L" number=" + std::to_wstring(part_->number) + L" picture=yes"});
        step_.version = facts_.folder + L"\\library\\" + part_->name + L"\\v" + version;
    }

    void saveInHost()
    {
        expectHostSave();
        commit();
        isSaveUnreported_ = false;
    }

    // Only the last of the requests takes effect.
    void sendWhileBusy()
    {
        SoakPart& part = addPendingRequests(3);
        step_.acts.emplace_back(L"ready");
        neverOpened_.erase(requestId_);
        expectOpening(part, requestId_);
    }

    void withdrawRequests()
    {
        addPendingRequests(2);
        startCompanion();
        call(42001, L"ui m_load(0) -> 0", "m_load");
        step_.acts.insert(step_.acts.end(), {L"await", L"ready"});
    }

    void forgetFile()
    {
        isKnown_ = false;
        isSaveUnreported_ = true;
    }

    void newFile()
    {
        sendCommand(L"--new-file", 0);
        expectNewFile();
    }

    void checkIn()
    {
        sendCommand(L"--check-in", 0);
        step_.trace.emplace_back(L"other m_fclose(null, 0, null)");
        expectNewFile();
        isKnown_ = true; // its id reads 0
    }

    // The Companion sends a request, which the host takes.
    void sendCommand(const std::wstring& arguments, std::int32_t id)
    {
        const std::wstring host = std::to_wstring(facts_.processId);
        step_.acts.push_back(L"companion " + arguments + L" --host " + host);
        step_.events = {L"command", L"taken id=" + std::to_wstring(id) + L" host=" + host};
    }

    void expectOpening(SoakPart& part, std::int32_t id)
    {
        requestId_ = id;
        isKnown_ = true;
        part_ = &part;
        step_.trace.push_back(L"ui DoFileOpen(" + document() +
                              L", false, false, 1, true, *, null) -> true");
        step_.trace.push_back(L"ui CFile_DoFileSave(" + document() +
                              L", main, false, false) -> true");
    }

    void expectNewFile()
    {
        step_.trace.emplace_back(LR"(other post_FT_command("Mastercam", "OnFileNew"))");
        requestId_ = 0;
        part_ = nullptr;
    }

    void expectHostSave()
    {
        step_.trace.push_back(L"ui CFile_DoFileSave(" + document() + L", main, false, true) -> " +
                              (part_ ? L"true" : L"false"));
    }

    // Sends requests while the host is busy, so that they stay pending; returns the last one's
    // part.
    SoakPart& addPendingRequests(unsigned most)
    {
        step_.acts.emplace_back(L"busy");
        SoakPart* part = nullptr;
        for (auto left = 1 + random_() % most; left > 0; --left) {
            part = &facts_.parts[random_() % facts_.parts.size()];
            requestId_ = nextRequestId_++;
            step_.acts.push_back(L"request " + std::to_wstring(requestId_) + L' ' +
                                 workFile(*part));
            neverOpened_.insert(requestId_);
        }
        step_.acts.emplace_back(L"push");
        return *part;
    }

    std::wstring workFile(const SoakPart& part) const
    {
        return facts_.folder + L"\\work\\" + part.name + L".mcam";
    }

    std::wstring document() const { return part_ ? L'"' + workFile(*part_) + L'"' : L"\"\""; }

    SoakHostFacts facts_;
    std::mt19937_64 random_;
    size_t steps_ = 0;
    size_t menus_ = 0;
    PlannedStep step_;

    // Expected state of the add-in and the host's document.
    std::int32_t requestId_ = 0;
    bool isKnown_ = false;         // the file is one of the Companion's
    bool isSaveUnreported_ = true; // the add-in's flag of this name
    SoakPart* part_ = nullptr;     // the open part; null for an empty document without a name
    std::int32_t nextRequestId_;
    std::set<std::int32_t> neverOpened_;
};

} // namespace testing_support
