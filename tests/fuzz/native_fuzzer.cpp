// The coverage-guided fuzzer's entry points, in a program of the build machine. The environment
// variable FUZZ_TARGET selects the target.
//
// With FUZZ_SEEDS set, it only writes each target's seeds into the folder of that name, as
// TARGET/NUMBER, and its tokens as TARGET.dict.
#include "fuzz/target.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

using namespace fuzzing;

namespace {

Target namedTarget()
{
    const char* const name = std::getenv("FUZZ_TARGET");
    for (const Target& target : allTargets())
        if (name && std::string_view(name) == target.name)
            return target;
    std::fprintf(stderr, "no such target: %s\n", name ? name : "(none named)");
    std::exit(2);
}

void writeSeeds(const std::filesystem::path& folder)
{
    for (const Target& target : allTargets()) {
        std::filesystem::create_directories(folder / target.name);
        for (size_t i = 0; i < target.seeds.size(); ++i)
            std::ofstream(folder / target.name / std::to_string(i), std::ios::binary)
                << target.seeds[i];
        std::ofstream dictionary(folder / (std::string(target.name) + ".dict"));
        for (const std::string& token : target.tokens)
            dictionary << shown(token) << '\n';
    }
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    if (const char* const folder = std::getenv("FUZZ_SEEDS")) {
        writeSeeds(folder);
        std::exit(0);
    }
    return 0;
}

// Called by the fuzzer for each input.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size)
{
    static const Target target = namedTarget();
    const std::string difference =
        target.differencesFor({reinterpret_cast<const char*>(data), size});
    if (difference.empty())
        return 0;
    std::fprintf(stderr, "%s differs from the plain rule\n%s", target.name, difference.c_str());
    std::abort();
}
