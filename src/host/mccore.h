// MCCore.dll: the open document, its name, its planes and its setup sheets.
//
// Any of these may raise the framework's exception.
#pragma once

#include "framework/framework.h"
#include "host/import.h"

#include <cstdio>

// The document's name, null-terminated unless it fills all 260 characters.
extern MCCORE_API wchar_t geo_filename[260];

// The document's database: mark it as unchanged; whether it has changed. The first may be
// called from any thread.
MCCORE_API void set_db_unchanged();
MCCORE_API bool has_db_changed();

// Closes a file of the host; a null name, 0 and a null stream close the document. May be called
// from any thread.
MCCORE_API void m_fclose(const wchar_t* name, int mode, FILE* stream);

// Saves the document under `path`; 1 when it was written. `parent` may be null.
MCCORE_API int SaveFile(const wchar_t* path, CWnd* parent, bool prompt);

// Runs the setup sheet for the selected operations and adds the paths of the files it produced.
MCCORE_API bool RunSetupSheetOnSelectedOpsWithoutUI(CStringArray& files);

// A plane of the document, owned by the host.
class MCCORE_API PlaneBase {
public:
    virtual CString GetName() const = 0;

protected:
    ~PlaneBase() = default;
};

class MCCORE_API MastercamPlanes {
public:
    // The plane with this id, or null.
    PlaneBase* GetPlanePtrByID(int id);
};

extern MCCORE_API MastercamPlanes Planes;
