// The version declared to a host of this version.
#include "addin/exports.h"
#include "fuzz/differences.h"
#include "fuzz/input.h"
#include "fuzz/targets.h"

namespace fuzzing {

namespace {

std::string checkDeclaredVersion(std::string_view bytes)
{
    const auto host = Input(bytes).number<std::int32_t>();
    const bool isEchoed = (host >= 1100 && host <= 1199) || (host >= 2100 && host <= 2199);
    Differences differences;
    differences.compare("version", torvapdm::declaredVersion(host), isEchoed ? host : 2100);
    return differences.text();
}

} // namespace

Target declaredVersionTarget()
{
    return {"declared_version",
            checkDeclaredVersion,
            {raw(2100), raw(2150), raw(1105), raw(2200), raw(-1100), raw(1199), raw(1099)},
            {raw(1100), raw(2199), raw(2147483647), raw(-2147483647 - 1)}};
}

} // namespace fuzzing
