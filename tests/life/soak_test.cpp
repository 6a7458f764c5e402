// Two real hosts with the shipped add-in and one real Companion under a mixed load: nothing is
// lost, and afterwards the hosts hold only the resources listed in docs/life.md.
//
// The environment variables SOAK_SECONDS and SOAK_SEED set the duration and the random seed.
#include "life/soaked_host.h"

#include <cstdlib>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>

using namespace testing_support;

namespace {

constexpr unsigned long usualSeconds = 60;
constexpr unsigned long usualSeed = 20'261;

unsigned long fromEnvironment(const char* name, unsigned long otherwise)
{
    const char* const value = std::getenv(name);
    return value ? std::strtoul(value, nullptr, 10) : otherwise;
}

class Soak : public ::testing::Test {
protected:
    Soak()
    {
        installCompanionWithLibrary(installation);
        writeBytes(installation.path(L"cfg\\settings.ini"), "AlwaysSaveTools=y\n");
    }

    // Runs until all hosts have finished their steps or a check fails.
    void run(const std::function<bool(const SoakedHost&)>& withNextStep)
    {
        for (bool goesOn = true; goesOn && !HasFailure();) {
            goesOn = false;
            company.readEvents();
            for (const auto& host : hosts) {
                host->goOn(withNextStep(*host));
                goesOn = goesOn || !host->isBetweenSteps() || withNextStep(*host);
            }
            waitUntil([] { return false; }, 2);
        }
    }

    // The request ids of the machine-settings files in the folder.
    std::set<std::int32_t> settingsThatStay() const
    {
        const std::wstring start = L"mcsettings-";
        std::set<std::int32_t> numbers;
        for (const auto& entry : std::filesystem::directory_iterator(installation.path(L"temp"))) {
            const std::wstring name = entry.path().filename().wstring();
            if (name.rfind(start, 0) == 0)
                numbers.insert(std::stoi(name.substr(start.size())));
        }
        return numbers;
    }

    Installation installation{Registry::ofTheUser};
    SoakCompany company{installation, FileTail(installation.path(L"sys\\companion.log"))};
    std::vector<std::unique_ptr<SoakedHost>> hosts;
};

} // namespace

TEST_F(Soak, losesAndLeaksNothing)
{
    const auto seed = fromEnvironment("SOAK_SEED", usualSeed);
    const auto milliseconds = 1000ULL * fromEnvironment("SOAK_SECONDS", usualSeconds);
    SCOPED_TRACE("SOAK_SEED=" + std::to_string(seed));
    const CompanionProgram companion(installation);
    ASSERT_NE(companion.waitForWindow(), nullptr);
    for (unsigned number = 0; number < 2; ++number)
        hosts.push_back(std::make_unique<SoakedHost>(company, number, seed));
    run([](const SoakedHost& host) { return host.steps() < 2 * SoakPlan::warmUpSteps(); });
    for (const auto& host : hosts)
        host->noteHeld();

    const ULONGLONG end = GetTickCount64() + milliseconds;
    run([&](const SoakedHost&) { return GetTickCount64() < end; });
    ASSERT_FALSE(HasFailure());

    for (const auto& host : hosts)
        host->expectNothingElseHeld();
    company.readEvents();
    for (const auto& [event, open] : company.openEvents)
        EXPECT_EQ(open, 0) << "too few of this in the Companion's log: " << toUtf8(event);
    std::set<std::int32_t> neverOpened;
    for (const auto& host : hosts) {
        neverOpened.insert(host->plan().requestsNeverOpened().begin(),
                           host->plan().requestsNeverOpened().end());
        host->close();
    }
    EXPECT_EQ(settingsThatStay(), neverOpened);
    EXPECT_EQ(companion.tell(L"--quit"), 0u);
}
