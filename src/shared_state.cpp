#include "shared_state.h"

namespace torvapdm {

SharedPath currentFilePath;

} // namespace torvapdm
