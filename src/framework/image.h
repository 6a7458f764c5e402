// The framework's image class, as far as the add-in saves pictures with it.
#pragma once

#include <windows.h>

class CImage {
public:
    CImage() = default;
    ~CImage();
    CImage(const CImage&) = delete;
    CImage& operator=(const CImage&) = delete;

    // Takes ownership of the bitmap, which must not be selected into a device context. The image
    // must not have a bitmap yet.
    void Attach(HBITMAP bitmap);

    // Deletes the bitmap.
    void Destroy();

    // Writes the bitmap in the format of the path's extension. Only ".bmp", in either case, is
    // supported: 32 bits per pixel, rows from the bottom up. E_FAIL for another extension or
    // without a bitmap, else the system's error. An existing file is overwritten in place, with one
    // write of the whole content: it keeps its content when it cannot be opened, and holds only the
    // beginning of the new one when the write fails.
    HRESULT Save(LPCWSTR path) const;

private:
    HBITMAP bitmap_ = nullptr;
};
