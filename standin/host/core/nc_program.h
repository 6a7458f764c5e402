// NC programs: an operation's toolpath as G-code. Millimetres, absolute, in the classic locale.
#pragma once

#include "core/part.h"

#include <span>
#include <string>

namespace standin {

// The program of these operations, with CR LF line ends: `%`, an O number, for each operation its
// tool change, spindle, feed and path (drilling and tapping as canned cycles), M30, `%`.
std::string ncProgram(const std::wstring& name, int programNumber,
                      std::span<const PartOperation* const> operations, const Part& part);

} // namespace standin
