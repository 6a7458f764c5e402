// The framework's base classes: objects, message maps, exceptions and windows.
#pragma once

#include <windows.h>

class CObject {
public:
    CObject() = default;
    CObject(const CObject&) = delete;
    CObject& operator=(const CObject&) = delete;
    virtual ~CObject() = default;
};

// One row of a message map. A row whose `handler` is null ends the map.
struct AFX_MSGMAP_ENTRY {
    UINT message;
    void (*handler)();
};

// A class's message map: the accessor of its base class's map, then its own rows.
struct AFX_MSGMAP {
    const AFX_MSGMAP* (*base)();
    const AFX_MSGMAP_ENTRY* rows;
};

class CCmdTarget : public CObject {
protected:
    static const AFX_MSGMAP* GetThisMessageMap();
    virtual const AFX_MSGMAP* GetMessageMap() const;
};

#define DECLARE_MESSAGE_MAP()                                                                      \
protected:                                                                                         \
    static const AFX_MSGMAP* GetThisMessageMap();                                                  \
    const AFX_MSGMAP* GetMessageMap() const override;

#define BEGIN_MESSAGE_MAP(theClass, baseClass)                                                     \
    const AFX_MSGMAP* theClass::GetMessageMap() const                                              \
    {                                                                                              \
        return GetThisMessageMap();                                                                \
    }                                                                                              \
    const AFX_MSGMAP* theClass::GetThisMessageMap()                                                \
    {                                                                                              \
        using TheBase = baseClass;                                                                 \
        static const AFX_MSGMAP_ENTRY rows[] = {

#define END_MESSAGE_MAP()                                                                          \
    {                                                                                              \
        0, nullptr                                                                                 \
    }                                                                                              \
    }                                                                                              \
    ;                                                                                              \
    static const AFX_MSGMAP map = {&TheBase::GetThisMessageMap, rows};                             \
    return &map;                                                                                   \
    }

// The framework's exception, created on the heap, thrown and caught as a pointer.
class CException : public CObject {
public:
    // Writes the exception's text, cut to `bufferLength` characters including the null terminator,
    // and returns TRUE; returns FALSE and leaves an empty text when the exception has none.
    virtual BOOL GetErrorMessage(LPWSTR buffer, UINT bufferLength,
                                 PUINT helpContext = nullptr) const;

    // Deletes the exception. A catcher that does not rethrow it calls this once.
    void Delete();
};

// A window's handle.
class CWnd : public CCmdTarget {
public:
    // The handle, or null. Unlike the framework's, not callable on a null pointer.
    HWND GetSafeHwnd() const { return m_hWnd; }

    HWND m_hWnd = nullptr;
};

class CFrameWnd : public CWnd {};
