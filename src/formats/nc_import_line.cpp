#include "formats/nc_import_line.h"

namespace torvapdm {

// Deliberate: all four are tested for each line, in this order, and the last one found wins. One
// would expect the line's own order to count: "MCXIMPORTNC=n MCXIMPORTNC=Y" answers "n".
void applyNcImportLine(std::string_view line, std::string& answer)
{
    for (const char letter : {'y', 'Y', 'n', 'N'})
        if (line.find(std::string(ncImportKey) + '=' + letter) != std::string_view::npos)
            answer = letter == 'y' || letter == 'Y' ? "y" : "n";
}

} // namespace torvapdm
