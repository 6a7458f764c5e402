// The tables of a page that a test reads.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace documents {

// A cell for each column, as it stands on the page but for escaped bars.
using TableRow = std::vector<std::string>;

// The rows of the first table below this heading, without its head.
std::vector<TableRow> tableBelow(std::string_view page, std::string_view heading);

// The first text between backticks; empty without one.
std::string codeIn(std::string_view text);

// True when the text is the pattern with something in the place of each `<…>`.
bool isLike(std::string_view text, std::string_view pattern);

} // namespace documents
