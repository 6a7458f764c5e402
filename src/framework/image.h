// The framework's image class, as far as the add-in saves pictures with it.
#pragma once

#include <windows.h>

class CImage {
public:
    CImage() = default;
    ~CImage();
    CImage(const CImage&) = delete;
    CImage& operator=(const CImage&) = delete;

    // Takes the bitmap over, which no device context may hold. The image must have none yet.
    void Attach(HBITMAP bitmap);

    // Deletes the bitmap.
    void Destroy();

    // Writes the bitmap in the format that the path's extension names; ".bmp" is the one known
    // here, in either case: 32 bits a pixel, as a bitmap that is compatible with a screen has them,
    // rows from the bottom up. E_FAIL for another extension or without a bitmap, else the system's
    // error. An earlier file under the path is replaced once the new one is complete, and left as
    // it was on failure.
    HRESULT Save(LPCWSTR path) const;

private:
    HBITMAP bitmap_ = nullptr;
};
