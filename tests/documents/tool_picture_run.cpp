// The picture of a tool, drawn by the library that ships.
#include "documents/exchange_run.h"
#include "support/bytes.h"
#include "support/installation.h"

#include <bit>
#include <cstdint>
#include <gtest/gtest.h>
#include <windows.h>

using namespace testing_support;

namespace documents {

namespace {

using DrawToolEntry = int (*)(std::uint32_t width, std::uint32_t height, std::uint32_t toolType,
                              double diameter, double cornerRadius, double tipAngle,
                              double fluteLength, double shoulderLength, double overallLength,
                              double shankDiameter, std::int32_t imageId);

} // namespace

Made pictureOfATool()
{
    const Installation installation(Registry::ofThisProcess, installationOfThePages);
    const HMODULE library = LoadLibraryW((programFolder() + L"torvapdm.dll").c_str());
    EXPECT_NE(library, nullptr);
    const auto drawTool = std::bit_cast<DrawToolEntry>(GetProcAddress(library, "DrawTool"));
    EXPECT_EQ(drawTool(24, 40, 7, 20, 0, 0, 10, 20, 40, 10, 1), 0);
    const auto picture = readBytes(installation.path(L"temp\\toolimage-1.bmp"));
    FreeLibrary(library);
    return {{"tool-picture", picture.value_or("")}};
}

} // namespace documents
