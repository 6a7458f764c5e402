// The kinds of exchange files and of the Companion's own files next to them, and how to recognise
// them.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zemlink {

enum class ExchangeKind {
    commandFile,
    machineSettings,
    checkoutAnswer,
    commitRecords,
    toolData,
    ncQueue,
    notices,
    picture,
    debugLog,
    companionLog,
    bookmark,
    workingCopies,
    settings
};

// `command`, `machine`, `answer`, `commits`, `tools`, `queue`, `notices`, `picture`, `log`,
// `events`, `bookmark`, `copies`, `settings`: the words of --as, in this order.
std::vector<std::string> kindWords();
std::string kindWord(ExchangeKind kind);
// Empty for any other word.
std::optional<ExchangeKind> kindOfWord(std::string_view word);

// By the file name, or else by a content that no other file has. Empty when neither matches.
// Settings are recognised only by their name: many files have a line with an equals sign.
std::optional<ExchangeKind> kindOf(std::wstring_view fileName, std::string_view bytes);

} // namespace zemlink
