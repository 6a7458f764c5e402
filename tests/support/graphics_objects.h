// The graphics objects (pens, bitmaps, device contexts, …) that this process can still make.
#pragma once

namespace testing_support {

// How many pens can be made until the system refuses one: fewer by each object that is held. All of
// them are let go of again.
int countFreeGraphicsObjects();

} // namespace testing_support
