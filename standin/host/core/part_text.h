// A part as the text of a part file. docs/part-file.md tells the format.
#pragma once

#include "core/part.h"

#include <memory>
#include <string>
#include <string_view>

namespace standin {

// Null when the text breaks a rule of the format.
std::shared_ptr<Part> readPartText(std::string_view text);

// False when the part holds a number that has no notation.
bool writePartText(const Part& part, std::string& text);

} // namespace standin
