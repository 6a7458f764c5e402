#include "support/life_table.h"

#include "support/bytes.h"
#include "support/installation.h"

#include <cstdio>
#include <cstdlib>
#include <regex>
#include <sstream>

namespace testing_support {

std::map<std::string, LeftOpen> lifeTable()
{
    static const std::regex row(R"(\| `?([^|`]+)`? \| (\d+) \| (\d+) \|.*)");
    std::istringstream page(readBytes(programFolder() + L"shipped\\docs\\life.md").value_or(""));
    std::map<std::string, LeftOpen> table;
    std::smatch found;
    for (std::string line; std::getline(page, line);)
        if (std::regex_match(line, found, row))
            table[found[1]] = {std::stoul(found[2]), std::stoul(found[3])};
    if (table.empty()) {
        std::fprintf(stderr, "docs/life.md has no table of calls\n");
        std::exit(99);
    }
    return table;
}

} // namespace testing_support
