// The handles and memory that each call of the add-in leaves open on purpose, from docs/life.md.
#pragma once

#include "documents/pages.h"

#include <map>
#include <string>

namespace testing_support {

// The answer's file is named after the second in which it was asked for.
inline constexpr unsigned long long betweenCheckoutsMs = 1100;

struct LeftOpen {
    size_t handles = 0; // per call
    size_t bytes = 0;   // of memory, per call
};

// The rows of the page's table by their first column, without quotes.
inline std::map<std::string, LeftOpen> lifeTable()
{
    std::map<std::string, LeftOpen> table;
    for (const documents::TableRow& row :
         documents::tableBelow(documents::pageText("life.md"), "# What stays open")) {
        const std::string call = documents::codeIn(row.at(0));
        table[call.empty() ? row[0] : call] = {std::stoul(row.at(1)), std::stoul(row.at(2))};
    }
    return table;
}

} // namespace testing_support
