// See afxwin.h.
#pragma once
#pragma clang system_header // its warnings are not ours, as with the real one
#include <afxwin.h>

class CStringArray : public CObject {
public:
    CStringArray();
    ~CStringArray() override;
    INT_PTR GetSize() const;
    INT_PTR GetCount() const;
    BOOL IsEmpty() const;
    void RemoveAll();
    const CString& GetAt(INT_PTR index) const;
    const CString& operator[](INT_PTR index) const;
    CString& operator[](INT_PTR index);
    INT_PTR Add(LPCWSTR text);
    INT_PTR Add(const CString& text);
};
