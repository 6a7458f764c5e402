#include "toolpicture/colours.h"

#include <algorithm>

namespace torvapdm {

namespace {

int byteOf(std::uint32_t packed, unsigned place)
{
    return static_cast<int>(packed >> (8 * place) & 0xFF);
}

// Each value's low eight bits.
std::uint32_t packBytes(std::int64_t low, std::int64_t second, std::int64_t third)
{
    return static_cast<std::uint32_t>((low & 0xFF) | (second & 0xFF) << 8 | (third & 0xFF) << 16);
}

// In degrees. `spread` is the largest component less the smallest, and not 0.
float hueOf(int red, int green, int blue, int largest, float spread)
{
    const float redDistance = static_cast<float>(largest - red) / spread;
    const float greenDistance = static_cast<float>(largest - green) / spread;
    const float blueDistance = static_cast<float>(largest - blue) / spread;
    float hue = 0;
    // A later match wins.
    if (red == largest)
        hue = 60.0f * (6.0f + blueDistance - greenDistance);
    if (green == largest)
        hue = 60.0f * (2.0f + redDistance - blueDistance);
    if (blue == largest)
        hue = 60.0f * (4.0f + greenDistance - redDistance);
    return hue > 360.0f ? hue - 360.0f : hue;
}

std::int64_t shifted(std::int64_t component, std::int64_t percent)
{
    if (percent >= 1)
        return component + (255 - component) * percent / 100;
    return percent < 0 ? component * (percent + 100) / 100 : component;
}

} // namespace

PackedHls rgbToHls(Colour colour)
{
    const int red = byteOf(colour, 0);
    const int green = byteOf(colour, 1);
    const int blue = byteOf(colour, 2);
    const auto [smallest, largest] = std::minmax({red, green, blue});
    const float sum = static_cast<float>(largest + smallest);
    const float spread = static_cast<float>(largest - smallest);
    const float lightness = sum / 510.0f;
    const int packedLightness = static_cast<int>(lightness * 255.0f);
    if (largest == smallest)
        return packBytes(0, packedLightness, 0);
    const float saturation = lightness <= 0.5f ? spread / sum : spread / (510.0f - sum);
    const float hue = hueOf(red, green, blue, largest, spread);
    return packBytes(static_cast<int>(hue * 255.0f / 360.0f), packedLightness,
                     static_cast<int>(saturation * 255.0f));
}

Colour hlsToRgb(PackedHls hls)
{
    const int packedLightness = byteOf(hls, 1);
    if (byteOf(hls, 2) == 0)
        return packBytes(packedLightness, packedLightness, packedLightness);
    const float hue = static_cast<float>(byteOf(hls, 0)) * 360.0f / 255.0f;
    const float lightness = static_cast<float>(packedLightness) / 255.0f;
    const float saturation = static_cast<float>(byteOf(hls, 2)) / 255.0f;
    const float m2 = lightness <= 0.5f ? lightness * (1.0f + saturation)
                                       : lightness + saturation - lightness * saturation;
    const float m1 = 2.0f * lightness - m2;
    return packBytes(hueValue(m1, m2, hue + 120.0f), hueValue(m1, m2, hue),
                     hueValue(m1, m2, hue - 120.0f));
}

int hueValue(float p, float q, float h)
{
    if (h > 360.0f)
        h -= 360.0f;
    else if (h < 0.0f)
        h += 360.0f;
    float value = p;
    if (h < 60.0f)
        value = p + (q - p) * h / 60.0f;
    else if (h < 180.0f)
        value = q;
    else if (h < 240.0f)
        value = p + (q - p) * (240.0f - h) / 60.0f;
    return static_cast<int>(value * 255.0f);
}

Colour adjustHls(Colour colour, int lightnessPercent, int saturationPercent)
{
    const PackedHls hls = rgbToHls(colour);
    return hlsToRgb(packBytes(byteOf(hls, 0), shifted(byteOf(hls, 1), lightnessPercent),
                              shifted(byteOf(hls, 2), saturationPercent)));
}

} // namespace torvapdm
