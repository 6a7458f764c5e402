// The drawing keys of part files.
#pragma once

#include "core/part.h"

#include <string_view>

namespace standin {

// The key of this kind of shape.
std::string_view shapeKey(Shape::Kind kind);

// False for a key that is not a drawing key, or for the wrong number of values.
bool readShape(std::string_view key, std::string_view notation, Shape& shape);

// A polyline of a toolpath: x y x y …, two points or more.
bool readPath(std::string_view notation, std::vector<ViewPoint>& path);
bool writePath(std::string& out, const std::vector<ViewPoint>& path);

} // namespace standin
