#include "tools/zemlink/reports/port_owner.h"

#include "peer/exchange_paths.h"
#include "peer/lines.h"
#include "peer/text.h"
#include "peer/wire_constants.h"

namespace zemlink {
namespace {

bool isHolderCompanion(const Facts& facts)
{
    if (facts.companion.process)
        return facts.port.holder == facts.companion.process;
    return peer::isSameIgnoringCase(peer::fileNameOf(facts.port.program), peer::companionProgram);
}

} // namespace

PortOwner portOwner(const Facts& facts)
{
    if (facts.port.holder)
        return isHolderCompanion(facts) ? PortOwner::companion : PortOwner::another;
    if (!facts.companion.isRunning)
        return PortOwner::another;
    if (!facts.companion.hasPort)
        return PortOwner::unknown;
    return *facts.companion.hasPort ? PortOwner::companion : PortOwner::another;
}

std::string portOwnerText(const Facts& facts)
{
    switch (portOwner(facts)) {
    case PortOwner::companion:
        return facts.port.holder ? "the Companion" : "the Companion, by its log";
    case PortOwner::another:
        return facts.companion.isRunning && !facts.port.holder
                   ? "another program, by the Companion's log"
                   : "another program";
    case PortOwner::unknown:
        break;
    }
    return "unknown, since the system does not report it";
}

} // namespace zemlink
