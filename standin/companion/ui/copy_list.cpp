#include "copy_list.h"

#include "peer/files.h"
#include "peer/text.h"

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
