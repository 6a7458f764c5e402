#include "support/raster.h"

#include "peer/bitmap_file.h"

#include <cstdio>
#include <cstring>

namespace testing_support {

namespace {

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
        pixel = turned(pixel);
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
