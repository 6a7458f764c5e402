// The host's CATIA reader: an add-in of the host's own, loaded and told of events by whoever wants
// its files readable.
#include "control.h"

extern "C" __declspec(dllexport) int m_notify(int code)
{
    standin::trace(L"catread5x.m_notify(" + std::to_wstring(code) + L") -> 0");
    return 0;
}
