// The coverage-guided fuzzer's entry points, in a program of the build machine. The environment
// variable FUZZ_TARGET selects the target.
#include "fuzz/differences.h"
#include "fuzz/target.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>

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

} // namespace

// Called by the fuzzer for each input.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size)
{
    static const Target target = namedTarget();
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const std::string difference = target.check(bytes);
    if (difference.empty())
        return 0;
    std::fprintf(stderr, "%s differs from the plain rule\n%s", target.name, difference.c_str());
    std::abort();
}
