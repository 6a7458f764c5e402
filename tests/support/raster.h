// Pictures as plain pixels, for the tests.
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

// The picture in the bytes of a bitmap file; nothing when they are no bitmap file of 32 bits a
// pixel, plain, rows from the bottom up, with a zero in each pixel's fourth byte.
std::optional<Raster> readBitmapFile(std::string_view bytes);

// The first few pixels in which two pictures differ, as text; empty when they are the same.
std::string differences(const Raster& expected, const Raster& seen);

} // namespace testing_support
