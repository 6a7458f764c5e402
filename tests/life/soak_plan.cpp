#include "life/soak_plan.h"

#include <iterator>

namespace testing_support {

namespace {

constexpr int mostPasses = 12;

} // namespace

struct SoakPlan::Kind {
    PlannedStep (SoakPlan::*plan)();
    unsigned weight; // how often among all of them
    enum class Needs { nothing, aNameToSave, aKnownPart, aPart } needs;
};

// The first of each comes in this order before the random ones.
const SoakPlan::Kind SoakPlan::kinds[] = {
    {&SoakPlan::sendFirst, 2, Kind::Needs::nothing},
    {&SoakPlan::sendSecond, 2, Kind::Needs::nothing},
    {&SoakPlan::checkOut, 1, Kind::Needs::nothing},
    {&SoakPlan::about, 1, Kind::Needs::nothing},
    {&SoakPlan::ncQueue, 3, Kind::Needs::nothing},
    {&SoakPlan::toolPicture, 3, Kind::Needs::nothing},
    {&SoakPlan::tools, 2, Kind::Needs::nothing},
    {&SoakPlan::menu, 4, Kind::Needs::nothing},
    {&SoakPlan::finishingPass, 4, Kind::Needs::aPart},
    {&SoakPlan::save, 12, Kind::Needs::aNameToSave},
    {&SoakPlan::hostSave, 2, Kind::Needs::aKnownPart},
    {&SoakPlan::requestsToABusyHost, 3, Kind::Needs::nothing},
    {&SoakPlan::withdrawnRequests, 1, Kind::Needs::nothing},
    {&SoakPlan::otherCalls, 2, Kind::Needs::nothing},
    {&SoakPlan::forgettingEvent, 2, Kind::Needs::nothing},
    {&SoakPlan::newFile, 2, Kind::Needs::nothing},
    {&SoakPlan::checkIn, 2, Kind::Needs::nothing},
    // A document without a name, which cannot be saved: the system opens what its first message box
    // needs, and keeps it.
    {&SoakPlan::save, 0, Kind::Needs::nothing},
};

std::wstring SoakMenu::nextChoice()
{
    static const wchar_t* const choices[] = {L"Open TORVA ZEM", L"About", L"Tools",
                                             L"Import NC-Files", L""};
    return choices[random_.below(std::size(choices))];
}

SoakPlan::SoakPlan(SoakHostFacts facts, std::uint64_t seed)
    : facts_(std::move(facts)), random_(seed), menu_(seed), nextRequestId_(facts_.firstRequestId)
{
}

size_t SoakPlan::warmUpSteps()
{
    return std::size(kinds);
}

PlannedStep SoakPlan::next()
{
    if (steps_ < std::size(kinds))
        return (this->*kinds[steps_++].plan)();
    ++steps_;
    for (;;) {
        const Kind& kind = anyKind();
        if (isPossible(kind))
            return (this->*kind.plan)();
    }
}

const SoakPlan::Kind& SoakPlan::anyKind()
{
    unsigned all = 0;
    for (const Kind& kind : kinds)
        all += kind.weight;
    std::uint64_t place = random_.below(all);
    const Kind* kind = kinds;
    for (; place >= kind->weight; ++kind)
        place -= kind->weight;
    return *kind;
}

bool SoakPlan::isPossible(const Kind& kind) const
{
    switch (kind.needs) {
    case Kind::Needs::aNameToSave:
        // A document without a name waits for the user. One that is not the Companion's never comes
        // back once the host has reported a save.
        return model_.isKnown || (isNamed() && model_.isNotified);
    case Kind::Needs::aKnownPart:
        return model_.isKnown && isNamed();
    case Kind::Needs::aPart:
        return isNamed() && model_.passes < mostPasses;
    default:
        return true;
    }
}

std::wstring SoakPlan::workFile(int part) const
{
    return facts_.folder + L"\\work\\" + facts_.parts[static_cast<size_t>(part)].name + L".mcam";
}

} // namespace testing_support
