// The shipped add-in in a host whose chain of operations is damaged: the host's operation
// list_manager returns an address where there is no record, so that the add-in crashes.
#include "host/host.h"
#include "support/system_calls.h"

namespace {

void returnDamagedChain(long, const wchar_t*, short, operation_node** first)
{
    *first = std::bit_cast<operation_node*>(DWORD64{0x10});
}

} // namespace

extern "C" __declspec(dllexport) int importNCqueue()
{
    const HMODULE addIn = LoadLibraryW(L"torvapdm.dll");
    standin::redirectImports(addIn, &list_manager, &returnDamagedChain);
    return std::bit_cast<int (*)()>(GetProcAddress(addIn, "importNCqueue"))();
}
