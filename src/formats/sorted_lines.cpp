#include "formats/sorted_lines.h"

#include <algorithm>

namespace torvapdm {

void sortAndDropRepeats(std::vector<std::string>& lines)
{
    std::sort(lines.begin(), lines.end());
    lines.erase(std::unique(lines.begin(), lines.end()), lines.end());
}

} // namespace torvapdm
