// The picture's colours: a colour, two percentages of -100 to 155, which is further than the
// drawing goes.
#include "fuzz/differences.h"
#include "fuzz/input.h"
#include "fuzz/targets.h"
#include "toolpicture/reference_colours.h"
#include "toolpicture/colours.h"

namespace fuzzing {

namespace {

constexpr std::uint32_t threeBytes = 0xFFFFFF;

std::string checkToolColours(std::string_view bytes)
{
    Input input(bytes);
    const std::uint32_t colour = input.number<std::uint32_t>() & threeBytes;
    const int lightness = input.number<unsigned char>() - 100;
    const int saturation = input.number<unsigned char>() - 100;
    const reference::Hls hls = reference::hlsOf(colour);
    const reference::Rgb parts = reference::partsOf(colour);
    Differences differences;
    differences.compare("HLS of the colour", torvapdm::rgbToHls(colour),
                        reference::packedOf(hls.hue, hls.lightness, hls.saturation));
    differences.compare("colour of the HLS", torvapdm::hlsToRgb(colour) & threeBytes,
                        reference::rgbOf({parts[0], parts[1], parts[2]}) & threeBytes);
    differences.compare("adjusted", torvapdm::adjustHls(colour, lightness, saturation),
                        reference::adjusted(colour, lightness, saturation));
    return differences.text();
}

std::string adjusting(std::uint32_t colour, int lightness, int saturation)
{
    return raw(colour) + static_cast<char>(lightness + 100) + static_cast<char>(saturation + 100);
}

} // namespace

Target toolColoursTarget()
{
    return {"tool_colours",
            checkToolColours,
            {adjusting(0xD8930E, 80, -50), adjusting(0x801010, 60, -1), adjusting(0, 0, 0),
             adjusting(0xFFFFFF, 100, 100), adjusting(0x808080, -100, -100),
             adjusting(0x7FFF00, 1, 1), adjusting(0x108010, 30, 0)},
            {"\xFF\xFF\xFF", std::string(3, '\0'), "\x80\x80\x80", "\x7F"}};
}

} // namespace fuzzing
