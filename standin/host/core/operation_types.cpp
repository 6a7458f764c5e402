#include "core/operation_types.h"

#include <iterator>

namespace standin {

std::wstring operationTypeName(int type)
{
    static constexpr const wchar_t* names[] = {L"Facing",  L"Contour", L"Pocket", L"Drilling",
                                               L"Tapping", L"Boring",  L"Chamfer"};
    const auto place = static_cast<size_t>(type - facing);
    return type >= facing && place < std::size(names) ? names[place]
                                                      : L"Type " + std::to_wstring(type);
}

} // namespace standin
