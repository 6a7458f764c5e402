#include "commit/save_flow.h"

namespace torvapdm {

int saveFlow()
{
    return 0;
}

} // namespace torvapdm
