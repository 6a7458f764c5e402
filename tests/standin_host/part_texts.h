// Sections with every key, in canonical form, for several tests.
#pragma once

namespace testing_support {

inline constexpr char toolWithEveryKey[] = R"([tool]
number = 3
type = 4
flutes = 2
corner-radius-type = 1
material = -32768
length-offset = 5
diameter-offset = 2147483647
diameter = 8.5
corner-radius = 0.25
feed-rate = 0.125
geometry-file = C:\T\drill.step
comment = Drill 8.5
overall-length = 79
shoulder-angle = 1.5
additional-diameter = 2.5
tip-angle = 118
pilot-diameter = 3.5
flute-length = 47
shoulder-length = 50
shoulder-diameter = 12
arbor-diameter = 16
holder-diameter = 40
holder-length = 80
plunge-rate = 350
retract-rate = 3000
station = 61
slot = 62
spindle-speed = 2800
tool-group = 63
machine-group = 64
level = 65
spindle-rotation = -1
)";

// Without paths, which come last.
inline constexpr char operationWithEveryKey[] = R"([operation]
id = 11
group = 8
holder = 12
type = 41
compensation = 42
work-offset = 43
tool-plane = 1
construction-plane = 44
third-plane = 45
depth = -12.5
tool-plane-origin = 1 2 3
construction-plane-origin = 4 5 6
nc-name = C:\NC\A.NC
nci-name = C:\NC\A.nci
tool.number = 3
tool.type = 14
tool.flutes = 12
tool.corner-radius-type = 11
tool.material = -12
tool.length-offset = 15
tool.diameter-offset = 16
tool.diameter = 18.5
tool.corner-radius = 1.25
tool.feed-rate = 1.125
tool.geometry-file = C:\T\old.step
tool.comment = Drill 18.5
cycle-time = 14.5
)";

} // namespace testing_support
