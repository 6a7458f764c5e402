// A picture in memory to draw into, 24 bits per pixel. Rows are numbered from the top; in memory
// and in the file the bottom row comes first.
#pragma once

#include <string>
#include <windows.h>

namespace standin {

class MemoryPicture {
public:
    // A size below one pixel counts as one pixel.
    MemoryPicture(int width, int height);
    ~MemoryPicture();
    MemoryPicture(const MemoryPicture&) = delete;
    MemoryPicture& operator=(const MemoryPicture&) = delete;

    // Null if there is not enough memory.
    HDC context() const { return context_; }
    RECT area() const { return {0, 0, width_, height_}; }

    // The pixels of a row, 0 the topmost, three bytes each: blue, green, red.
    unsigned char* row(int fromTop) const;

    // The picture as the bytes of a bitmap file.
    std::string bitmapFile() const;

private:
    int width_;
    int height_;
    HDC context_ = nullptr;
    HBITMAP bitmap_ = nullptr;
    HGDIOBJ formerBitmap_ = nullptr;
    void* pixels_ = nullptr;
};

// Reduces the large picture, which is `factor` times as wide and as high, to the small one. Each
// pixel is the mean of those it replaces.
void reducePicture(const MemoryPicture& large, const MemoryPicture& small, int factor);

} // namespace standin
