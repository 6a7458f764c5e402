#include "peer/notice.h"

#include "peer/numbers.h"
#include "peer/wire_constants.h"

#include <algorithm>
#include <limits>
#include <optional>

namespace peer {
namespace {

struct NoticeForm {
    std::string_view start;
    NoticeKind kind;
    char afterId; // NUL: nothing follows the id
    bool hasId;
};

constexpr NoticeForm forms[] = {
    {setupSheetNotice, NoticeKind::setupSheet, ';', true},
    {commitNotice, NoticeKind::commit, '|', true},
    {toolDataNotice, NoticeKind::toolData, '\0', true},
    {ncQueueNotice, NoticeKind::ncQueue, '\0', false},
};

// The number as the add-in prints it.
std::optional<std::int64_t> parseId(std::string_view text, NoticeKind kind)
{
    return kind == NoticeKind::commit
               ? parsePrintedNumber(text, 0, std::numeric_limits<std::uint32_t>::max())
               : parsePrintedNumber(text, std::numeric_limits<std::int32_t>::min(),
                                    std::numeric_limits<std::int32_t>::max());
}

// `rest` is the text after the form's start.
Notice parseNoticeForm(const NoticeForm& form, std::string_view rest)
{
    Notice notice{.kind = form.kind};
    if (form.hasId) {
        const size_t idEnd = form.afterId == '\0' ? rest.size() : rest.find(form.afterId);
        const auto id = idEnd == std::string_view::npos ? std::nullopt
                                                        : parseId(rest.substr(0, idEnd), form.kind);
        if (!id)
            return {};
        notice.id = *id;
        rest.remove_prefix(std::min(idEnd + 1, rest.size()));
    }
    notice.path = rest;
    const bool takesPath = form.kind != NoticeKind::toolData;
    return takesPath == !notice.path.empty() ? notice : Notice{};
}

} // namespace

Notice parseNotice(std::string_view bytes)
{
    if (!bytes.ends_with('\n') || bytes.size() > longestNoticeBytes)
        return {};
    const std::string_view line = bytes.substr(0, bytes.size() - 1);
    if (std::ranges::any_of(line, [](unsigned char c) { return c < ' '; }))
        return {};
    for (const NoticeForm& form : forms)
        if (line.starts_with(form.start))
            return parseNoticeForm(form, line.substr(form.start.size()));
    return {};
}

std::string formatNotice(const Notice& notice)
{
    const auto form = std::ranges::find(forms, notice.kind, &NoticeForm::kind);
    if (form == std::end(forms))
        return {};
    std::string line(form->start);
    if (form->hasId)
        line += std::to_string(notice.id);
    if (form->afterId != '\0')
        line += form->afterId;
    return line + notice.path + '\n';
}

} // namespace peer
