#include "framework/image.h"

#include <cstring>
#include <cwchar>
#include <vector>

namespace {

constexpr WORD bitsPerPixel = 32;
constexpr DWORD offsetOfPixels = sizeof(BITMAPFILEHEADER) + sizeof(BITMAPINFOHEADER);

HRESULT lastError()
{
    return HRESULT_FROM_WIN32(GetLastError());
}

bool namesBitmapFile(LPCWSTR path)
{
    const wchar_t* const extension = std::wcsrchr(path, L'.');
    return extension && _wcsicmp(extension, L".bmp") == 0;
}

BITMAPINFO informationOf(const BITMAP& bitmap)
{
    BITMAPINFO information{};
    BITMAPINFOHEADER& header = information.bmiHeader;
    header.biSize = sizeof header;
    header.biWidth = bitmap.bmWidth;
    header.biHeight = bitmap.bmHeight;
    header.biPlanes = 1;
    header.biBitCount = bitsPerPixel;
    header.biCompression = BI_RGB;
    header.biSizeImage = static_cast<DWORD>(bitmap.bmWidth) * static_cast<DWORD>(bitmap.bmHeight) *
                         (bitsPerPixel / 8);
    return information;
}

// Reads the bitmap's pixels; false on failure.
bool readPixels(HBITMAP bitmap, BITMAPINFO information, BYTE* pixels)
{
    const UINT rows = static_cast<UINT>(information.bmiHeader.biHeight);
    const HDC screen = GetDC(nullptr);
    const int read = GetDIBits(screen, bitmap, 0, rows, pixels, &information, DIB_RGB_COLORS);
    ReleaseDC(nullptr, screen);
    return read == information.bmiHeader.biHeight;
}

// The whole file; empty when the bitmap cannot be read.
std::vector<BYTE> bitmapFile(HBITMAP bitmap)
{
    BITMAP description{};
    if (GetObjectW(bitmap, sizeof description, &description) != sizeof description)
        return {};
    const BITMAPINFO information = informationOf(description);
    BITMAPFILEHEADER header{};
    header.bfType = 0x4D42; // "BM"
    header.bfSize = offsetOfPixels + information.bmiHeader.biSizeImage;
    header.bfOffBits = offsetOfPixels;
    std::vector<BYTE> bytes(header.bfSize);
    std::memcpy(bytes.data(), &header, sizeof header);
    std::memcpy(bytes.data() + sizeof header, &information.bmiHeader, sizeof(BITMAPINFOHEADER));
    if (!readPixels(bitmap, information, bytes.data() + offsetOfPixels))
        return {};
    return bytes;
}

// A reader may have the file open, if it shares writing.
HRESULT writeFile(LPCWSTR path, const std::vector<BYTE>& bytes)
{
    const HANDLE file =
        CreateFileW(path, GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return lastError();
    DWORD written = 0;
    HRESULT result =
        WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr)
            ? S_OK
            : lastError();
    // An incomplete write succeeds without an error code.
    if (SUCCEEDED(result) && written != bytes.size())
        result = HRESULT_FROM_WIN32(ERROR_DISK_FULL);
    CloseHandle(file);
    return result;
}

} // namespace

CImage::~CImage()
{
    Destroy();
}

void CImage::Attach(HBITMAP bitmap)
{
    bitmap_ = bitmap;
}

void CImage::Destroy()
{
    if (bitmap_)
        DeleteObject(bitmap_);
    bitmap_ = nullptr;
}

HRESULT CImage::Save(LPCWSTR path) const
{
    if (!bitmap_ || !namesBitmapFile(path))
        return E_FAIL;
    const std::vector<BYTE> bytes = bitmapFile(bitmap_);
    return bytes.empty() ? E_FAIL : writeFile(path, bytes);
}
