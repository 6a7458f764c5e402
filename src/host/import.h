// Marks a host operation as exported by the host library that is being compiled, or as imported
// from it. A host library defines HOST_EXPORTS_<LIBRARY> for its own build.
#pragma once

#ifdef HOST_EXPORTS_MASTERCAM
#define MASTERCAM_API __declspec(dllexport)
#else
#define MASTERCAM_API __declspec(dllimport)
#endif

#ifdef HOST_EXPORTS_MCCORE
#define MCCORE_API __declspec(dllexport)
#else
#define MCCORE_API __declspec(dllimport)
#endif

#ifdef HOST_EXPORTS_MCMILL
#define MCMILL_API __declspec(dllexport)
#else
#define MCMILL_API __declspec(dllimport)
#endif

#ifdef HOST_EXPORTS_MCMACHINEDEF
#define MCMACHINEDEF_API __declspec(dllexport)
#else
#define MCMACHINEDEF_API __declspec(dllimport)
#endif
