// Words that replace the names of users, folders and parts, the same everywhere.
#pragma once

#include "tools/zemlink/reports/report.h"

#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace zemlink {

// Each name has one pseudonym: `user-1`, `folder-2`, `name-3` or `text-4`. Names are found in
// paths, one for each folder and one for a file without its extension, and in texts, each as a
// whole. Upper and lower case are the same. The names that are the product's own stay, and so do
// numbers, which are ids everywhere else.
class Pseudonyms {
public:
    void addPath(std::wstring_view path);
    void addText(std::wstring_view text);
    // The names in all texts of a report, except under keys whose values are this program's words.
    void addReport(const Report& report);

    // Replaces the names wherever they stand as a whole, the longest first.
    std::wstring replaceIn(std::wstring_view text) const;
    Report replaceInReport(const Report& report) const;

private:
    using Names = std::map<std::wstring, std::wstring, std::less<>>;

    void addName(std::wstring_view name, const wchar_t* what);
    Names::const_iterator findLongest(std::wstring_view lowerText, size_t at) const;

    Names names_{}; // in lower case
    size_t count_ = 0;
};

} // namespace zemlink
