#include "host/document.h"

#include "outgoing/screen_capture.h"
#include "host/host.h"
#include "support/add_in_state.h"
#include "support/host_fixture.h"
#include "dormant/dormant.h"
#include "outgoing/save_through_host.h"

#include "support/system_calls.h"

#include <algorithm>
#include <stdexcept>

using namespace torvapdm;
using namespace testing_support;

namespace {

class HostDocument : public HostFixture {
protected:
    HostDocument() { installation.endStandardInput(); }

    Lines saving(const std::wstring& name, const wchar_t* window, const wchar_t* result)
    {
        return {L"ui CFile_DoFileSave(\"" + name + L"\", " + window + L", false, true) " + result,
                L"ui CMastercamView.position0()", L"ui CMastercamInterface.position3()"};
    }
    const std::wstring picture = installation.path(L"commit\\screendump.bmp");
};

// A file path outside the installation folder. The destructor deletes the file.
struct FileOutside {
    FileOutside() : path(temporaryFolder() + std::to_wstring(GetCurrentProcessId()) + L".mcam") {}
    ~FileOutside() { DeleteFileW(path.c_str()); }
    static std::wstring temporaryFolder()
    {
        wchar_t folder[MAX_PATH];
        GetTempPathW(MAX_PATH, folder);
        return folder;
    }
    const std::wstring path;
};

bool hadEvent37 = true;

bool failingSave(const wchar_t*, CWnd*, bool, bool)
{
    hadEvent37 = AddInState::event37Seen();
    return false;
}

void WINAPI tracedDebugOutput(LPCWSTR text)
{
    standin::trace(text);
}

int twoFiles(const wchar_t*, CWnd*, bool)
{
    return 2;
}

bool throwingCapture(const wchar_t*, bool)
{
    throw std::runtime_error("other");
}

} // namespace

TEST_F(HostDocument, reportsAFailureBeforeTheRefresh)
{
    AddInState::setEvent37Seen(true);
    standin::redirectImports(GetModuleHandleW(nullptr), &CFile_DoFileSave, &failingSave);
    redirectCalls(&OutputDebugStringW, "OutputDebugStringW", &tracedDebugOutput);
    EXPECT_FALSE(saveThroughHost());
    EXPECT_FALSE(hadEvent37);
    EXPECT_EQ(newTrace(),
              (Lines{L"ui " + std::wstring(50, L'-') + L" !status\n",
                     L"ui CMastercamView.position0()", L"ui CMastercamInterface.position3()"}));
}

TEST_F(HostDocument, isSavedOnlyWhenTheHostReturns1)
{
    standin::setState("geo_filename", L"C:\\a.mcam");
    standin::redirectImports(GetModuleHandleW(nullptr), &SaveFile, &twoFiles);
    EXPECT_EQ(saveUnderCurrentName(), L"");
}

TEST_F(HostDocument, passesOnOtherExceptionsOfTheCapture)
{
    standin::redirectImports(GetModuleHandleW(nullptr), &screen_to_bitmap_file, &throwingCapture);
    EXPECT_THROW(takeScreenCapture(), std::runtime_error);
}

TEST_F(HostDocument, hasAtMost260CharactersInItsName)
{
    standin::setState("geo_filename", L"C:\\a.mcam");
    EXPECT_EQ(hostFileName(), L"C:\\a.mcam");
    std::fill_n(geo_filename, 260, L'n'); // without a null terminator
    EXPECT_EQ(hostFileName(), std::wstring(260, L'n'));
    geo_filename[0] = L'\0';
    EXPECT_EQ(hostFileName(), L"");
}

TEST_F(HostDocument, isSavedAndRefreshed)
{
    const std::wstring name = installation.path(L"a.mcam");
    standin::setState("geo_filename", name);
    AddInState::setEvent37Seen(true);
    EXPECT_TRUE(saveThroughHost());
    EXPECT_EQ(newTrace(), saving(name, L"main", L"-> true"));
    EXPECT_FALSE(AddInState::event37Seen());
}

TEST_F(HostDocument, isRefreshedWhenSavingFails)
{
    const std::wstring name = installation.path(L"a.mcam");
    standin::setState("geo_filename", name);
    standin::failNext("CFile_DoFileSave");
    EXPECT_FALSE(saveThroughHost());
    EXPECT_EQ(newTrace(), saving(name, L"main", L"-> false"));
    standin::raiseNext("CFile_DoFileSave");
    EXPECT_FALSE(saveThroughHost());
    EXPECT_EQ(newTrace(), saving(name, L"main", L"raised"));
    EXPECT_EQ(standin::undeletedExceptions(), 0);
}

