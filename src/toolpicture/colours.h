// Colours of the tool picture. A colour has red in its low byte, green in the second and blue in
// the third (0x00BBGGRR); a packed colour model value has, in the same order, hue, lightness and
// saturation, each 0 to 255. The colour model is the HLS model of Foley and van Dam, Fundamentals
// of Interactive Computer Graphics. No platform header.
#pragma once

#include <cstdint>

namespace torvapdm {

using Colour = std::uint32_t;
using PackedHls = std::uint32_t;

// The colour's hue, lightness and saturation, computed in single precision and truncated. A grey
// has hue 0 and saturation 0.
PackedHls rgbToHls(Colour colour);

// The reverse. Because of the truncation a colour can come back a few steps darker.
Colour hlsToRgb(PackedHls hls);

// One component at hue h (-120 to 480 degrees) between p and q, which are 0 to 1.
int hueValue(float p, float q, float h);

// The colour with lightness and saturation adjusted: a positive percentage moves a component by
// that share of its distance to 255, a negative one reduces it by that share.
Colour adjustHls(Colour colour, int lightnessPercent, int saturationPercent);

} // namespace torvapdm
