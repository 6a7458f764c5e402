#include "support/raster.h"

#include <cstdio>
#include <cstring>

namespace testing_support {

namespace {

constexpr size_t headerSize = 54;

std::uint32_t numberAt(std::string_view bytes, size_t at, size_t size)
{
    std::uint32_t number = 0;
    std::memcpy(&number, bytes.data() + at, size);
    return number;
}

bool isPlainBitmapFile(std::string_view bytes)
{
    return bytes.size() > headerSize && bytes.substr(0, 2) == "BM" &&
           numberAt(bytes, 2, 4) == bytes.size() && numberAt(bytes, 10, 4) == headerSize &&
           numberAt(bytes, 14, 4) == 40 && numberAt(bytes, 26, 2) == 1 &&
           numberAt(bytes, 28, 2) == 32 && numberAt(bytes, 30, 4) == 0;
}

// From 0x??RRGGBB.
std::uint32_t turned(std::uint32_t pixel)
{
    return (pixel & 0xFF) << 16 | (pixel & 0xFF00) | (pixel >> 16 & 0xFF);
}

std::string textOf(int x, int y, std::uint32_t expected, std::uint32_t seen)
{
    char line[100];
    std::snprintf(line, sizeof line, "column %d, row %d: expected %06X, seen %06X\n", x, y,
                  static_cast<unsigned>(expected), static_cast<unsigned>(seen));
    return line;
}

} // namespace

Raster::Raster(int columns, int rows)
    : width(columns), height(rows), pixels(static_cast<size_t>(columns) * static_cast<size_t>(rows))
{
}

std::uint32_t& Raster::at(int x, int y)
{
    return pixels.at(static_cast<size_t>(y) * static_cast<size_t>(width) + static_cast<size_t>(x));
}

std::uint32_t Raster::at(int x, int y) const
{
    return const_cast<Raster*>(this)->at(x, y);
}

std::optional<Raster> readBitmapFile(std::string_view bytes)
{
    if (!isPlainBitmapFile(bytes))
        return std::nullopt;
    Raster picture(static_cast<int>(numberAt(bytes, 18, 4)),
                   static_cast<int>(numberAt(bytes, 22, 4)));
    if (bytes.size() != headerSize + 4 * picture.pixels.size())
        return std::nullopt;
    size_t place = headerSize;
    for (int y = picture.height - 1; y >= 0; --y)
        for (int x = 0; x < picture.width; ++x, place += 4) {
            const std::uint32_t pixel = numberAt(bytes, place, 4);
            if (pixel > 0xFFFFFF)
                return std::nullopt;
            picture.at(x, y) = turned(pixel);
        }
    return picture;
}

std::string differences(const Raster& expected, const Raster& seen)
{
    if (expected.width != seen.width || expected.height != seen.height)
        return "the sizes differ";
    std::string text;
    int shown = 0;
    for (int y = 0; y < expected.height; ++y)
        for (int x = 0; x < expected.width; ++x)
            if (expected.at(x, y) != seen.at(x, y) && shown++ < 20)
                text += textOf(x, y, expected.at(x, y), seen.at(x, y));
    return text;
}

} // namespace testing_support
