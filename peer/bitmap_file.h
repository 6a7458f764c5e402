// Windows bitmap files, as far as pictures are shown here.
#pragma once

#include "standin/companion/ui/picture_scale.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace companion {

// A picture of more pixels is not shown; the largest screens have 33,177,600 (7680 x 4320).
inline constexpr std::int64_t mostPicturePixels = std::int64_t{1} << 25;

// The size of the largest file that can hold such a picture, with room for its headers.
inline constexpr std::uint32_t largestBitmapFile = (1u << 27) + 4096;

// What a bitmap file's headers say of its picture.
struct BitmapForm {
    int width = 0, height = 0;
    int bits = 0; // a pixel
    bool isTopDown = false;
};

// The form of a file that `readBitmapFile` reads; empty for any other.
std::optional<BitmapForm> bitmapForm(std::string_view bytes);

// The picture in the bytes of a bitmap file: an information header of 40 bytes or more, 1, 4, 8, 24
// or 32 bits a pixel, not compressed, rows from the bottom up or, with a negative height, from the
// top down. Empty when the bytes are anything else or fewer than the headers say.
Pixels readBitmapFile(std::string_view bytes);

} // namespace companion
