// The planes of the open part.
#include "core/document.h"
#include "core/host_call.h"

using namespace standin;

MastercamPlanes Planes;

PlaneBase* MastercamPlanes::GetPlanePtrByID(int id)
{
    return question(
        "GetPlanePtrByID", static_cast<PlaneBase*>(nullptr),
        [&]() -> PlaneBase* {
            const std::shared_ptr<Part> part = openPart();
            const auto plane = part->planeById.find(id);
            return plane == part->planeById.end() ? nullptr : plane->second;
        });
}

CString standin::Plane::GetName() const
{
    return question(
        "GetName", CString(), [this] { return CString(name.c_str()); });
}
