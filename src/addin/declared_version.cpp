#include "addin/declared_version.h"

namespace torvapdm {

int declaredVersion(int hostVersion)
{
    const int release = hostVersion / 100;
    return release == 11 || release == 21 ? hostVersion : 2100;
}

} // namespace torvapdm
