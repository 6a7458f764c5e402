#include "peer/notice.h"

#include "peer/numbers.h"

#include <algorithm>
#include <limits>
#include <optional>

namespace companion {
namespace {

struct Form {
    std::string_view start;
    NoticeKind kind;
    char behindId; // NUL: nothing follows the id
    bool hasId;
};

constexpr Form forms[] = {
    {"MCAMXMLIMPORTDATAID=", NoticeKind::setupSheet, ';', true},
    {"ZEMID=", NoticeKind::commit, '|', true},
    {"TOOL-", NoticeKind::toolData, '\0', true},
    {"IMPORTNCQUEUE|", NoticeKind::ncQueue, '\0', false},
};

bool isControl(char c)
{
    return static_cast<unsigned char>(c) < ' ';
}

// The number as the add-in prints it.
std::optional<std::int64_t> readId(std::string_view text, NoticeKind kind)
{
    return kind == NoticeKind::commit
               ? readPrintedNumber(text, 0, std::numeric_limits<std::uint32_t>::max())
               : readPrintedNumber(text, std::numeric_limits<std::int32_t>::min(),
                                   std::numeric_limits<std::int32_t>::max());
}

// `rest` is what stands behind the form's start.
Notice readForm(const Form& form, std::string_view rest)
{
    Notice notice{.kind = form.kind};
    if (form.hasId) {
        const size_t idEnd = form.behindId == '\0' ? rest.size() : rest.find(form.behindId);
        const auto id = idEnd == std::string_view::npos ? std::nullopt
                                                        : readId(rest.substr(0, idEnd), form.kind);
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

Notice readNotice(std::string_view bytes)
{
    if (!bytes.ends_with('\n'))
        return {};
    const std::string_view line = bytes.substr(0, bytes.size() - 1);
    if (std::any_of(line.begin(), line.end(), isControl))
        return {};
    for (const Form& form : forms)
        if (line.starts_with(form.start))
            return readForm(form, line.substr(form.start.size()));
    return {};
}

} // namespace companion
