// How a picture is shaded: its size, a row, three marks, a place between the body's edge and its
// centre, and the pixels, row by row, "#" for one of the outline.
#include "fuzz/differences.h"
#include "fuzz/input.h"
#include "fuzz/targets.h"
#include "toolpicture/reference_colours.h"
#include "toolpicture/shading.h"

#include <cmath>

namespace fuzzing {

namespace {

using torvapdm::BodyRun;
using torvapdm::SectionMarks;

struct Pixels {
    int width, height;
    std::string_view bits; // a row after the other, one byte a pixel

    bool isOutline(int x, int y) const
    {
        if (x < 0 || x >= width || y < 0 || y >= height)
            return false;
        const auto at = static_cast<size_t>(y * width + x);
        return at < bits.size() && bits[at] == '#';
    }
};

std::vector<int> described(const std::optional<BodyRun>& run)
{
    return run ? std::vector<int>{run->boundary, run->top, run->bottom} : std::vector<int>{};
}

std::vector<int> plainRun(const Pixels& pixels, int top, const SectionMarks& marks)
{
    for (int x = 0; x < pixels.width / 2; ++x) {
        if (!pixels.isOutline(x, top))
            continue;
        int last = top;
        while (last != marks.cap && last != marks.shank && last != marks.shoulder &&
               last + 1 < pixels.height && pixels.isOutline(x, last + 1) &&
               !pixels.isOutline(x - 1, last + 1))
            ++last;
        return {x, top, last + 1};
    }
    return {};
}

std::uint32_t plainSection(int top, const SectionMarks& marks)
{
    if (!(top > marks.cap))
        return 0x080808;
    if (!(top >= marks.shank))
        return 0x008080;
    return top >= marks.shoulder ? 0x801010 : 0x108010;
}

std::uint32_t plainBody(std::uint32_t section, int t, int span)
{
    const double p = std::sin(t * 90.0 / span * 3.14159265358979323846 / 180) * 60;
    return reference::adjusted(section, static_cast<int>(p), -static_cast<int>(p / 40));
}

std::string checkToolShading(std::string_view bytes)
{
    Input input(bytes);
    const int width = 1 + input.number<unsigned char>() % 24;
    const int height = 1 + input.number<unsigned char>() % 24;
    const int top = input.number<unsigned char>() % height;
    // None lies above the one before it.
    SectionMarks marks = {input.number<signed char>(), 0, 0};
    marks.shank = marks.cap + input.number<unsigned char>();
    marks.shoulder = marks.shank + input.number<unsigned char>();
    const int t = input.number<unsigned char>();
    const int span = t + input.number<unsigned char>();
    const Pixels pixels = {width, height, input.rest()};
    const auto isOutline = [&](int x, int y) { return pixels.isOutline(x, y); };

    Differences differences;
    differences.compare("run", described(findBodyRun(isOutline, top, {width, height}, marks)),
                        plainRun(pixels, top, marks));
    const std::uint32_t section = torvapdm::sectionColour(top, marks);
    differences.compare("section", section, plainSection(top, marks));
    if (span > 0)
        differences.compare("body", torvapdm::bodyColour(section, t, span),
                            plainBody(section, t, span));
    return differences.text();
}

} // namespace

Target toolShadingTarget()
{
    using namespace std::string_literals;
    return {"tool_shading",
            checkToolShading,
            {"\7\3\0\1\2\3\2\5"s + "..##.#....##......#.............",
             "\xB\5\1\2\1\0\0\1"s + std::string(12, '#') + "..#..........#........#......",
             "\x17\x17\0\xFF\0\0\x2D\x2D"s + std::string(576, '#'),
             "\5\5\2\3\0\0\1\0"s + ".#....#....#....#....#....#..."},
            {"#", ".", "..#..", "##"}};
}

} // namespace fuzzing
