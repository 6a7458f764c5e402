// What the registry says of the installation folder.
#pragma once

#include "peer/installation_folder.h"

namespace zemlink {

// Reads both views; changes nothing.
Folder registeredFolder();

} // namespace zemlink
