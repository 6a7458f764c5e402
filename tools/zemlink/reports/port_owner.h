// Who listens on the notice port.
#pragma once

#include "tools/zemlink/reports/facts.h"

#include <string>

namespace zemlink {

enum class PortOwner { companion, another, unknown };

// By the listening process where the system reports it, else by the Companion's log. Only
// meaningful while a program listens.
PortOwner portOwner(const Facts& facts);

// `the Companion`, with its process if the system reports it.
std::string portOwnerText(const Facts& facts);

} // namespace zemlink
