// Windows bitmap files: screen pictures and tool pictures.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace peer {

// A picture of more pixels is not shown; the largest screens have 33,177,600 (7680 x 4320).
inline constexpr std::int64_t mostPicturePixels = std::int64_t{1} << 25;

// The size of the largest file that can hold such a picture, with room for its headers.
inline constexpr std::uint32_t largestBitmapFile = (1u << 27) + 4096;

// From a bitmap file's headers.
struct BitmapForm {
    int width = 0, height = 0;
    int bits = 0; // per pixel
    bool isTopDown = false;
};

// Empty for a file that parseBitmap does not accept.
std::optional<BitmapForm> findBitmapForm(std::string_view bytes);

// Pixels from the upper left corner, row by row: blue in the lowest 8 bits, then green and red; the
// highest 8 bits have no meaning.
struct Pixels {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> values{}; // width times height
};

// The picture in the bytes of a bitmap file: an information header of 40 bytes or more, 1, 4, 8, 24
// or 32 bits per pixel, not compressed, rows from the bottom up or, with a negative height, from
// the top down. Empty when the bytes are anything else or fewer than the headers claim.
Pixels parseBitmap(std::string_view bytes);

} // namespace peer
