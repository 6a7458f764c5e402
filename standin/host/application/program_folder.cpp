#include "application/program_folder.h"

#include "application/own_module.h"

namespace standin {

std::wstring programFolder()
{
    wchar_t path[MAX_PATH] = L"";
    GetModuleFileNameW(ownModule(), path, MAX_PATH);
    const std::wstring whole = path;
    return whole.substr(0, whole.rfind(L'\\') + 1);
}

} // namespace standin
