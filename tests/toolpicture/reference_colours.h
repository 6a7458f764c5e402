// A second implementation of the tool picture's colour arithmetic, for the tests. It computes in
// double precision and rounds each step to single precision explicitly.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

namespace reference {

struct Hls {
    int hue;
    int lightness;
    int saturation;
};

using Rgb = std::array<int, 3>; // red, green, blue

inline Rgb partsOf(std::uint32_t colour)
{
    return {static_cast<int>(colour % 256), static_cast<int>(colour / 256 % 256),
            static_cast<int>(colour / 65536 % 256)};
}

inline std::uint32_t packedOf(int low, int second, int third)
{
    return static_cast<std::uint32_t>(low + second * 256 + third * 65536);
}

// Rounds to single precision.
inline double single(double value)
{
    return static_cast<double>(static_cast<float>(value));
}

inline int cut(double unit, double range)
{
    return static_cast<int>(single(single(unit) * range));
}

inline Hls hlsOf(std::uint32_t colour)
{
    const Rgb parts = partsOf(colour);
    const int most = *std::max_element(parts.begin(), parts.end());
    const int least = *std::min_element(parts.begin(), parts.end());
    const int sum = most + least;
    const double lightness = single(sum / 510.0);
    Hls hls = {0, cut(lightness, 255), 0};
    if (most == least)
        return hls;
    // The largest component determines the base hue; of equal components, the last one counts.
    size_t at = 0;
    for (size_t i = 1; i < 3; ++i)
        if (parts[i] == most)
            at = i;
    const auto distance = [&](size_t i) {
        return single(static_cast<double>(most - parts[i % 3]) / (most - least));
    };
    const double base = at == 0 ? 6 : at == 1 ? 2 : 4;
    double hue = single(60 * single(single(base + distance(at + 2)) - distance(at + 1)));
    if (hue > 360)
        hue = single(hue - 360);
    hls.hue = static_cast<int>(single(single(hue * 255) / 360));
    hls.saturation = cut(static_cast<double>(most - least) / (sum <= 255 ? sum : 510 - sum), 255);
    return hls;
}

// One colour component at this hue in degrees.
inline int componentOf(double p, double q, double hue)
{
    const double turned = hue > 360 ? single(hue - 360) : hue < 0 ? single(hue + 360) : hue;
    const double rise = single(q - p);
    double value = p;
    if (turned < 60)
        value = single(p + single(single(rise * turned) / 60));
    else if (turned < 180)
        value = q;
    else if (turned < 240)
        value = single(p + single(single(rise * single(240 - turned)) / 60));
    return cut(value, 255);
}

inline std::uint32_t rgbOf(Hls hls)
{
    if (hls.saturation == 0)
        return packedOf(hls.lightness, hls.lightness, hls.lightness);
    const double hue = single(hls.hue * 360 / 255.0);
    const double l = single(hls.lightness / 255.0);
    const double s = single(hls.saturation / 255.0);
    const double q =
        hls.lightness <= 127 ? single(l * single(1 + s)) : single(single(l + s) - single(l * s));
    const double p = single(2 * l - q);
    return packedOf(componentOf(p, q, single(hue + 120)), componentOf(p, q, hue),
                    componentOf(p, q, single(hue - 120)));
}

inline int shift(int component, int percent)
{
    if (percent > 0)
        return (component + (255 - component) * percent / 100) % 256;
    return component * (100 + percent) / 100;
}

// For percentages of -100 and above.
inline std::uint32_t adjusted(std::uint32_t colour, int lightnessPercent, int saturationPercent)
{
    Hls hls = hlsOf(colour);
    hls.lightness = shift(hls.lightness, lightnessPercent);
    hls.saturation = shift(hls.saturation, saturationPercent);
    return rgbOf(hls);
}

} // namespace reference
