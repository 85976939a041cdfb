#include "editor/comment_pass.h"
#include "tests/editor/random_text.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace blockhouse {
namespace {

std::string rewrittenLine(const std::string& line, char delimiter, const std::string& index) {
    const std::size_t at = line.find(delimiter);
    if (at == std::string::npos || line.substr(0, 9) == "\\par \\'af") {
        return line;
    }
    const std::string before = line.substr(0, at);
    if (std::count(before.begin(), before.end(), '"') % 2 == 1) {
        return line;
    }
    return before + "\\highlight" + index + " " + line.substr(at) + "\\highlight0 ";
}

std::string splitRewrittenAndJoined(std::string source, char delimiter, const std::string& index) {
    std::string result;
    for (std::size_t end = source.find("\r\n"); end != std::string::npos; end = source.find("\r\n")) {
        result += rewrittenLine(source.substr(0, end), delimiter, index) + "\r\n";
        source.erase(0, end + 2);
    }
    return result + rewrittenLine(source, delimiter, index);
}

TEST(CommentPass, LineByLine) {
    const struct {
        const char* source;
        const char* expected;
    } cases[] = {
        {"", ""},
        {"no delimiter\r\n", "no delimiter\r\n"},
        {"\\par a ; b ; c\r\n}", "\\par a \\highlight7 ; b ; c\\highlight0 \r\n}"},
        {"{\\colortbl ;\\red1\\green2\\blue3;}\r\n",
         "{\\colortbl \\highlight7 ;\\red1\\green2\\blue3;}\\highlight0 \r\n"},
        {"\\par \"x;y\" ; note\r\n", "\\par \"x;y\" ; note\r\n"},
        {"\\par \"x\" ; \"\r\n", "\\par \"x\" \\highlight7 ; \"\\highlight0 \r\n"},
        {"\"\r\n;", "\"\r\n\\highlight7 ;\\highlight0 "},
        {"\\par \\'af ; kept\r\n\\par \\'ae ; not",
         "\\par \\'af ; kept\r\n\\par \\'ae \\highlight7 ; not\\highlight0 "},
        {";lone\rreturn\nfeed\r\n", "\\highlight7 ;lone\rreturn\nfeed\\highlight0 \r\n"},
    };

    for (const auto& [source, expected] : cases) {
        EXPECT_EQ(highlightFromDelimiter(source, ';', 7), expected);
    }
}

TEST(CommentPass, SameAsSplittingAndJoining) {
    const std::vector<std::string> fragments = {
        ";", ";", "\"", "\r\n", "\r\n", "\r", "\n", "a", "\\par ", "\r\n\\par \\'af", "\\'af", "{\\f0;}", " "};
    std::mt19937 random(11);
    for (int round = 0; round < 4000; ++round) {
        const std::string source = randomText(random, fragments, 25);
        const char delimiter = ";;;\"a\r\n "[randomBelow(random, 8)];
        ASSERT_EQ(highlightFromDelimiter(source, delimiter, 12), splitRewrittenAndJoined(source, delimiter, "12"))
            << testing::PrintToString(source) << " at " << testing::PrintToString(delimiter);
    }
}

} // namespace
} // namespace blockhouse
