// The entry points that the host finds by name. The host calls all of them on its user-interface
// thread; none reports failure, and no exception leaves them but where it is said. Exported
// undecorated by exports.def.
#pragma once

#include <cstdint>

extern "C" {

int m_version(int hostVersion);
int m_open(int unused);
int m_close(int unused);
int m_notify(int eventCode);

// Throws a `CException*` that the host raised in the setup sheet; it belongs to whoever catches it.
int m_main(int unused);

int m_about(int unused);
int m_tools(int unused);

// Throws std::out_of_range for an answer whose first word has fewer than three characters.
int m_load(int unused);

int m_save(int unused);
int importNCqueue();
int importNC();
int renameNC(); // gives 1

// Draws the side view of a cutting tool into a picture of width x height pixels and saves it under
// the installation folder as temp\toolimage-<image id>.bmp. Lengths are in the tool's own unit, the
// angle in degrees. Gives 0, with a picture and without.
int DrawTool(std::uint32_t width, std::uint32_t height, std::uint32_t toolType, double diameter,
             double cornerRadius, double tipAngle, double fluteLength, double shoulderLength,
             double overallLength, double shankDiameter, std::int32_t imageId);

int TestFunction(); // asks the host for its active machine group and gives 1

} // extern "C"
