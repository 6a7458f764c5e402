// Two real hosts with the add-in that ships and one real Companion under a mixed load: nothing is
// lost, and the hosts hold no more afterwards than the page of the calls lists.
//
// SOAK_SECONDS and SOAK_SEED in the environment change how long it goes on, and the steps.
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

    using Hosts = std::vector<std::unique_ptr<SoakedHost>>;

    // Goes on until all hosts are through with their steps or one of them complains.
    void run(Hosts& hosts, const std::function<bool(const SoakedHost&)>& withNextStep)
    {
        for (bool goesOn = true; goesOn;) {
            goesOn = false;
            company.events.readOn();
            for (const auto& host : hosts) {
                host->goOn(withNextStep(*host));
                goesOn = goesOn || !host->isBetweenSteps() || withNextStep(*host);
            }
            for (const auto& host : hosts)
                goesOn = goesOn && host->complaint().empty();
            waitUntil([] { return false; }, 2);
        }
    }

    // The numbers of the machine settings in the folder.
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
    SoakCompany company{installation, CompanionEvents(installation.path(L"sys\\companion.log"))};
};

std::string complaintsOf(const std::vector<std::unique_ptr<SoakedHost>>& hosts)
{
    std::string complaints;
    for (const auto& host : hosts)
        complaints += host->complaint();
    return complaints;
}

} // namespace

TEST_F(Soak, losesAndLeaksNothing)
{
    const auto seed = fromEnvironment("SOAK_SEED", usualSeed);
    const auto milliseconds = 1000ULL * fromEnvironment("SOAK_SECONDS", usualSeconds);
    const CompanionProgram companion(installation);
    ASSERT_NE(companion.waitForWindow(), nullptr);
    Hosts hosts;
    for (unsigned number = 0; number < 2; ++number)
        hosts.push_back(std::make_unique<SoakedHost>(company, number, seed));
    ASSERT_EQ(complaintsOf(hosts), "");
    run(hosts, [](const SoakedHost& host) { return host.steps() < 2 * SoakPlan::warmUpSteps(); });
    ASSERT_EQ(complaintsOf(hosts), "");
    for (const auto& host : hosts)
        host->noteHeld();

    const ULONGLONG end = GetTickCount64() + milliseconds;
    run(hosts, [&](const SoakedHost&) { return GetTickCount64() < end; });
    ASSERT_EQ(complaintsOf(hosts), "");

    for (const auto& host : hosts) {
        EXPECT_EQ(host->heldComplaint(), "") << "seed " << seed << ", " << host->name();
        std::printf("%s, %zu steps: %s\n", host->name().c_str(), host->steps(),
                    host->heldFigures().c_str());
    }
    company.events.readOn();
    EXPECT_EQ(company.events.complaint(), "") << "seed " << seed;
    std::set<std::int32_t> neverOpened;
    for (const auto& host : hosts) {
        neverOpened.insert(host->plan().requestsNeverOpened().begin(),
                           host->plan().requestsNeverOpened().end());
        EXPECT_EQ(host->close(), "");
    }
    EXPECT_EQ(settingsThatStay(), neverOpened);
    EXPECT_EQ(companion.tell(L"--quit"), 0u);
    std::printf("%zu events of the Companion\n", company.events.count());
}
