// A host's command file, seen from the writer's side.
#pragma once

#include "peer/delivery.h"

#include <string>

namespace companion {

// One look at the file, without opening it: an open handle of ours would keep the host from
// creating the file again after it has taken a request.
Sight lookAtCommandFile(const std::wstring& path);

// Writes the whole request with one write into the existing, empty file and closes it; never
// creates the file. False when nothing was written, because the file is missing, not empty, on
// the way to be deleted or cannot be opened; then look again and try later.
bool writeRequest(const std::wstring& path, const std::string& request);

} // namespace companion
