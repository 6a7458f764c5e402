// The documentation pages, next to the test programs.
#pragma once

#include "documents/dump.h"

#include <map>
#include <string>
#include <vector>

namespace documents {

// The text of a page such as "exchanges.md"; empty if there is no such page.
std::string pageText(const std::string& name);

// A block of a page that a test reads.
struct PageBlock {
    std::string page;
    FencedBlock block;
};

// The blocks with this word in all pages.
std::vector<PageBlock> blocksOfPages(std::string_view word);

// The valid dumps of all pages, by name.
std::map<std::string, Dump> dumpsOfPages();

} // namespace documents
