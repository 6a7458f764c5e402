#include "outgoing/plane_name.h"

#include "host/record_adapter.h"
#include "host/host_exceptions.h"

namespace torvapdm {

operation* firstMainOperation()
{
    operation* first = nullptr;
    callHost([&] {
        TpMemLookupList& list = TpMainOpMgr.GetMainOpList();
        const int size = list.GetSize();
        for (int index = 0; index < size && !first; ++index)
            first = list[index];
    });
    return first;
}

std::optional<std::wstring> getPlaneName(const operation& op, int selector)
{
    std::wstring name;
    const int id = host::planeIdOf(op, selector);
    if (id == -1)
        return name;
    bool isKnown = true;
    callHost([&] {
        PlaneBase* const plane = Planes.GetPlanePtrByID(id);
        isKnown = plane != nullptr;
        if (plane)
            name = plane->GetName().GetString();
    });
    return isKnown ? std::optional(name) : std::nullopt;
}

} // namespace torvapdm
