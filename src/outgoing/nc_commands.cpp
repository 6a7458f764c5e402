#include "outgoing/nc_commands.h"

namespace torvapdm {

int importNcFiles()
{
    return 0;
}

int renameNcFiles()
{
    return 1;
}

} // namespace torvapdm
