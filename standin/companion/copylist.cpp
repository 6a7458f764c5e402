#include "copylist.h"

#include "files.h"
#include "text.h"

namespace companion {

CopyList readCopyList(const std::wstring& path)
{
    return {path, readWorkingCopies(fromUtf8(readFile(path).value_or("")))};
}

void keepCopy(CopyList& list, const WorkingCopy& copy)
{
    noteWorkingCopy(list.copies, copy);
    replaceFile(list.path, toUtf8(workingCopiesText(list.copies)));
}

} // namespace companion
