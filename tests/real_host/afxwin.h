// Declarations of the framework's classes that the add-in uses, in the form of the framework's
// public documentation, so that script/msvc-abi compiles the code for a compiler with the
// framework. Nothing is implemented.
#pragma once
#pragma clang system_header // its warnings are not ours, as with the real one

#ifdef _INC_WINDOWS
#error the framework's headers must come before those of Windows
#endif
#if !defined(_AFXDLL) || !defined(_USRDLL) || !defined(_WINDLL)
#error the add-in is a DLL with the framework as a shared library
#endif
#include <windows.h>

#define AFXAPI __stdcall
#define AFX_CDECL __cdecl
#define PASCAL __stdcall

struct CRuntimeClass;

namespace ATL {

template <class Character = char>
class ChTraitsCRT {
};

template <class Character>
class CSimpleStringT {
public:
    CSimpleStringT(const CSimpleStringT&);
    ~CSimpleStringT() noexcept;
    operator const Character*() const noexcept;
    const Character* GetString() const noexcept;
    int GetLength() const noexcept;
    bool IsEmpty() const noexcept;
    Character GetAt(int index) const;
    Character operator[](int index) const;
    void Empty() noexcept;
    Character* GetBuffer(int length);
    void ReleaseBuffer(int length = -1);

protected:
    CSimpleStringT() noexcept;

private:
    Character* data;
};

template <class Character, class Traits>
class CStringT : public CSimpleStringT<Character> {
public:
    CStringT() noexcept;
    CStringT(const CStringT&);
    CStringT(CStringT&&) noexcept;
    CStringT(const Character* text);
    CStringT(const char* text);
    explicit CStringT(const unsigned char* text);
    CStringT(char character, int count = 1);
    CStringT(wchar_t character, int count = 1);
    CStringT(const Character* text, int length);
    CStringT(const char* text, int length);
    CStringT& operator=(const CStringT&);
    CStringT& operator=(const Character* text);
    CStringT& operator=(const char* text);
    void AFX_CDECL Format(const Character* format, ...);
    friend bool operator==(const CStringT&, const CStringT&) noexcept;
    friend bool operator==(const CStringT&, const Character*) noexcept;
    friend bool operator==(const Character*, const CStringT&) noexcept;
    friend CStringT operator+(const CStringT&, const CStringT&);
    friend CStringT operator+(const CStringT&, const Character*);
    friend CStringT operator+(const Character*, const CStringT&);
};

} // namespace ATL

template <class Character, class Base>
class StrTraitMFC_DLL : public Base {
};

using CStringW = ATL::CStringT<wchar_t, StrTraitMFC_DLL<wchar_t, ATL::ChTraitsCRT<wchar_t>>>;
using CString = CStringW;

// ---- Module state ------------------------------------------------------------------------------

class AFX_MODULE_STATE;
AFX_MODULE_STATE* AFXAPI AfxGetStaticModuleState();

struct AFX_MAINTAIN_STATE2 {
    explicit AFX_MAINTAIN_STATE2(AFX_MODULE_STATE* moduleState) noexcept;
    ~AFX_MAINTAIN_STATE2();
};
#define AFX_MANAGE_STATE(moduleState) AFX_MAINTAIN_STATE2 _ctlState(moduleState);

// ---- Objects -----------------------------------------------------------------------------------

class CObject {
public:
    virtual CRuntimeClass* GetRuntimeClass() const;
    virtual ~CObject() = 0;
    CObject(const CObject&) = delete;
    CObject& operator=(const CObject&) = delete;

protected:
    CObject() noexcept;
};

class CException : public CObject {
public:
    CException();
    explicit CException(BOOL isDeleted);
    ~CException() override;
    void Delete();
    virtual BOOL GetErrorMessage(LPWSTR text, UINT length, PUINT helpContext = nullptr) const;
    virtual BOOL GetErrorMessage(LPWSTR text, UINT length, PUINT helpContext = nullptr);
    virtual int ReportError(UINT type = MB_OK, UINT messageId = 0);
};

