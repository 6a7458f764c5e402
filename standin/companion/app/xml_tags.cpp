#include "standin/companion/app/xml_tags.h"

#include <utility>

namespace companion {
namespace {

constexpr std::wstring_view whiteSpace = L" \t\r\n";

constexpr std::pair<std::wstring_view, wchar_t> entities[] = {
    {L"&amp;", L'&'}, {L"&lt;", L'<'}, {L"&gt;", L'>'}, {L"&quot;", L'"'}, {L"&apos;", L'\''},
};

// Removes the text before the delimiter, and the delimiter. Empty without a delimiter.
std::optional<std::wstring_view> takeUntil(std::wstring_view& text, std::wstring_view delimiter)
{
    const size_t end = text.find(delimiter);
    if (end == std::wstring_view::npos)
        return std::nullopt;
    const std::wstring_view taken = text.substr(0, end);
    text.remove_prefix(end + delimiter.size());
    return taken;
}

void skipWhiteSpace(std::wstring_view& text)
{
    const size_t end = text.find_first_not_of(whiteSpace);
    text.remove_prefix(end == std::wstring_view::npos ? text.size() : end);
}

// Only the five named references are replaced.
std::wstring resolved(std::wstring_view text)
{
    std::wstring result;
    while (!text.empty()) {
        wchar_t character = text.front();
        size_t length = 1;
        for (const auto& [entity, meaning] : entities) {
            if (text.starts_with(entity)) {
                character = meaning;
                length = entity.size();
            }
        }
        result += character;
        text.remove_prefix(length);
    }
    return result;
}

// Removes a name, up to white space or one of the characters that end it.
std::wstring takeName(std::wstring_view& text)
{
    std::wstring name(text.substr(0, text.find_first_of(L" \t\r\n=/>\"")));
    text.remove_prefix(name.size());
    return name;
}

// `name="value"`, with the white space after it.
bool takeAttribute(std::wstring_view& text, Tag& tag)
{
    const std::wstring name = takeName(text);
    if (name.empty() || !text.starts_with(L"=\""))
        return false;
    text.remove_prefix(2);
    const auto value = takeUntil(text, L"\"");
    if (!value)
        return false;
    tag.attributes[name] = resolved(*value);
    skipWhiteSpace(text);
    return true;
}

// Removes a tag whose `<` is already removed.
std::optional<Tag> takeTag(std::wstring_view& text)
{
    Tag tag;
    tag.isEnd = text.starts_with(L'/');
    tag.isStart = !tag.isEnd;
    text.remove_prefix(tag.isEnd ? 1 : 0);
    tag.name = takeName(text);
    skipWhiteSpace(text);
    while (!text.empty() && text.front() != L'/' && text.front() != L'>')
        if (!takeAttribute(text, tag))
            return std::nullopt;
    if (text.starts_with(L'/')) {
        tag.isEnd = true;
        text.remove_prefix(1);
    }
    if (tag.name.empty() || !text.starts_with(L'>'))
        return std::nullopt;
    text.remove_prefix(1);
    return tag;
}

} // namespace

std::optional<std::vector<Tag>> readTags(std::wstring_view text)
{
    std::vector<Tag> tags;
    skipWhiteSpace(text);
    if (!text.starts_with(L'<'))
        return std::nullopt;
    while (takeUntil(text, L"<")) {
        if (text.starts_with(L'?') || text.starts_with(L"!--")) {
            if (!takeUntil(text, text.starts_with(L'?') ? L"?>" : L"-->"))
                return std::nullopt;
            continue;
        }
        const auto tag = takeTag(text);
        if (!tag)
            return std::nullopt;
        tags.push_back(*tag);
    }
    return tags;
}

} // namespace companion
