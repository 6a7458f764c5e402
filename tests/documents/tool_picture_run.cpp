// A tool picture drawn by the shipped library.
#include "documents/exchange_run.h"
#include "support/bytes.h"
#include "support/draw_tool_entry.h"
#include "support/installation.h"

#include <gtest/gtest.h>
#include <windows.h>

using namespace testing_support;

namespace documents {

Made pictureOfATool()
{
    const Installation installation(Registry::ofThisProcess, installationOfThePages);
    const HMODULE library = LoadLibraryW((programFolder() + L"torvapdm.dll").c_str());
    EXPECT_NE(library, nullptr);
    const auto drawTool = drawToolEntry(library);
    EXPECT_EQ(drawTool(24, 40, 7, 20, 0, 0, 10, 20, 40, 10, 1), 0);
    const auto picture = readBytes(installation.path(L"temp\\toolimage-1.bmp"));
    FreeLibrary(library);
    return {{"tool-picture", picture.value_or("")}};
}

} // namespace documents
