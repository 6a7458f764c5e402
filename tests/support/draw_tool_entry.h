// The library's entry point that draws a tool, as a program finds it by its name.
#pragma once

#include <bit>
#include <cstdint>
#include <windows.h>

namespace testing_support {

using DrawToolEntry = int (*)(std::uint32_t width, std::uint32_t height, std::uint32_t toolType,
                              double diameter, double cornerRadius, double tipAngle,
                              double fluteLength, double shoulderLength, double overallLength,
                              double shankDiameter, std::int32_t imageId);

// Null when the library is missing or has no such entry point.
inline DrawToolEntry drawToolEntry(HMODULE library)
{
    return std::bit_cast<DrawToolEntry>(library ? GetProcAddress(library, "DrawTool") : nullptr);
}

} // namespace testing_support
