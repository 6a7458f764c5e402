// A host at which a user shifts: opens a part that the Companion sends, saves it, and so on, for as
// long as the measurement lasts.
#pragma once

#include "support/file_tail.h"
#include "support/host_program.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <random>
#include <vector>

namespace bench {

// A save at a host.
struct Commit {
    std::int32_t id = 0;   // of the request that opened the part; every commit has its own
    bool isCutOff = false; // the host was killed meanwhile, so its record may be there or not
};

// What a host did in a measurement.
struct Shift {
    std::vector<double> opened{}; // milliseconds from the written request to DoFileOpen
    std::vector<Commit> commits{};
    size_t requestsLost = 0; // or not saved
    size_t kills = 0;
};

// The ids of its requests are those from this number times one more than its own number.
constexpr std::int32_t idsPerHost = 1'000'000;

struct Pace {
    unsigned pauseMs = 0;       // the mean of the random pauses between two cycles
    unsigned cyclesPerKill = 0; // on average; 0: the host is never killed
};

// For one thread.
class Station {
public:
    // Starts the host with this number, counted from 0, and waits until its add-in is open.
    Station(const testing_support::Installation& installation, unsigned number, unsigned seed);

    // Works until `isOver`.
    Shift work(const Pace& pace, const std::atomic<bool>& isOver);

    const std::wstring& part() const { return part_; }

private:
    void startHost();
    bool open(std::int32_t id, Shift& shift);
    void save(std::int32_t id, const Pace& pace, Shift& shift);
    bool waitForLine(const std::wstring& text);

    const testing_support::Installation& installation_;
    const unsigned number_;
    const std::wstring part_;
    std::mt19937 random_;
    unsigned starts_ = 0;
    std::int32_t nextId_;
    std::unique_ptr<testing_support::HostProgram> host_{};
    testing_support::FileTail trace_{L""};
};

} // namespace bench
