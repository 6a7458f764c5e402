#include "life/called_library.h"

#include "control.h"
#include "support/bytes.h"
#include "support/draw_tool_entry.h"
#include "support/companion_double.h"

#include <gtest/gtest.h>

namespace testing_support {

namespace {

constexpr unsigned long long betweenCheckoutsMs = 1100;

void drawTool()
{
    const auto entry = drawToolEntry(GetModuleHandleW(L"torvapdm.dll"));
    EXPECT_EQ(entry(120, 160, 10, 10, 1, 0, 20, 30, 60, 8, 1), 0);
}

} // namespace

CalledLibrary::CalledLibrary(CompanionMarks marks)
{
    recordCompanionStarts(installation_);
    if (marks != CompanionMarks::none)
        companion_.holdSemaphore();
    if (marks == CompanionMarks::semaphoreAndWindow)
        companion_.showWindow();
    standin::HostOptions options;
    options.answersMessageBoxes = true;
    EXPECT_TRUE(standin::startHost(options));
    EXPECT_TRUE(standin::loadAddIn(programFolder() + L"torvapdm.dll"));
    EXPECT_TRUE(standin::callExport("m_open", 0));
    EXPECT_TRUE(standin::putPart(programFolder() + L"shipped\\host\\example\\bracket.mcam"));
    EXPECT_TRUE(standin::setState("geo_filename", installation_.path(L"part.mcam")));
}

CalledLibrary::~CalledLibrary()
{
    standin::callExport("m_close", 0);
    standin::stopHost();
}

void CalledLibrary::make(const LibraryCall& call)
{
    const bool isCheckout = call.name == "m_load";
    if (isCheckout)
        waitUntil([this] { return GetTickCount64() - checkedOutAt_ > betweenCheckoutsMs; });
    standin::chooseNext(call.menuItem);
    if (call.name == "DrawTool")
        drawTool();
    else
        EXPECT_TRUE(standin::callExport(call.name, call.argument));
    for (int i = 0; i < call.lines; ++i)
        EXPECT_TRUE(receiver_.nextConnection());
    if (isCheckout)
        checkedOutAt_ = GetTickCount64();
    pumpMessages();
}

void CalledLibrary::requestPart(int id, const std::string& machineSettings)
{
    const std::wstring part = installation_.path(L"requested.mcam");
    const std::wstring commandFile = installation_.commandFile(GetCurrentProcessId());
    const std::wstring line = L"ui CFile_DoFileSave(\"" + part + L"\", main, false, false)";
    writeBytes(part, "");
    writeBytes(installation_.path(L"temp\\mcsettings-" + std::to_wstring(id) + L".txt"),
               machineSettings);
    const auto saves = [&] {
        size_t found = 0;
        for (const std::wstring& traced : standin::traceLines())
            found += traced.find(line) != traced.npos;
        return found;
    };
    const size_t before = saves();
    EXPECT_TRUE(waitUntil([&] { return readBytes(commandFile) == ""; }));
    EXPECT_TRUE(writeRequest(commandFile, openRequest(id, toUtf8(part))));
    EXPECT_TRUE(waitUntil([&] { return saves() > before; }));
}

} // namespace testing_support
