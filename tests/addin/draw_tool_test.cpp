// DrawTool of the shipped library, called the same way as by the Companion.
#include "support/draw_tool_entry.h"
#include "support/bytes.h"
#include "support/installation.h"
#include "support/raster.h"
#include "toolpicture/reference_picture.h"

#include <bit>
#include <gtest/gtest.h>
#include <windows.h>

using namespace testing_support;

namespace {

class DrawTool : public ::testing::Test {
protected:
    void SetUp() override
    {
        library = LoadLibraryW((programFolder() + L"torvapdm.dll").c_str());
        ASSERT_NE(library, nullptr);
        entry = drawToolEntry(library);
        ASSERT_NE(entry, nullptr);
    }
    void TearDown() override { FreeLibrary(library); }

    std::optional<Raster> picture(const std::wstring& name) const
    {
        return readBitmapFile(readBytes(installation.path(L"temp\\" + name)).value_or(""));
    }

    const Installation installation;
    HMODULE library = nullptr;
    DrawToolEntry entry = nullptr;
};

} // namespace

TEST_F(DrawTool, savesThePictureUnderItsNumber)
{
    EXPECT_EQ(entry(60, 90, 1, 10, 0, 0, 20, 30, 60, 8, -3), 0);
    const auto drawn = picture(L"toolimage--3.bmp");
    ASSERT_TRUE(drawn);
    EXPECT_EQ(drawn->width, 60);
    EXPECT_EQ(drawn->height, 90);
    EXPECT_EQ(drawn->at(0, 89), 0xD7920Eu);  // background
    EXPECT_EQ(drawn->at(30, 0), 0x9C9C9Cu);  // cap
    EXPECT_EQ(drawn->at(30, 20), 0x65FCFEu); // shank
    EXPECT_EQ(drawn->at(30, 35), 0x7CED7Cu); // shoulder
    EXPECT_EQ(drawn->at(30, 50), 0xED7C7Cu); // flutes
}

TEST_F(DrawTool, takesItsElevenArgumentsInOrder)
{
    // All of these are used for this kind of tool, and all differ.
    const torvapdm::ToolArguments tool = {.width = 100,
                                          .height = 120,
                                          .toolType = 14,
                                          .diameter = 8,
                                          .cornerRadius = 3,
                                          .tipAngle = 20,
                                          .fluteLength = 25,
                                          .shoulderLength = 33,
                                          .overallLength = 70,
                                          .shankDiameter = 15};
    EXPECT_EQ(entry(100, 120, 14, 8, 3, 20, 25, 33, 70, 15, 7), 0);
    const auto drawn = picture(L"toolimage-7.bmp");
    ASSERT_TRUE(drawn);
    EXPECT_EQ(differences(reference::toolPicture(tool), *drawn), "");
}

TEST_F(DrawTool, drawsNothingForAnImpossibleSize)
{
    EXPECT_EQ(entry(0xFFFFFFFF, 0xFFFFFFFF, 1, 10, 0, 0, 20, 30, 60, 8, 1), 0);
    EXPECT_EQ(entry(0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1), 0);
    EXPECT_EQ(readBytes(installation.path(L"temp\\toolimage-1.bmp")), std::nullopt);
}
