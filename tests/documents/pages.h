// The documentation's pages, next to the test programs.
#pragma once

#include "documents/dump.h"

#include <map>
#include <string>
#include <vector>

namespace documents {

// A page's text: "exchanges.md". Empty when there is no such page.
std::string pageText(const std::string& name);

// A block of a page that a test reads.
struct PageBlock {
    std::string page;
    FencedBlock block;
};

// The blocks with this word, of all pages.
std::vector<PageBlock> blocksOfPages(std::string_view word);

// The sound dumps of all pages, by their names.
std::map<std::string, Dump> dumpsOfPages();

} // namespace documents
