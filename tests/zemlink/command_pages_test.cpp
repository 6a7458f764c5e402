// The man page and the completions have the commands and options of the program.
#include "documents/pages.h"
#include "support/bytes.h"
#include "support/installation.h"
#include "tools/zemlink/arguments.h"
#include "tools/zemlink/reports/exchange_kind.h"
#include "tools/zemlink/reports/problems.h"
#include "tools/zemlink/verify/addin_rules.h"
#include "tools/zemlink/verify/companion_rules.h"
#include "tools/zemlink/verify/rule_report.h"

#include <gtest/gtest.h>

#include <set>

using namespace testing_support;
using namespace zemlink;

namespace {

std::string shipped(const std::wstring& path)
{
    const std::string text = readBytes(programFolder() + L"shipped\\" + path).value_or("");
    EXPECT_NE(text, "") << toUtf8(path);
    return text;
}

std::string joined(const std::vector<std::string>& words, const std::string& between)
{
    std::string text;
    for (const std::string& word : words)
        text += (text.empty() ? "" : between) + word;
    return text;
}

std::vector<std::string> names()
{
    std::vector<std::string> all;
    for (const CommandSyntax& command : commandTable())
        all.push_back(command.name);
    return all;
}

void expectContains(const std::string& text, const std::string& part)
{
    EXPECT_NE(text.find(part), std::string::npos) << "missing: " << part;
}

// As the man page writes it: each hyphen is escaped.
std::string asInManPage(const std::string& word)
{
    std::string text;
    for (const char c : word)
        text += c == '-' ? std::string("\\-") : std::string{c};
    return text;
}

} // namespace

TEST(BashCompletion, hasEveryCommandAndOption)
{
    const std::string text = shipped(L"completion\\zemlink.bash");
    expectContains(text, "commands=\"" + joined(names(), " ") + '"');
    expectContains(text, "kinds=\"" + joined(kindWords(), " ") + '"');
    for (const CommandSyntax& command : commandTable())
        expectContains(text, "\n    " + command.name + ") words=\"" + joined(command.options, " ") +
                                 "\" ;;\n");
}

TEST(PowerShellCompletion, hasEveryCommandAndOption)
{
    const std::string text = shipped(L"completion\\zemlink.ps1");
    std::string commands = "[ordered]@{\n";
    for (const CommandSyntax& command : commandTable()) {
        const std::string options = joined(command.options, "', '");
        commands += "        '" + command.name + "' = @(" +
                    (options.empty() ? "" : '\'' + options + '\'') + ")\n";
    }
    expectContains(text, commands + "    }\n");
    expectContains(text, "$kinds = '" + joined(kindWords(), "', '") + "'\n");
}

TEST(ManPage, hasEveryCommandAndOption)
{
    const std::string text = shipped(L"docs\\zemlink.1");
    size_t paragraphs = 0;
    for (const CommandSyntax& command : commandTable()) {
        const std::string bare = "\n.TP\n.B " + command.name + '\n';
        const std::string full = "\n.TP\n\\fB" + command.name + "\\fR ";
        const size_t start = text.find(command.name == "status" ? bare : full);
        ASSERT_NE(start, std::string::npos) << command.name;
        const std::string line = text.substr(start + 5, text.find('\n', start + 5) - start - 5);
        for (const std::string& option : command.options)
            EXPECT_NE(line.find("\\fB" + asInManPage(option) + "\\fR"), std::string::npos)
                << command.name << ' ' << option;
        ++paragraphs;
    }
    EXPECT_EQ(paragraphs, names().size());
}

TEST(ManPage, hasEveryExitCode)
{
    const std::string text = shipped(L"docs\\zemlink.1");
    const std::string page = documents::pageText("zemlink.md");
    for (int code = 0; code <= 6; ++code) {
        expectContains(text, "\n.TP\n.B " + std::to_string(code) + '\n');
        expectContains(page, "\n| " + std::to_string(code) + " | ");
    }
}

TEST(DoctorPage, listsEveryProblemInOrder)
{
    const std::string page = documents::pageText("zemlink.md");
    std::vector<std::string> listed;
    for (const documents::TableRow& row : documents::tableBelow(page, "## doctor"))
        listed.push_back(documents::codeIn(row.at(0)));
    EXPECT_EQ(listed, problemNames());
}

TEST(VerifyPages, listEveryRuleInOrder)
{
    for (const auto& [page, rules] : {std::pair{"your-own-companion.md", companionRules()},
                                      {"verify-addin.md", addInRules()}}) {
        std::vector<std::string> listed, checked;
        for (const documents::TableRow& row :
             documents::tableBelow(documents::pageText(page), "## The rules"))
            listed.push_back(documents::codeIn(row.at(0)));
        for (const Rule& rule : rules)
            checked.push_back(rule.id);
        EXPECT_EQ(listed, checked) << page;
    }
}

// In the examples of what verify prints.
TEST(VerifyPages, showRulesAsTheyArePrinted)
{
    std::set<std::string> printed;
    for (const Rules& rules : {companionRules(), addInRules()})
        for (const Rule& rule : rules)
            for (const Sight& sight : {Sight(), broken(""), notSeen("")}) {
                const std::string text = findingText({rule, sight});
                printed.insert(text.substr(0, text.find('\n')));
            }
    size_t shown = 0;
    for (const std::wstring& wide : linesOf(fromUtf8(documents::pageText("zemlink.md")))) {
        const std::string line = toUtf8(wide);
        if (!line.starts_with("kept ") && !line.starts_with("broken ") &&
            !line.starts_with("not seen "))
            continue;
        EXPECT_TRUE(printed.contains(line)) << line;
        ++shown;
    }
    EXPECT_GT(shown, 8u);
    expectContains(documents::pageText("zemlink.md"),
                   "\n" + std::to_string(addInRules().size()) + " rules: ");
    expectContains(documents::pageText("zemlink.md"),
                   "\n" + std::to_string(companionRules().size()) + " rules: ");
}
