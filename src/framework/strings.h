// The framework's string and string array, as far as the host's interface uses them.
#pragma once

#include "framework/objects.h"

#include <string>
#include <vector>

// The names and parameters of these templates are the framework's, because they are part of the
// decorated name of every host operation with a string.
namespace ATL {

template <class Character>
class ChTraitsCRT {
};

template <class Character, class Traits>
class CStringT {
public:
    CStringT() = default;
    CStringT(const Character* text) : text_(text ? text : emptyText) {}
    CStringT(const Character* text, int length) : text_(text, static_cast<size_t>(length)) {}

    int GetLength() const { return static_cast<int>(text_.size()); }
    bool IsEmpty() const { return text_.empty(); }
    const Character* GetString() const { return text_.c_str(); }
    operator const Character*() const { return text_.c_str(); }

private:
    static constexpr Character emptyText[1] = {};

    std::basic_string<Character> text_;
};

} // namespace ATL

template <class Character, class Base>
class StrTraitMFC_DLL : public Base {
};

using CString = ATL::CStringT<wchar_t, StrTraitMFC_DLL<wchar_t, ATL::ChTraitsCRT<wchar_t>>>;

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
