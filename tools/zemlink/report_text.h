// A report as text for people.
#pragma once

#include "tools/zemlink/report.h"

#include <string>

namespace zemlink {

// A line for each value, `key: value`, each ended by a line feed; what belongs to a key stands
// below it, two blanks further in, and each entry of a list starts with a dash.
//
//   installation:
//     folder: C:\TORVA\ZEM
//   hosts:
//     - process: 4711
//       title: bracket.mcam
//   commits waiting: none
//
// A key `likeThis` is shown as `like this`; one that starts with a capital stays as it is.
// The texts are made visible.
std::string asText(const Report& report);

// With the hexadecimal digits of what would break the line, steer the terminal or turn the reading
// direction in its place, `<0D>`: it is what one looks for.
std::string visible(const std::string& text);

} // namespace zemlink
