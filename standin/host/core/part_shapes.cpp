#include "core/part_shapes.h"

#include "core/part_values.h"

#include <iterator>

namespace standin {

namespace {

struct ShapeForm {
    std::string_view key;
    size_t valueCount;
};

// In the order of Shape::Kind.
constexpr ShapeForm shapeForms[] = {
    {"stock", 4}, {"line", 4}, {"arc", 5}, {"circle", 3}, {"point", 2},
};

} // namespace

std::string_view shapeKey(Shape::Kind kind)
{
    return shapeForms[static_cast<size_t>(kind)].key;
}

bool readShape(std::string_view key, std::string_view notation, Shape& shape)
{
    for (size_t place = 0; place < std::size(shapeForms); ++place) {
        if (shapeForms[place].key != key)
            continue;
        shape.kind = static_cast<Shape::Kind>(place);
        return readDecimals(notation, shape.values) &&
               shape.values.size() == shapeForms[place].valueCount;
    }
    return false;
}

bool readPath(std::string_view notation, std::vector<ViewPoint>& path)
{
    std::vector<double> values;
    if (!readDecimals(notation, values) || values.size() < 4 || values.size() % 2 != 0)
        return false;
    path.clear();
    for (size_t place = 0; place < values.size(); place += 2)
        path.push_back({values[place], values[place + 1]});
    return true;
}

bool writePath(std::string& out, const std::vector<ViewPoint>& path)
{
    std::vector<double> values;
    for (const ViewPoint& point : path) {
        values.push_back(point.x);
        values.push_back(point.y);
    }
    return writeDecimals(out, values);
}

} // namespace standin
