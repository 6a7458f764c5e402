#include "view/memory_picture.h"

#include <algorithm>
#include <vector>

namespace standin {

namespace {

int rowBytes(int width)
{
    return (width * 3 + 3) / 4 * 4;
}

// Rows are stored bottom-up, as in bitmap files, each padded to four bytes.
BITMAPINFOHEADER headerFor(int width, int height)
{
    constexpr WORD bitsAPixel = 24;
    BITMAPINFOHEADER header{};
    header.biSize = sizeof header;
    header.biWidth = width;
    header.biHeight = height;
    header.biPlanes = 1;
    header.biBitCount = bitsAPixel;
    header.biCompression = BI_RGB;
    header.biSizeImage = static_cast<DWORD>(rowBytes(width)) * static_cast<DWORD>(height);
    return header;
}

// Adds a row of the large picture to the sums of a row of the small one, `factor` pixels to each
// sum.
void addRow(std::vector<int>& sums, const unsigned char* row, int factor)
{
    for (size_t first = 0; first < sums.size(); first += 3)
        for (int along = 0; along < factor; ++along, row += 3)
            for (size_t component = 0; component < 3; ++component)
                sums[first + component] += row[component];
}

template <class Header>
void append(std::string& bytes, const Header& header)
{
    bytes.append(reinterpret_cast<const char*>(&header), sizeof header);
}

} // namespace

MemoryPicture::MemoryPicture(int width, int height)
    : width_(std::max(width, 1)), height_(std::max(height, 1))
{
    BITMAPINFO information{};
    information.bmiHeader = headerFor(width_, height_);
    bitmap_ = CreateDIBSection(nullptr, &information, DIB_RGB_COLORS, &pixels_, nullptr, 0);
    if (!bitmap_)
        return;
    context_ = CreateCompatibleDC(nullptr);
    if (context_)
        formerBitmap_ = SelectObject(context_, bitmap_);
}

MemoryPicture::~MemoryPicture()
{
    if (context_) {
        SelectObject(context_, formerBitmap_);
        DeleteDC(context_);
    }
    if (bitmap_)
        DeleteObject(bitmap_);
}

unsigned char* MemoryPicture::row(int fromTop) const
{
    const int place = (height_ - 1 - fromTop) * rowBytes(width_);
    return static_cast<unsigned char*>(pixels_) + place;
}

std::string MemoryPicture::bitmapFile() const
{
    const BITMAPINFOHEADER header = headerFor(width_, height_);
    BITMAPFILEHEADER fileHeader{};
    fileHeader.bfType = 0x4D42; // "BM"
    fileHeader.bfOffBits = sizeof fileHeader + sizeof header;
    fileHeader.bfSize = fileHeader.bfOffBits + header.biSizeImage;
    GdiFlush();
    std::string bytes;
    append(bytes, fileHeader);
    append(bytes, header);
    return bytes.append(static_cast<const char*>(pixels_), header.biSizeImage);
}

void reducePicture(const MemoryPicture& large, const MemoryPicture& small, int factor)
{
    GdiFlush();
    const RECT area = small.area();
    std::vector<int> sums(static_cast<size_t>(area.right) * 3);
    for (int y = 0; y < area.bottom; ++y) {
        std::ranges::fill(sums, 0);
        for (int down = 0; down < factor; ++down)
            addRow(sums, large.row(y * factor + down), factor);
        unsigned char* target = small.row(y);
        for (const int sum : sums)
            *target++ = static_cast<unsigned char>(sum / (factor * factor));
    }
}

} // namespace standin
