// The data of an open part.
#pragma once

#include "host/mccore.h"
#include "host/records.h"

#include <deque>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace standin {

// A point of the view's plane, millimetres.
struct ViewPoint {
    double x = 0;
    double y = 0;
};

// One thing the view draws. Stock and line: x y x y; arc: x y radius from to (degrees,
// counter-clockwise); circle: x y radius; point: x y.
struct Shape {
    enum class Kind { stock, line, arc, circle, point };
    Kind kind = Kind::line;
    std::vector<double> values;
};

// A plane, owned by its part.
struct Plane final : PlaneBase {
    std::int32_t id = 0;
    std::wstring name;

    CString GetName() const override; // a host operation, in mccore_operations.cpp
};

// An operation's record and its additional data. The node is linked to the part's next operation.
struct PartOperation {
    operation_node node{};
    double cycleSeconds = 0;
    std::vector<std::vector<ViewPoint>> paths;
};

// Records never move while the part exists, because the add-in holds pointers to them.
struct Part {
    std::wstring title;
    std::wstring material;
    std::wstring remark;
    std::vector<Shape> shapes;
    std::deque<Plane> planes;
    std::deque<TpGroup> groups;
    std::deque<tp_tool> tools;
    std::deque<PartOperation> operations;
    std::vector<PartOperation*> operationList; // the host's list; null where it has no operation

    // Filled by `linkPart`; the first record with an id wins.
    std::unordered_map<int, Plane*> planeById;
    std::unordered_map<int, TpGroup*> groupById;
    std::unordered_map<int, tp_tool*> toolByNumber;
    std::unordered_map<int, PartOperation*> operationById;
    std::unordered_map<const operation*, PartOperation*> operationByRecord;
};

// An operation with default values: planes -1, everything else zero.
operation defaultOperation();

// Links the operation chain and fills the look-up tables. Call it after all records are added.
void linkPart(Part& part);

// True if the part has no data.
MCCORE_API bool isEmpty(const Part& part);

} // namespace standin