class CCmdTarget;
using AFX_PMSG = void (AFX_CDECL CCmdTarget::*)();
struct AFX_MSGMAP_ENTRY {
    UINT nMessage;
    UINT nCode;
    UINT nID;
    UINT nLastID;
    UINT_PTR nSig;
    AFX_PMSG pfn;
};
struct AFX_MSGMAP {
    const AFX_MSGMAP*(PASCAL* pfnGetBaseMap)();
    const AFX_MSGMAP_ENTRY* lpEntries;
};

#define DECLARE_MESSAGE_MAP()                                                                      \
protected:                                                                                         \
    static const AFX_MSGMAP* PASCAL GetThisMessageMap();                                           \
    virtual const AFX_MSGMAP* GetMessageMap() const;
#define BEGIN_MESSAGE_MAP(theClass, baseClass)                                                     \
    const AFX_MSGMAP* theClass::GetMessageMap() const                                              \
    {                                                                                              \
        return GetThisMessageMap();                                                                \
    }                                                                                              \
    const AFX_MSGMAP* PASCAL theClass::GetThisMessageMap()                                         \
    {                                                                                              \
        typedef baseClass TheBaseClass;                                                            \
        static const AFX_MSGMAP_ENTRY _messageEntries[] = {
#define END_MESSAGE_MAP()                                                                          \
    {                                                                                              \
        0, 0, 0, 0, 0, (AFX_PMSG)0                                                                 \
    }                                                                                              \
    }                                                                                              \
    ;                                                                                              \
    static const AFX_MSGMAP messageMap = {&TheBaseClass::GetThisMessageMap, &_messageEntries[0]};  \
    return &messageMap;                                                                            \
    }

class CCmdTarget : public CObject {
public:
    CCmdTarget();
    ~CCmdTarget() override;
    DECLARE_MESSAGE_MAP()
};

class CWnd : public CCmdTarget {
public:
    CWnd();
    ~CWnd() override;
    operator HWND() const;
    HWND GetSafeHwnd() const;
    HWND m_hWnd;
    DECLARE_MESSAGE_MAP()
};

class CFrameWnd : public CWnd {
public:
    CFrameWnd();
    ~CFrameWnd() override;
    DECLARE_MESSAGE_MAP()
};

// ---- Threads -----------------------------------------------------------------------------------

using AFX_THREADPROC = UINT(AFX_CDECL*)(LPVOID);

class CWinThread : public CCmdTarget {
public:
    CWinThread();
    ~CWinThread() override;
    operator HANDLE() const;
    virtual BOOL InitInstance();
    virtual int Run();
    virtual int ExitInstance();
    BOOL m_bAutoDelete;
    HANDLE m_hThread;
    DWORD m_nThreadID;
    DECLARE_MESSAGE_MAP()
};

class CWinApp : public CWinThread {
public:
    explicit CWinApp(LPCWSTR name = nullptr);
    ~CWinApp() override;
    BOOL InitInstance() override;
    int ExitInstance() override;
    int Run() override;
    HINSTANCE m_hInstance;
    LPCWSTR m_pszAppName;
    DECLARE_MESSAGE_MAP()
};

CWinApp* AFXAPI AfxGetApp();
CWnd* AFXAPI AfxGetMainWnd();
CWinThread* AFXAPI AfxBeginThread(AFX_THREADPROC procedure, LPVOID parameter,
                                  int priority = THREAD_PRIORITY_NORMAL, UINT stackSize = 0,
                                  DWORD creationFlags = 0,
                                  LPSECURITY_ATTRIBUTES security = nullptr);
CWinThread* AFXAPI AfxBeginThread(CRuntimeClass* threadClass, int priority = THREAD_PRIORITY_NORMAL,
                                  UINT stackSize = 0, DWORD creationFlags = 0,
                                  LPSECURITY_ATTRIBUTES security = nullptr);
