#include "formats/sorted_lines.h"

#include <gtest/gtest.h>

using torvapdm::sortAndRemoveDuplicates;
using Texts = std::vector<std::string>;

TEST(SortedLines, compareUnsignedBytes)
{
    Texts texts = {"b", "\xC4", "a|b", "a", "", "B", "a|"};
    sortAndRemoveDuplicates(texts);
    EXPECT_EQ(texts, (Texts{"", "B", "a", "a|", "a|b", "b", "\xC4"}));
}

TEST(SortedLines, holdEachTextOnce)
{
    Texts texts = {"b", "a", "b", "a", "b", "ab"};
    sortAndRemoveDuplicates(texts);
    EXPECT_EQ(texts, (Texts{"a", "ab", "b"}));
    texts.clear();
    sortAndRemoveDuplicates(texts);
    EXPECT_EQ(texts, Texts{});
}
