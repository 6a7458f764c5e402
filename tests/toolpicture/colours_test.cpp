#include "toolpicture/colours.h"

#include "toolpicture/reference.h"

#include <gtest/gtest.h>
#include <limits>

using namespace torvapdm;

namespace {

constexpr std::uint32_t everyColour = 1 << 24;

// A colour, its HLS value, and the colour converted back from it.
struct Conversion {
    Colour colour;
    PackedHls hls;
    Colour back;
};

const Conversion conversions[] = {
    {0x000000, 0x000000, 0x000000}, {0xFFFFFF, 0x00FF00, 0xFFFFFF}, {0x080808, 0x000800, 0x080808},
    {0x0000FF, 0xFF7FFF, 0x0000FE}, {0x00FF00, 0xFF7F55, 0x00FE00}, {0xFF0000, 0xFF7FAA, 0xFE0000},
    {0x00FFFF, 0xFF7F2A, 0x00FBFE}, {0xFF00FF, 0xFF7FD4, 0xFE00FB}, {0x1000FF, 0xFF7FFC, 0x1100FE},
    {0xFF0010, 0xFF7FAC, 0xFE000B}, {0x008080, 0xFF402A, 0x007E80}, {0x108010, 0xC64855, 0x107F10},
    {0x801010, 0xC648AA, 0x7F1010}, {0xD8930E, 0xDF738E, 0xD7920E}, {0x123456, 0xA63415, 0x123355},
};

struct Adjustment {
    Colour colour;
    int lightnessPercent;
    int saturationPercent;
    Colour adjusted;
};

const Adjustment adjustments[] = {
    {0x801010, 0, 0, 0x7F1010},    {0x801010, 1, 0, 0x811010},   {0x801010, 50, 0, 0xEA5B5B},
    {0x801010, 100, 0, 0xFFFFFF},  {0x801010, 0, -50, 0x632C2C}, {0x801010, -50, 50, 0x430404},
    {0x801010, -100, 0, 0x000000}, {0x808080, 0, 50, 0x4040BF},  {0xD8930E, 40, -25, 0xE2BC73},
};

} // namespace

TEST(RgbToHls, returnsHueLightnessAndSaturation)
{
    for (const Conversion& c : conversions)
        EXPECT_EQ(rgbToHls(c.colour), c.hls) << std::hex << c.colour;
}

TEST(HlsToRgb, returnsTheColourUpToTruncation)
{
    for (const Conversion& c : conversions)
        EXPECT_EQ(hlsToRgb(c.hls), c.back) << std::hex << c.hls;
}

TEST(RgbToHls, isRightForEveryColour)
{
    for (Colour colour = 0; colour < everyColour; ++colour) {
        const auto [hue, lightness, saturation] = reference::hlsOf(colour);
        ASSERT_EQ(rgbToHls(colour), reference::packedOf(hue, lightness, saturation))
            << std::hex << colour;
    }
}

TEST(HlsToRgb, isRightForEveryValue)
{
    for (PackedHls hls = 0; hls < everyColour; ++hls) {
        const auto [hue, lightness, saturation] = reference::partsOf(hls);
        ASSERT_EQ(hlsToRgb(hls), reference::rgbOf({hue, lightness, saturation})) << std::hex << hls;
    }
}

TEST(RgbToHls, hasOnlyLightnessForAGrey)
{
    for (Colour grey = 0; grey < 256; ++grey) {
        EXPECT_EQ(rgbToHls(grey * 0x010101), grey << 8);
        EXPECT_EQ(hlsToRgb(grey << 8 | 0x55), grey * 0x010101);
    }
}

TEST(RgbToHls, halvesAPureColoursLightness)
{
    for (Colour strength = 1; strength < 256; ++strength) {
        EXPECT_EQ(rgbToHls(strength), 0xFF00FF | strength / 2 << 8);
        EXPECT_EQ(rgbToHls(strength << 8), 0xFF0055 | strength / 2 << 8);
        EXPECT_EQ(rgbToHls(strength << 16), 0xFF00AA | strength / 2 << 8);
    }
}

TEST(RgbToHls, ignoresTheFourthByte)
{
    EXPECT_EQ(rgbToHls(0xFF801010), rgbToHls(0x801010));
    EXPECT_EQ(hlsToRgb(0xFFC648AA), hlsToRgb(0xC648AA));
}

TEST(HueValue, risesAndFallsAroundTheCircle)
{
    // Input angles are in degrees.
    EXPECT_EQ(hueValue(0, 1, 0), 0);
    EXPECT_EQ(hueValue(0, 1, 12), 51);
    EXPECT_EQ(hueValue(0, 1, 60), 255);
    EXPECT_EQ(hueValue(0, 1, 179), 255);
    EXPECT_EQ(hueValue(0, 1, 180), 255);
    EXPECT_EQ(hueValue(0, 1, 228), 51);
    EXPECT_EQ(hueValue(0, 1, 240), 0);
    EXPECT_EQ(hueValue(0, 1, 360), 0);
    EXPECT_EQ(hueValue(0, 1, 361), 4);  // 1 degree
    EXPECT_EQ(hueValue(0, 1, 372), 51); // 12 degrees
    EXPECT_EQ(hueValue(0, 1, -1), 0);   // 359 degrees
    EXPECT_EQ(hueValue(0, 1, -132), 51);
}

TEST(HueValue, staysInRange)
{
    EXPECT_EQ(hueValue(0.25f, 0.75f, 30), 127);
    EXPECT_EQ(hueValue(0.25f, 0.75f, 100), 191);
    EXPECT_EQ(hueValue(0.25f, 0.75f, 300), 63);
}

TEST(AdjustHls, movesLightnessAndSaturationByAShare)
{
    for (const Adjustment& a : adjustments)
        EXPECT_EQ(adjustHls(a.colour, a.lightnessPercent, a.saturationPercent), a.adjusted)
            << std::hex << a.colour << std::dec << ' ' << a.lightnessPercent << ' '
            << a.saturationPercent;
}

TEST(AdjustHls, isRightForEveryPercentage)
{
    for (const Colour colour : {0x080808u, 0x008080u, 0x108010u, 0x801010u, 0xD8930Eu, 0x123456u})
        for (int lightness = -100; lightness <= 100; ++lightness)
            for (int saturation = -100; saturation <= 100; ++saturation)
                ASSERT_EQ(adjustHls(colour, lightness, saturation),
                          reference::adjusted(colour, lightness, saturation))
                    << std::hex << colour << std::dec << ' ' << lightness << ' ' << saturation;
}

TEST(AdjustHls, keepsTheLowEightBits)
{
    // 8 + 2 x (255 - 8) = 502, whose low byte is 246 (0xF6).
    EXPECT_EQ(adjustHls(0x080808, 200, 0), 0xF6F6F6u);
    // 8 - 2 x 8 = -8, whose low byte is 248 (0xF8).
    EXPECT_EQ(adjustHls(0x080808, -200, 0), 0xF8F8F8u);
    constexpr int lowest = std::numeric_limits<int>::min();
    constexpr int highest = std::numeric_limits<int>::max();
    EXPECT_EQ(adjustHls(0xFFFFFF, highest, lowest), 0xFFFFFFu);
}
