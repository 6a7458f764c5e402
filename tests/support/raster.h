// Pixel buffers for picture tests.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace testing_support {

// Top row first; a pixel is 0x00BBGGRR.
struct Raster {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;

    Raster() = default;
    Raster(int columns, int rows);

    std::uint32_t& at(int x, int y);
    std::uint32_t at(int x, int y) const;
};

// The picture in a bitmap file; nothing unless it is an uncompressed, bottom-up bitmap of 32 bits
// per pixel with 0 in each pixel's fourth byte.
std::optional<Raster> readBitmapFile(std::string_view bytes);

// The first few pixels that differ between two pictures, as text; empty if they are equal.
std::string differences(const Raster& expected, const Raster& seen);

} // namespace testing_support
