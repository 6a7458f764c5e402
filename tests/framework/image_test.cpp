// The replacement of CImage for compilers that do not provide it.
#include "framework/framework.h"

#include "support/bytes.h"
#include "support/installation.h"
#include "support/system_calls.h"

#include <filesystem>
#include <gtest/gtest.h>

using namespace testing_support;

namespace {

// Three columns and two rows, compatible with the screen: red, green and blue in the first row; 1,
// 2 and 3 in the second.
HBITMAP smallBitmap()
{
    const HDC screen = GetDC(nullptr);
    const HDC context = CreateCompatibleDC(screen);
    const HBITMAP bitmap = CreateCompatibleBitmap(screen, 3, 2);
    const HGDIOBJ former = SelectObject(context, bitmap);
    const COLORREF colours[] = {RGB(255, 0, 0), RGB(0, 255, 0), RGB(0, 0, 255), 1, 2, 3};
    for (int i = 0; i < 6; ++i)
        SetPixel(context, i % 3, i / 3, colours[i]);
    SelectObject(context, former);
    DeleteDC(context);
    ReleaseDC(nullptr, screen);
    return bitmap;
}

const std::string smallBitmapFile("BM\x4E\0\0\0\0\0\0\0\x36\0\0\0"             // 78 bytes, 54
                                  "\x28\0\0\0\x03\0\0\0\x02\0\0\0\x01\0\x20\0" // 3 x 2, 32 bits
                                  "\0\0\0\0\x18\0\0\0\0\0\0\0\0\0\0\0"         // 24 bytes
                                  "\0\0\0\0\0\0\0\0"                           //
                                  "\0\0\x01\0\0\0\x02\0\0\0\x03\0"             // the lower row
                                  "\0\0\xFF\0\0\xFF\0\0\xFF\0\0\0",
                                  78);

// Writes half of the bytes and reports success.
BOOL WINAPI shortWrite(HANDLE file, LPCVOID bytes, DWORD size, LPDWORD written,
                       LPOVERLAPPED overlapped)
{
    const BOOL result =
        systems(&shortWrite, "WriteFile")(file, bytes, size / 2, written, overlapped);
    SetLastError(ERROR_SUCCESS);
    return result;
}

class Image : public ::testing::Test {
protected:
    HRESULT save(const std::wstring& name)
    {
        CImage image;
        image.Attach(smallBitmap());
        return image.Save(installation.path(name).c_str());
    }
    std::string saved(const std::wstring& name) const
    {
        return readBytes(installation.path(name)).value_or("none");
    }
    std::vector<std::wstring> filesInFolder() const
    {
        std::vector<std::wstring> names;
        for (const auto& entry : std::filesystem::directory_iterator(installation.path(L"temp")))
            names.push_back(entry.path().filename().wstring());
        return names;
    }

    const Installation installation;
};

} // namespace

TEST_F(Image, isSavedAsABitmapFileOf32BitsAPixel)
{
    EXPECT_EQ(save(L"temp\\small.bmp"), S_OK);
    EXPECT_EQ(saved(L"temp\\small.bmp"), smallBitmapFile);
    EXPECT_EQ(filesInFolder(), std::vector<std::wstring>{L"small.bmp"});
}

TEST_F(Image, takesTheFormatFromTheExtension)
{
    EXPECT_EQ(save(L"temp\\SMALL.BMP"), S_OK);
    EXPECT_EQ(save(L"temp\\small.png"), E_FAIL);
    EXPECT_EQ(save(L"temp\\small"), E_FAIL);
    EXPECT_EQ(filesInFolder(), std::vector<std::wstring>{L"SMALL.BMP"});
}

TEST_F(Image, replacesAnEarlierFile)
{
    writeBytes(installation.path(L"temp\\small.bmp"), std::string(1000, 'x'));
    EXPECT_EQ(save(L"temp\\small.bmp"), S_OK);
    EXPECT_EQ(saved(L"temp\\small.bmp"), smallBitmapFile);
}

TEST_F(Image, keepsAnEarlierFileItCannotReplace)
{
    const std::wstring path = installation.path(L"temp\\small.bmp");
    writeBytes(path, "earlier");
    const HANDLE reader = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                      OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(reader, INVALID_HANDLE_VALUE);
    EXPECT_TRUE(FAILED(save(L"temp\\small.bmp")));
    CloseHandle(reader);
    EXPECT_EQ(saved(L"temp\\small.bmp"), "earlier");
    EXPECT_EQ(filesInFolder(), std::vector<std::wstring>{L"small.bmp"});
}

TEST_F(Image, isNotSavedIntoAFolderThatIsMissing)
{
    EXPECT_EQ(save(L"nowhere\\small.bmp"), HRESULT_FROM_WIN32(ERROR_PATH_NOT_FOUND));
}

TEST_F(Image, isWrittenWhileAReaderSharesIt)
{
    const std::wstring path = installation.path(L"temp\\small.bmp");
    writeBytes(path, "earlier");
    const HANDLE reader =
        CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                    OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(reader, INVALID_HANDLE_VALUE);
    EXPECT_EQ(save(L"temp\\small.bmp"), S_OK);
    CloseHandle(reader);
    EXPECT_EQ(saved(L"temp\\small.bmp"), smallBitmapFile);
    EXPECT_EQ(filesInFolder(), std::vector<std::wstring>{L"small.bmp"});
}

TEST_F(Image, isCutShortOnAFullDisk)
{
    writeBytes(installation.path(L"temp\\small.bmp"), "earlier");
    redirectCalls(&shortWrite, "WriteFile", &shortWrite);
    EXPECT_EQ(save(L"temp\\small.bmp"), HRESULT_FROM_WIN32(ERROR_DISK_FULL));
    EXPECT_EQ(saved(L"temp\\small.bmp"), smallBitmapFile.substr(0, smallBitmapFile.size() / 2));
    EXPECT_EQ(filesInFolder(), std::vector<std::wstring>{L"small.bmp"});
}

TEST_F(Image, isNotSavedWithoutABitmap)
{
    const CImage image;
    EXPECT_EQ(image.Save(installation.path(L"temp\\none.bmp").c_str()), E_FAIL);
    EXPECT_TRUE(filesInFolder().empty());
}

TEST_F(Image, isNotSavedFromAnotherObject)
{
    CImage image;
    image.Attach(reinterpret_cast<HBITMAP>(CreatePen(PS_SOLID, 1, 0)));
    EXPECT_EQ(image.Save(installation.path(L"temp\\none.bmp").c_str()), E_FAIL);
}

TEST_F(Image, deletesItsBitmapWithItself)
{
    const HBITMAP first = smallBitmap();
    const HBITMAP second = smallBitmap();
    {
        CImage image;
        image.Attach(first);
        EXPECT_EQ(GetObjectType(first), static_cast<DWORD>(OBJ_BITMAP));
    }
    EXPECT_EQ(GetObjectType(first), 0u);
    CImage image;
    image.Attach(second);
    image.Destroy();
    EXPECT_EQ(GetObjectType(second), 0u);
    EXPECT_EQ(image.Save(installation.path(L"temp\\none.bmp").c_str()), E_FAIL);
}
