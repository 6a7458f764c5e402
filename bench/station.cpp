#include "bench/station.h"

#include "support/companion_double.h"

#include <chrono>

namespace bench {

using namespace testing_support;

namespace {

constexpr unsigned saveCommand = 42002;
constexpr unsigned mostMsBeforeKill = 60; // about as long as a save takes
// A message box of the add-in is answered as long as a script runs.
constexpr const char* script = "wait-for the end of the measurement 86400000\n";

std::int64_t now()
{
    return std::chrono::duration_cast<std::chrono::microseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

} // namespace

Station::Station(const Installation& installation, unsigned number, unsigned seed)
    : installation_(installation),
      number_(number),
      part_(installation.path(L"work\\part" + std::to_wstring(number) + L".mcam")),
      random_(seed + number),
      nextId_(static_cast<std::int32_t>(number + 1) * idsPerHost)
{
    CreateDirectoryW(installation.path(L"work").c_str(), nullptr);
    writeBytes(part_, "");
    startHost();
}

void Station::startHost()
{
    const std::wstring name =
        L"host" + std::to_wstring(number_) + L'-' + std::to_wstring(++starts_);
    host_.reset(); // before the next one starts
    host_ = std::make_unique<HostProgram>(installation_, script, name);
    trace_ = FileTail(installation_.path(name + L".trace"));
    waitForLine(L"ui m_open(0)");
}

bool Station::waitForLine(const std::wstring& text)
{
    return waitUntil([&] { return count(trace_.newLines(), text) > 0; });
}

// From the closing of the command file.
bool Station::open(std::int32_t id, Shift& shift)
{
    const std::string request = openRequest(id, toUtf8(part_));
    if (!waitUntil([&] { return writeRequest(host_->commandFile(), request); }))
        return false;
    const std::int64_t written = now();
    if (!waitForLine(L"DoFileOpen("))
        return false;
    shift.opened.push_back(static_cast<double>(now() - written) / 1000);
    return waitUntil([&] { return host_->window() != nullptr; });
}

void Station::save(std::int32_t id, const Pace& pace, Shift& shift)
{
    const bool isKilled = pace.cyclesPerKill != 0 && random_() % pace.cyclesPerKill == 0;
    host_->command(saveCommand);
    if (isKilled) {
        Sleep(random_() % mostMsBeforeKill);
        startHost();
        ++shift.kills;
    } else if (!waitForLine(L"ui m_save(0)")) {
        ++shift.requestsLost;
        return;
    }
    shift.commits.push_back({.id = id, .isCutOff = isKilled});
}

Shift Station::work(const Pace& pace, const std::atomic<bool>& isOver)
{
    Shift shift;
    while (!isOver) {
        const std::int32_t id = nextId_++;
        if (open(id, shift))
            save(id, pace, shift);
        else
            ++shift.requestsLost;
        if (pace.pauseMs != 0)
            Sleep(random_() % (2 * pace.pauseMs));
    }
    return shift;
}

} // namespace bench
