// The entry points that the host finds by name, exported undecorated by exports.def. The host calls
// them on its user-interface thread. None reports a failure, and no exception propagates except
// where noted.
#pragma once

#include <cstdint>

namespace torvapdm {

// The interface version that the add-in declares to a host of this version: the host's own for 11xx
// and 21xx, 2100 for any other.
constexpr int declaredVersion(int hostVersion)
{
    const int release = hostVersion / 100;
    return release == 11 || release == 21 ? hostVersion : 2100;
}

} // namespace torvapdm

extern "C" {

int m_version(int hostVersion);
int m_open(int unused);
int m_close(int unused);
int m_notify(int eventCode);

// Throws a `CException*` that the host raised for the setup sheet; the catcher deletes it.
int m_main(int unused);

int m_about(int unused);
int m_tools(int unused);

// Throws std::out_of_range for a check-out answer whose first word has fewer than three characters.
int m_load(int unused);

int m_save(int unused);
int importNCqueue();
int importNC();
int renameNC(); // returns 1

// Draws the side view of a cutting tool in width x height pixels and saves it below the
// installation folder as temp\toolimage-<image id>.bmp. Lengths are in the tool's unit, the angle
// in degrees. Returns 0, whether or not a picture was saved.
int DrawTool(std::uint32_t width, std::uint32_t height, std::uint32_t toolType, double diameter,
             double cornerRadius, double tipAngle, double fluteLength, double shoulderLength,
             double overallLength, double shankDiameter, std::int32_t imageId);

int TestFunction(); // asks the host for its active machine group; returns 1

} // extern "C"
