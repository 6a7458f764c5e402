// Threads and the application object.
#pragma once

#include "framework/objects.h"

using AFX_THREADPROC = UINT(__cdecl*)(LPVOID);

class CWinThread : public CCmdTarget {
public:
    CWinThread() = default;
    CWinThread(AFX_THREADPROC procedure, LPVOID parameter)
        : procedure_(procedure), parameter_(parameter)
    {
    }
    ~CWinThread() override;

    // Called for the application object when its module is loaded; FALSE makes the load fail. Not
    // called for a worker thread.
    virtual BOOL InitInstance() { return FALSE; }
    virtual int ExitInstance() { return 0; }

    HANDLE m_hThread = nullptr;
    DWORD m_nThreadID = 0;

private:
    friend CWinThread* AfxBeginThread(AFX_THREADPROC, LPVOID, int, UINT, DWORD,
                                      LPSECURITY_ATTRIBUTES);
    static DWORD WINAPI run(LPVOID self);

    AFX_THREADPROC procedure_ = nullptr;
    LPVOID parameter_ = nullptr;
};

// A module's application object. The constructor registers it; a module must have only one.
class CWinApp : public CWinThread {
public:
    explicit CWinApp(LPCWSTR applicationName = nullptr);
    ~CWinApp() override;
    BOOL InitInstance() override { return TRUE; }

    LPCWSTR m_pszAppName;
};

// The module's application object, or null before it is constructed.
CWinApp* AfxGetApp();

// Starts a worker thread. Returns its thread object, which deletes itself when the thread ends, or
// null on failure. With CREATE_SUSPENDED the caller resumes the thread.
CWinThread* AfxBeginThread(AFX_THREADPROC procedure, LPVOID parameter,
                           int priority = THREAD_PRIORITY_NORMAL, UINT stackSize = 0,
                           DWORD creationFlags = 0, LPSECURITY_ATTRIBUTES security = nullptr);

// At the start of a function that the host calls: selects the framework's state of this module
// until the function returns. Without the framework's shared library there is only one state.
#define AFX_MANAGE_STATE(moduleState) static_cast<void>(0)
