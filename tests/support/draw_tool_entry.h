// DrawTool, the library's exported function, found by name.
#pragma once

#include <bit>
#include <cstdint>
#include <windows.h>

namespace testing_support {

using DrawToolEntry = int (*)(std::uint32_t width, std::uint32_t height, std::uint32_t toolType,
                              double diameter, double cornerRadius, double tipAngle,
                              double fluteLength, double shoulderLength, double overallLength,
                              double shankDiameter, std::int32_t imageId);

// Null if the library is missing or does not export it.
inline DrawToolEntry drawToolEntry(HMODULE library)
{
    return std::bit_cast<DrawToolEntry>(library ? GetProcAddress(library, "DrawTool") : nullptr);
}

} // namespace testing_support
