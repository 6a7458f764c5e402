// Pixel buffers for picture tests.
#pragma once

#include "peer/bitmap_file.h"

#include <cstdint>
#include <cstring>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace testing_support {

// Top row first; a pixel is 0x00BBGGRR.
struct Raster {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels{};

    Raster() = default;
    Raster(int columns, int rows)
        : width(columns), height(rows), pixels(static_cast<size_t>(columns * rows))
    {
    }

    std::uint32_t& at(int x, int y) { return pixels.at(static_cast<size_t>(y * width + x)); }
    std::uint32_t at(int x, int y) const { return pixels.at(static_cast<size_t>(y * width + x)); }
};

// The picture in a bitmap file; nothing unless it is an uncompressed, bottom-up bitmap of 32 bits
// per pixel with 0 in each pixel's fourth byte.
inline std::optional<Raster> readBitmapFile(std::string_view bytes)
{
    constexpr std::uint32_t headerSize = 54;
    const auto form = peer::findBitmapForm(bytes);
    if (!form || form->bits != 32 || form->isTopDown)
        return std::nullopt;
    Raster picture(form->width, form->height);
    const auto size = static_cast<std::uint32_t>(bytes.size());
    // The sizes of the file, of both headers together, and of the second header.
    const std::uint32_t fields[] = {size, 0, headerSize, 40};
    if (size != headerSize + 4 * picture.pixels.size() ||
        std::memcmp(bytes.data() + 2, fields, sizeof fields) != 0)
        return std::nullopt;
    picture.pixels = peer::parseBitmap(bytes).values;
    for (std::uint32_t& pixel : picture.pixels) {
        if (pixel > 0xFFFFFF)
            return std::nullopt;
        pixel = (pixel & 0xFF) << 16 | (pixel & 0xFF00) | pixel >> 16; // from 0x00RRGGBB
    }
    return picture;
}

// The first few pixels that differ between two pictures, as text; empty if they are equal.
inline std::string differences(const Raster& expected, const Raster& seen)
{
    if (expected.width != seen.width || expected.height != seen.height)
        return "the sizes differ";
    std::ostringstream text;
    for (int y = 0, shown = 0; y < expected.height; ++y)
        for (int x = 0; x < expected.width; ++x)
            if (expected.at(x, y) != seen.at(x, y) && shown++ < 20)
                text << "column " << std::dec << x << ", row " << y << std::hex << ": expected "
                     << expected.at(x, y) << ", seen " << seen.at(x, y) << '\n';
    return text.str();
}

} // namespace testing_support
