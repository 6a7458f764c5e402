// Which host a request goes to, and the texts for its result.
#pragma once

#include "peer/debug_log.h"
#include "peer/delivery.h"
#include "peer/running_programs.h"
#include "tools/zemlink/reports/facts.h"
#include "tools/zemlink/reports/report.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace zemlink {

struct HostChoice {
    std::optional<std::uint32_t> process{}; // empty: no host, for this reason
    std::string reason{};
    std::string name{}; // of the error: `no-host`, `several-hosts`, `not-a-host`
};

// The named host, or else the only one.
HostChoice chooseHost(const std::vector<peer::Host>& hosts, std::optional<std::uint32_t> named);

// `cause`: why an empty command file could not be written, if that happened.
std::string answerText(peer::Verdict verdict, const std::string& cause);

// The request with its result; exit code `notTaken` unless it was taken.
Outcome answerOutcome(Report request, std::uint32_t host, peer::Verdict verdict,
                      const std::string& cause);

// Of an open request that was taken: whether its file was opened within the time, and the last step
// of its load. Exit code `notOpened` unless it was.
Outcome openedOutcome(Report taken, const peer::LoggedLoad& load);

// Why the notice port cannot be opened: the system's error and, if known, the program that uses
// it.
std::string portTakenText(const std::string& error, const Port& port, bool isCompanionRunning);

} // namespace zemlink
