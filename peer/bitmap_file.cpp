#include "peer/bitmap_file.h"

#include "peer/wire_constants.h"

#include <cstdlib>

namespace peer {
namespace {

constexpr size_t fileHeaderSize = 14;
constexpr size_t shortestInformation = 40;
constexpr size_t longestInformation = 124;
constexpr std::uint32_t notCompressed = 0;
constexpr size_t bytesAColour = 4;

struct Form {
    std::int64_t width = 0, height = 0;
    bool isTopDown = false;
    unsigned bits = 0;
    size_t paletteStart = 0;
    std::uint64_t colours = 0;
    std::uint64_t offset = 0, rowSize = 0;
};

// The little-endian number of `size` bytes at `place`.
std::uint32_t numberAt(std::string_view bytes, size_t place, size_t size)
{
    std::uint32_t number = 0;
    for (size_t i = 0; i < size; ++i)
        number |= std::uint32_t{static_cast<unsigned char>(bytes[place + i])} << (8 * i);
    return number;
}

bool isIndexed(unsigned bits)
{
    return bits == 1 || bits == 4 || bits == 8;
}

Form parseBitmapForm(std::string_view bytes)
{
    const auto signedAt = [bytes](size_t place) {
        return std::int64_t{static_cast<std::int32_t>(numberAt(bytes, place, 4))};
    };
    Form form;
    form.width = signedAt(18);
    form.height = std::abs(signedAt(22));
    form.isTopDown = signedAt(22) < 0;
    form.bits = numberAt(bytes, 28, 2);
    form.paletteStart = fileHeaderSize + numberAt(bytes, 14, 4);
    if (isIndexed(form.bits)) {
        const std::uint32_t stated = numberAt(bytes, 46, 4);
        form.colours = stated == 0 ? std::uint64_t{1} << form.bits : stated;
    }
    form.offset = numberAt(bytes, 10, 4);
    form.rowSize = (static_cast<std::uint64_t>(form.width) * form.bits + 31) / 32 * 4;
    return form;
}

bool hasReadableHeaders(std::string_view bytes)
{
    if (bytes.size() < fileHeaderSize + shortestInformation || !bytes.starts_with(bitmapStart))
        return false;
    const std::uint32_t information = numberAt(bytes, 14, 4);
    const std::uint32_t bits = numberAt(bytes, 28, 2);
    return information >= shortestInformation && information <= longestInformation &&
           numberAt(bytes, 26, 2) == 1 && numberAt(bytes, 30, 4) == notCompressed &&
           (isIndexed(bits) || bits == 24 || bits == 32);
}

// Width and height are checked first, so that no product overflows.
bool isWhole(const Form& form, std::uint64_t size)
{
    if (form.width < 1 || form.height < 1 || form.width > mostPicturePixels ||
        form.height > mostPicturePixels || form.width * form.height > mostPicturePixels)
        return false;
    const std::uint64_t paletteEnd = form.paletteStart + form.colours * bytesAColour;
    return paletteEnd <= form.offset &&
           form.offset + form.rowSize * static_cast<std::uint64_t>(form.height) <= size;
}

// Empty when the file is not supported or shorter than its headers claim.
std::optional<Form> formOfWhole(std::string_view bytes)
{
    if (!hasReadableHeaders(bytes))
        return std::nullopt;
    const Form form = parseBitmapForm(bytes);
    return isWhole(form, bytes.size()) ? std::optional(form) : std::nullopt;
}

std::uint32_t pixelAt(std::string_view bytes, const Form& form, size_t row, size_t column)
{
    const size_t place = row + column * form.bits / 8;
    if (!isIndexed(form.bits))
        return numberAt(bytes, place, 3);
    // The leftmost pixel is in the highest bits.
    const auto shift = static_cast<unsigned>(8 - form.bits - column * form.bits % 8);
    const std::uint32_t index = numberAt(bytes, place, 1) >> shift & ((1u << form.bits) - 1);
    return index < form.colours ? numberAt(bytes, form.paletteStart + index * bytesAColour, 3) : 0;
}

} // namespace

std::optional<BitmapForm> findBitmapForm(std::string_view bytes)
{
    const auto form = formOfWhole(bytes);
    if (!form)
        return std::nullopt;
    return BitmapForm{static_cast<int>(form->width), static_cast<int>(form->height),
                      static_cast<int>(form->bits), form->isTopDown};
}

Pixels parseBitmap(std::string_view bytes)
{
    const auto form = formOfWhole(bytes);
    if (!form)
        return {};
    const auto width = static_cast<size_t>(form->width);
    const auto height = static_cast<size_t>(form->height);
    Pixels picture{static_cast<int>(form->width), static_cast<int>(form->height)};
    picture.values.reserve(width * height);
    for (size_t y = 0; y < height; ++y) {
        const size_t stored = form->isTopDown ? y : height - 1 - y;
        const auto row = static_cast<size_t>(form->offset + stored * form->rowSize);
        for (size_t x = 0; x < width; ++x)
            picture.values.push_back(pixelAt(bytes, *form, row, x));
    }
    return picture;
}

} // namespace peer
