// The roots of the framework's class tree and its message maps.
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
