// The tags and attributes of XML, as far as a setup sheet needs them.
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

// The tags in order; declarations, comments and the text between tags are left out. Empty when the
// text does not start with a tag or one is not well-formed. Matching of start and end tags is not
// checked.
std::optional<std::vector<Tag>> readTags(std::wstring_view text);

} // namespace companion
