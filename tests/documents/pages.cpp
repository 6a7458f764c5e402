#include "documents/pages.h"

#include "support/bytes.h"
#include "support/installation.h"

#include <filesystem>

using namespace testing_support;

namespace documents {

namespace {

std::wstring pagesFolder()
{
    return programFolder() + L"shipped\\docs\\";
}

} // namespace

std::string pageText(const std::string& name)
{
    return readBytes(pagesFolder() + fromUtf8(name)).value_or("");
}

std::vector<PageBlock> blocksOfPages(std::string_view word)
{
    std::vector<PageBlock> blocks;
    for (const auto& entry : std::filesystem::directory_iterator(pagesFolder())) {
        const std::string page = toUtf8(entry.path().filename().wstring());
        for (const FencedBlock& block : fencedBlocks(pageText(page), word))
            blocks.push_back({page, block});
    }
    return blocks;
}

std::map<std::string, Dump> dumpsOfPages()
{
    std::map<std::string, Dump> dumps;
    for (const auto& [page, block] : blocksOfPages("dump"))
        if (const Dump dump = parseDump(block); dump.fault.empty())
            dumps.emplace(block.name, dump);
    return dumps;
}

} // namespace documents
