#include "framework/threads.h"

#include <memory>

namespace {

CWinApp* theApplication = nullptr;

} // namespace

CWinThread::~CWinThread()
{
    if (m_hThread)
        CloseHandle(m_hThread);
}

DWORD WINAPI CWinThread::run(LPVOID self)
{
    const std::unique_ptr<CWinThread> thread(static_cast<CWinThread*>(self));
    return thread->procedure_(thread->parameter_);
}

CWinThread* AfxBeginThread(AFX_THREADPROC procedure, LPVOID parameter, int priority, UINT stackSize,
                           DWORD creationFlags, LPSECURITY_ATTRIBUTES security)
{
    auto thread = std::make_unique<CWinThread>(procedure, parameter);
    // Suspended until the fields are set: a short procedure could otherwise end, and delete the
    // object, before that.
    thread->m_hThread = CreateThread(security, stackSize, CWinThread::run, thread.get(),
                                     creationFlags | CREATE_SUSPENDED, &thread->m_nThreadID);
    if (!thread->m_hThread)
        return nullptr;
    CWinThread* const started = thread.release();
    const HANDLE handle = started->m_hThread;
    SetThreadPriority(handle, priority);
    if (!(creationFlags & CREATE_SUSPENDED))
        ResumeThread(handle);
    return started;
}

CWinApp::CWinApp(LPCWSTR applicationName) : m_pszAppName(applicationName)
{
    theApplication = this;
}

CWinApp::~CWinApp()
{
    if (theApplication == this)
        theApplication = nullptr;
}

CWinApp* AfxGetApp()
{
    return theApplication;
}
