// The coverage-guided fuzzer's side of a target, as a program of the building machine. The target
// is named by the environment variable FUZZ_TARGET.
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

// The fuzzer calls this for each of its inputs.
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
