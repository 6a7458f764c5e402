// The framework's string and string array, as far as the host's interface uses them.
#pragma once

#include "framework/objects.h"

#include <string>
#include <vector>

class CString {
public:
    CString() = default;
    CString(const wchar_t* text) : text_(text ? text : L"") {}
    CString(const wchar_t* text, int length) : text_(text, static_cast<size_t>(length)) {}

    int GetLength() const { return static_cast<int>(text_.size()); }
    bool IsEmpty() const { return text_.empty(); }
    const wchar_t* GetString() const { return text_.c_str(); }
    operator const wchar_t*() const { return text_.c_str(); }

private:
    std::wstring text_;
};

class CStringArray : public CObject {
public:
    INT_PTR GetSize() const { return static_cast<INT_PTR>(items_.size()); }
    const CString& GetAt(INT_PTR index) const { return items_.at(static_cast<size_t>(index)); }
    const CString& operator[](INT_PTR index) const { return GetAt(index); }
    INT_PTR Add(const wchar_t* text)
    {
        items_.emplace_back(text);
        return GetSize() - 1;
    }
    void RemoveAll() { items_.clear(); }

private:
    std::vector<CString> items_;
};
