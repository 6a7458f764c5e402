// What became of a request, or of an attempt to listen, in words.
#pragma once

#include "peer/delivery.h"
#include "tools/zemlink/facts.h"
#include "tools/zemlink/report.h"

#include <cstdint>
#include <string>

namespace zemlink {

// `cause`: why an empty command file could not be written, when that is what happened.
std::string answerText(companion::Verdict verdict, const std::string& cause);

// The request with its answer; exit code `trouble` unless it was taken.
Outcome answerOutcome(Report request, std::uint32_t host, companion::Verdict verdict,
                      const std::string& cause);

// Why nobody can listen on the port: the system's error, and who has the port as far as it is
// known.
std::string portTakenText(const std::string& error, const Port& port, bool isCompanionRunning);

} // namespace zemlink
