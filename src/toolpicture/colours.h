// Colours of the tool picture. A colour is packed with red in its low byte, green in the second and
// blue in the third (0x00BBGGRR); in the same way a colour model value is packed with hue,
// lightness and saturation, each of 0 to 255. No platform header: these are decisions.
#pragma once

#include <cstdint>

namespace torvapdm {

using Colour = std::uint32_t;
using PackedHls = std::uint32_t;

// The colour's hue, lightness and saturation, in single precision and then truncated. A grey has
// hue 0 and saturation 0.
PackedHls rgbToHls(Colour colour);

// The way back. What was truncated is lost: the colour can come out darker by a few steps.
Colour hlsToRgb(PackedHls hls);

// One component at hue h (-120 to 480 degrees) between p and q, which are 0 to 1.
int hueValue(float p, float q, float h);

// The colour with lightness and saturation shifted: a percentage above 0 moves a component by that
// share of its distance to 255, one below 0 takes that share of it away.
Colour adjustHls(Colour colour, int lightnessPercent, int saturationPercent);

} // namespace torvapdm
