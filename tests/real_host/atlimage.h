// See afxwin.h. Like the framework's, it needs OLE's interfaces, and min and max in the namespace
// Gdiplus.
#pragma once
#pragma clang system_header // its warnings are not ours, as with the real one
#include <afxwin.h>

namespace Gdiplus {
inline int middle(int low, int value, int high)
{
    return max(low, min(value, high));
}
} // namespace Gdiplus

namespace ATL {

class CImage {
public:
    enum DIBOrientation { DIBOR_DEFAULT, DIBOR_TOPDOWN, DIBOR_BOTTOMUP };
    CImage() noexcept;
    virtual ~CImage() noexcept;
    CImage(const CImage&) = delete;
    CImage& operator=(const CImage&) = delete;
    operator HBITMAP() const noexcept;
    void Attach(HBITMAP bitmap, DIBOrientation orientation = DIBOR_DEFAULT) noexcept;
    HBITMAP Detach() noexcept;
    void Destroy() noexcept;
    HRESULT Save(LPCWSTR fileName, REFGUID fileType = GUID_NULL) const noexcept;
    HRESULT Save(IStream* stream, REFGUID fileType) const noexcept;
};

} // namespace ATL
using namespace ATL;
