// Runs 200,000 inputs, the same ones in every run, through the pure functions that process
// external data.
#include "fuzz/mutator.h"
#include "fuzz/target.h"

#include <gtest/gtest.h>

using namespace fuzzing;

namespace fuzzing {

void PrintTo(const Target& target, std::ostream* out)
{
    *out << target.name;
}

} // namespace fuzzing

namespace {

constexpr size_t inputsInAll = 200'000;
constexpr std::uint64_t firstSeed = 20'260;

size_t inputsEach()
{
    return inputsInAll / allTargets().size() + 1;
}

class PureFunction : public ::testing::TestWithParam<Target> {};

void expectAgreement(const Target& target, const std::string& bytes, const std::string& origin)
{
    const std::string difference = target.differencesFor(bytes);
    ASSERT_EQ(difference, "") << target.name << " with " << origin << ":\n" << shown(bytes);
}

std::string nameOf(const ::testing::TestParamInfo<Target>& parameter)
{
    return parameter.param.name;
}

} // namespace

TEST_P(PureFunction, agreesOnEveryInput)
{
    const Target& target = GetParam();
    for (size_t i = 0; i < target.seeds.size(); ++i)
        ASSERT_NO_FATAL_FAILURE(
            expectAgreement(target, target.seeds[i], "its seed " + std::to_string(i)));
    const size_t count = inputsEach();
    for (std::uint64_t seed = firstSeed; seed < firstSeed + count; ++seed) {
        std::mt19937_64 random(seed);
        ASSERT_NO_FATAL_FAILURE(expectAgreement(target,
                                                mutated(target.seeds, target.tokens, random),
                                                "the random numbers of " + std::to_string(seed)));
    }
}

INSTANTIATE_TEST_SUITE_P(Fuzz, PureFunction, ::testing::ValuesIn(allTargets()), nameOf);
