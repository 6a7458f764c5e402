// The table of faults as the documentation has it.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace testing_support {

// What becomes of a scenario when every call of one kind fails.
struct FaultRow {
    std::string scenario;
    std::string fault; // "WriteFile", "DoFileOpen fails", "DoFileOpen raises"
    std::string user;
    std::string disk;
    std::string afterwards; // of the same once more, without a fault
};

// The rows of the page: below a heading "## scenario", lines "| `fault` | user | disk | afterwards
// |".
std::vector<FaultRow> readFaultTable(const std::wstring& page);

// As a line of the page, without its line end.
std::string asLine(const FaultRow& row);

// For GoogleTest.
void PrintTo(const FaultRow& row, std::ostream* stream);

} // namespace testing_support
