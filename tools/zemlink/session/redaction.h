// Replaces what a recording tells about people and parts.
#pragma once

#include "tools/zemlink/reports/report.h"
#include "tools/zemlink/session/recording.h"

#include <map>
#include <string>
#include <string_view>

namespace zemlink {

// Each name with what stands for it: `user-1`, `folder-2`, `name-3` or `text-4`. The same name, in
// any case, always gets the same one. Names are found in paths, one for each folder and one for a
// file without its extension, and in texts, each as a whole. The names that are the product's own
// stay.
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
    void addName(std::wstring_view name, const wchar_t* what);

    struct LongestFirst {
        bool operator()(const std::wstring& a, const std::wstring& b) const
        {
            return a.size() != b.size() ? a.size() > b.size() : a < b;
        }
    };
    std::map<std::wstring, std::wstring, LongestFirst>
        names_{}; // in lower case, with what stands for it
};

void addNamesOf(Pseudonyms& names, const Recording& recording);

// The recording with pseudonyms for users, folders, parts and all other texts that people wrote.
// Pictures become plain grey. Bytes that are not what such an exchange should be become question
// marks, as many as there were, since nothing is known about what is in them. `names`: at least the
// recording's own.
Recording redacted(Recording recording, const Pseudonyms& names);
Recording redacted(Recording recording);

} // namespace zemlink
