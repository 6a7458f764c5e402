// Makes pictures smaller without losing their thin lines.
#pragma once

#include <cstdint>
#include <vector>

namespace companion {

// Pixels from the upper left corner on, row by row, 8 bits each of blue, green and red from the
// lowest bit on; the highest 8 mean nothing.
struct Pixels {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> values{}; // width times height
};

// The picture in that size: each pixel is the mean of those that it stands for, the nearest one
// where the picture becomes larger. Empty when either size is.
Pixels scaled(const Pixels& picture, int width, int height);

} // namespace companion
