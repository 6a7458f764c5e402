// As much of XML as a setup sheet needs: its tags and their attributes.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace companion {

struct Tag {
    std::wstring name;
    bool isStart = false, isEnd = false; // <a>, </a>; both: <a/>
    std::map<std::wstring, std::wstring> attributes{};
};

// The tags in their order; declarations, comments and the text between tags are left out. Empty
// when the text has no tag at its start or one that is not well formed. Whether start and end tags
// match is not looked at.
std::optional<std::vector<Tag>> readTags(std::wstring_view text);

} // namespace companion
