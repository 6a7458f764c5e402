// The operation types of parts.
#pragma once

#include "host/import.h"

#include <string>

namespace standin {

enum OperationType { facing = 1, contour, pocket, drilling, tapping, boring, chamfer };

// "Contour", or "Type 9" for a type without a name.
MCCORE_API std::wstring operationTypeName(int type);

} // namespace standin
