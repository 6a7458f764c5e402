// What each call of the add-in leaves open on purpose, according to docs/life.md.
#pragma once

#include <cstddef>
#include <map>
#include <string>

namespace testing_support {

struct LeftOpen {
    size_t handles = 0; // of the process, for each call
    size_t bytes = 0;   // of memory, for each call
};

// The rows of the table by their first column, without its quotes. Ends the test program with a
// message when the page has no such rows.
std::map<std::string, LeftOpen> lifeTable();

} // namespace testing_support
