// The tool data of a part, made by the add-in's code from the host's records. Linked directly,
// because no exported function of the library reaches it.
#include "documents/exchange_run.h"
#include "support/add_in_state.h"
#include "control.h"
#include "support/bytes.h"
#include "support/installation.h"
#include "support/sockets.h"
#include "outgoing/tool_export.h"

#include <gtest/gtest.h>

using namespace testing_support;

namespace documents {

namespace {

const char oneOperation[] = R"(mastercam part 1

[plane]
id = 1
name = Top

[tool]
number = 4
length-offset = 5
feed-rate = 900
geometry-file = end-mill.step
overall-length = 80
shoulder-angle = 45
additional-diameter = 11.5
tip-angle = 118
pilot-diameter = 1.25
flute-length = 26
shoulder-length = 30
shoulder-diameter = 13
arbor-diameter = 14
holder-diameter = 50
holder-length = 60
plunge-rate = 300
retract-rate = 1000000
station = 8
slot = 9
spindle-speed = 8000
tool-group = 15
machine-group = 16
level = 18
spindle-rotation = 1

[operation]
id = 101
holder = 20
type = 19
compensation = 21
work-offset = 54
tool-plane = 1
construction-plane = 1
depth = -12.5
nc-name = BRACKET.NC
cycle-time = 61.5
tool.number = 4
tool.type = 10
tool.flutes = 3
tool.corner-radius-type = 2
tool.material = 1
tool.length-offset = 5
tool.diameter-offset = 6
tool.diameter = 12.5
tool.corner-radius = 0.5
tool.feed-rate = 900.25
tool.geometry-file = end-mill.step
tool.comment = End mill | 12=B
)";

} // namespace

Made toolDataOfAPart()
{
    const Installation installation(Registry::ofThisProcess, installationOfThePages);
    const LineReceiver port;
    EXPECT_TRUE(standin::startHost({}));
    writeBytes(installation.path(L"part.mcam"), oneOperation);
    EXPECT_TRUE(standin::putPart(installation.path(L"part.mcam")));
    AddInState::setRequestId(17);
    torvapdm::exportToolData();
    const Made made{{"tools-notice", port.nextConnection().value_or("")},
                    {"tool-data", readBytes(installation.path(L"temp\\tool-17.txt")).value_or("")}};
    standin::stopHost();
    return made;
}

} // namespace documents
