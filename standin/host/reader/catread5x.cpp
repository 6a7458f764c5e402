// The host's CATIA reader: another add-in of the host, loaded by the add-in, which sends it an
// event.
#include "control.h"

extern "C" __declspec(dllexport) int m_notify(int code)
{
    standin::trace(L"catread5x.m_notify(" + std::to_wstring(code) + L") -> 0");
    return 0;
}