TEST_F(HostDocument, logsAFailedSaveToTheDebugger)
{
    static std::string output;
    output.clear();
    constexpr DWORD debugOutput = 0x40010006; // DBG_PRINTEXCEPTION_C
    const auto listen = [](EXCEPTION_POINTERS* raised) -> LONG {
        const EXCEPTION_RECORD& record = *raised->ExceptionRecord;
        if (record.ExceptionCode == debugOutput)
            output += reinterpret_cast<const char*>(record.ExceptionInformation[1]);
        return EXCEPTION_CONTINUE_SEARCH;
    };
    void* const listener = AddVectoredExceptionHandler(1, listen);
    standin::setState("geo_filename", installation.path(L"a.mcam"));
    EXPECT_TRUE(saveThroughHost());
    EXPECT_EQ(output, "");
    standin::failNext("CFile_DoFileSave");
    EXPECT_FALSE(saveThroughHost());
    RemoveVectoredExceptionHandler(listener);
    EXPECT_EQ(output, std::string(50, '-') + " !status\n");
}

TEST_F(HostDocument, isSavedWithoutAnInterface)
{
    const std::wstring name = installation.path(L"a.mcam");
    standin::setState("geo_filename", name);
    standin::failNext("GetMastercamApp");
    EXPECT_TRUE(saveThroughHost());
    EXPECT_EQ(newTrace(), Lines{saving(name, L"null", L"-> true")[0]});
}

TEST_F(HostDocument, isNeverRedirected)
{
    const FileOutside document;
    for (const std::wstring& name : {installation.path(L"a.mcam"), document.path}) {
        standin::setState("geo_filename", name);
        for (const char* setting : {"UseFtpServer=y\n", "UseFtpServer=Y\n"}) {
            writeBytes(installation.path(L"cfg\\settings.ini"), setting);
            EXPECT_TRUE(saveThroughHost());
            EXPECT_EQ(newTrace(), saving(name, L"main", L"-> true"));
        }
    }
    EXPECT_TRUE(readBytes(document.path).has_value());
}

TEST_F(HostDocument, hasChangedWhenTheHostSaysSo)
{
    EXPECT_FALSE(hasDocumentChanged());
    standin::setState("db_changed", L"true");
    EXPECT_TRUE(hasDocumentChanged());
    standin::setState("db_changed", L"false");
    standin::raiseNext("has_db_changed");
    EXPECT_TRUE(hasDocumentChanged()); // so that an unsaved document is not committed
    EXPECT_EQ(standin::undeletedExceptions(), 0);
}

TEST_F(HostDocument, isSavedUnderItsCurrentName)
{
    const std::wstring name = installation.path(L"a.mcam");
    standin::setState("geo_filename", name);
    EXPECT_EQ(saveUnderCurrentName(), name);
    EXPECT_EQ(newTrace(), Lines{L"ui SaveFile(\"" + name + L"\", null, false) -> 1"});
    standin::failNext("SaveFile");
    EXPECT_EQ(saveUnderCurrentName(), L"");
    standin::raiseNext("SaveFile");
    EXPECT_EQ(saveUnderCurrentName(), L"");
    EXPECT_EQ(standin::undeletedExceptions(), 0);
}

TEST_F(HostDocument, isCapturedOverTheLastPicture)
{
    writeBytes(picture, "old");
    takeScreenCapture();
    EXPECT_EQ(newTrace(), Lines{L"ui screen_to_bitmap_file(\"" + picture + L"\", false) -> true"});
    EXPECT_EQ(readBytes(picture).value_or("").substr(0, 2), "BM");
}

TEST_F(HostDocument, isNotCapturedWithoutAFolder)
{
    removeFolder(installation.path(L"commit"));
    takeScreenCapture();
    EXPECT_EQ(newTrace(), Lines{L"ui screen_to_bitmap_file(\"" + picture + L"\", false) -> false"});
    standin::raiseNext("screen_to_bitmap_file");
    takeScreenCapture();
    EXPECT_EQ(standin::undeletedExceptions(), 0);
}
