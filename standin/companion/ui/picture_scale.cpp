#include "standin/companion/ui/picture_scale.h"

#include <algorithm>

namespace companion {
namespace {

// A half-open range that is not empty.
struct Span {
    int first, end;
};

// The pixels that the pixel at `place` replaces when `from` pixels become `to`.
Span spanOf(int place, int from, int to)
{
    const int first = static_cast<int>(std::int64_t{place} * from / to);
    const int end = static_cast<int>((std::int64_t{place} + 1) * from / to);
    return {first, std::max(end, first + 1)};
}

std::uint32_t meanOf(const peer::Pixels& picture, const Span& columns, const Span& rows)
{
    std::uint64_t sums[3]{};
    for (int row = rows.first; row < rows.end; ++row) {
        for (int column = columns.first; column < columns.end; ++column) {
            const std::uint32_t value =
                picture.values[static_cast<size_t>(row) * static_cast<size_t>(picture.width) +
                               static_cast<size_t>(column)];
            sums[0] += value & 0xFF;
            sums[1] += value >> 8 & 0xFF;
            sums[2] += value >> 16 & 0xFF;
        }
    }
    const auto count = static_cast<std::uint64_t>(columns.end - columns.first) *
                       static_cast<std::uint64_t>(rows.end - rows.first);
    return static_cast<std::uint32_t>(sums[0] / count | sums[1] / count << 8 |
                                      sums[2] / count << 16);
}

} // namespace

peer::Pixels scaled(const peer::Pixels& picture, int width, int height)
{
    if (width <= 0 || height <= 0 || picture.values.empty())
        return {};
    peer::Pixels result{width, height};
    for (int row = 0; row < height; ++row) {
        const Span rows = spanOf(row, picture.height, height);
        for (int column = 0; column < width; ++column)
            result.values.push_back(meanOf(picture, spanOf(column, picture.width, width), rows));
    }
    return result;
}

} // namespace companion
