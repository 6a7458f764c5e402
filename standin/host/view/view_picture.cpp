#include "view/view_picture.h"

#include "view/memory_picture.h"
#include "view/view.h"
#include "core/file_bytes.h"

namespace standin {

bool writeViewPicture(HWND window, const std::wstring& path)
{
    RECT area{};
    GetClientRect(window, &area);
    const MemoryPicture picture(area.right, area.bottom);
    if (!picture.context())
        return false;
    drawView(picture.context(), picture.area());
    return writeFileBytes(path, picture.bitmapFile());
}

} // namespace standin
