// Brings a request to a host.
#pragma once

#include "peer/delivery.h"

#include <cstdint>
#include <string>

namespace zemlink {

struct Delivered {
    companion::Verdict verdict;
    std::string cause{}; // why an empty file could not be written, when that is what happened
};

// Waits until the command file is empty, writes the request and waits until it is taken; as long as
// `boundMs` each time.
Delivered deliver(const std::wstring& commandFile, const std::string& request,
                  std::int64_t boundMs);

} // namespace zemlink
