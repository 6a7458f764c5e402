#include "core/posting.h"

#include "core/document.h"
#include "core/file_bytes.h"
#include "core/nc_program.h"
#include "core/text.h"

#include <filesystem>
#include <map>

namespace standin {

namespace {

using OperationsByName = std::map<std::wstring, std::vector<const PartOperation*>>;

OperationsByName operationsByProgram(const Part& part)
{
    OperationsByName programs;
    for (const PartOperation& held : part.operations) {
        const std::filesystem::path nci(fieldText(held.node.op.nciName));
        if (nci.has_stem())
            programs[nci.stem().wstring()].push_back(&held);
    }
    return programs;
}

} // namespace

std::vector<std::wstring> postNcPrograms()
{
    const std::shared_ptr<Part> part = openPart();
    const HostSettings settings = hostSettings();
    std::error_code ignored;
    std::filesystem::create_directories(std::filesystem::path(settings.ncPrefix).parent_path(),
                                        ignored);
    std::vector<std::wstring> written;
    int number = 0;
    for (const auto& [name, operations] : operationsByProgram(*part)) {
        const std::wstring path = settings.ncPrefix + name + settings.ncSuffix;
        if (writeFileBytes(path, ncProgram(name, ++number, operations, *part)))
            written.push_back(path);
    }
    return written;
}

} // namespace standin
