#include "platform/text/rtf.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace blockhouse::rtf {
namespace {

constexpr Colour navy = rgb(0, 0, 128);
constexpr Colour paleYellow = rgb(255, 255, 200);

// The runs as read() gives them: none empty, neighbours differ, the whole text covered and no more.
std::vector<ColourRun> normalised(std::string_view text, const std::vector<ColourRun>& runs) {
    std::vector<ColourRun> each;
    for (const ColourRun& run : runs)
        each.insert(each.end(), run.length, {1, run.text, run.background});
    each.resize(text.size(), {1, defaultTextColour, defaultBackground});
    std::vector<ColourRun> result;
    for (const ColourRun& one : each) {
        if (!result.empty() && result.back().text == one.text && result.back().background == one.background)
            ++result.back().length;
        else
            result.push_back(one);
    }
    return result;
}

void expectThereAndBack(const std::string& text, const std::vector<ColourRun>& runs) {
    const std::string source = write(text, runs);
    const ColouredText back = read(source);
    ASSERT_EQ(back.text, text) << source;
    ASSERT_EQ(back.runs, normalised(text, runs)) << source;
}

// A pass that gives every line's part from its first ";" on a background, as an editor's macro would do it.
std::string withTailsHighlighted(const std::string& source, int colour) {
    std::string result;
    std::size_t start = 0;
    for (;;) {
        const std::size_t end = std::min(source.find("\r\n", start), source.size());
        std::string line = source.substr(start, end - start);
        if (const std::size_t tail = line.find(';'); tail != std::string::npos)
            line = line.substr(0, tail) + "\\highlight" + std::to_string(colour) + " " + line.substr(tail) +
                   "\\highlight0 ";
        result += line;
        if (end == source.size())
            return result;
        result += "\r\n";
        start = end + 2;
    }
}

TEST(RtfWrite, KeepsTheLayoutThatLinewisePassesRelyOn) {
    const std::string text = "Unit; x\r\n\xAFmark\r\n\tEnd{1}\\\r\nlf\ncr\r";
    EXPECT_EQ(write(text, {{4, navy, defaultBackground}, {3, defaultTextColour, paleYellow}}),
              "{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0\\fmodern Courier New;}}\r\n"
              "{\\colortbl ;\\red0\\green0\\blue128;\\red255\\green255\\blue200;}\r\n"
              "\\viewkind4\\uc1\\pard\\f0\\fs21 \\cf1 Unit\\cf0\\highlight2 ; x\\highlight0 \r\n"
              "\\par \\'afmark\r\n"
              "\\par \\tab End\\{1\\}\\\\\r\n"
              "\\par lf{\\*\\bhlf}\r\n"
              "\\par cr{\\*\\bhcr}\r\n"
              "\\par \r\n"
              "}");
}

TEST(RtfWrite, NamesEachColourOnceAndTheDefaultsNever) {
    const std::string source = write("abcdef", {{1, navy, paleYellow},
                                                {0, rgb(1, 2, 3), rgb(4, 5, 6)},
                                                {1, paleYellow, navy},
                                                {1, defaultTextColour, defaultBackground},
                                                {99, defaultBackground, defaultTextColour}});
    EXPECT_NE(source.find("{\\colortbl ;\\red0\\green0\\blue128;\\red255\\green255\\blue200;"
                          "\\red255\\green255\\blue255;\\red0\\green0\\blue0;}"),
              std::string::npos)
        << source;
    EXPECT_NE(source.find("\\cf1\\highlight2 a\\cf2\\highlight1 b\\cf0\\highlight0 c\\cf3\\highlight4 def\r\n}"),
              std::string::npos)
        << source;
}

TEST(RtfWrite, PutsThePaletteFirst) {
    const std::vector<Colour> palette = {rgb(1, 2, 3), navy};
    const std::vector<ColourRun> runs = {{1, paleYellow, navy}};
    const std::string source = write("a", runs, palette);
    EXPECT_NE(source.find("{\\colortbl ;\\red1\\green2\\blue3;\\red0\\green0\\blue128;\\red255\\green255\\blue200;}"),
              std::string::npos)
        << source;
    EXPECT_EQ(read(source), (ColouredText{"a", runs}));
    EXPECT_TRUE(write("a", {{1, navy, defaultBackground}}, palette).starts_with(header(palette)));
}

TEST(RtfRoundTrip, KeepsEveryKindOfLineEnd) {
    for (const std::string text : {"", "\r\n", "\n", "\r", "\r\n\r\n", "\n\n", "\r\r", "\r\r\n", "\n\r", "\n\r\n",
                                   "\r\n\r", "a\r\nb", "a\rb\nc\r\nd\r\n", "end\n", "end\r"}) {
        expectThereAndBack(text, {});
        // A colour that ends between a CR and its LF.
        for (std::uint32_t length = 0; length <= text.size(); ++length)
            expectThereAndBack(text, {{length, navy, paleYellow}});
    }
}

TEST(RtfRoundTrip, KeepsRandomBytesInRandomColours) {
    std::mt19937 random(19950817);
    const std::string common = "ab ;\"'{}\\\r\n\r\n\t0-*";
    const Colour colours[] = {defaultTextColour, defaultBackground, navy, paleYellow, rgb(255, 0, 1)};
    for (int round = 0; round < 4000; ++round) {
        std::string text;
        for (std::size_t left = random() % 120; left > 0; --left)
            text += random() % 4 == 0 ? static_cast<char>(random() % 256) : common[random() % common.size()];
        std::vector<ColourRun> runs;
        for (std::size_t left = random() % 12; left > 0; --left)
            runs.push_back({static_cast<std::uint32_t>(random() % 20),
                            random() % 8 == 0 ? static_cast<Colour>(random() & 0xFFFFFF) : colours[random() % 5],
                            colours[random() % 5]});
        expectThereAndBack(text, runs);
        if (HasFatalFailure())
            return;
    }
}

TEST(RtfRoundTrip, SurvivesARewriteOfEveryLine) {
    const std::string text = "; whole line\r\nName = x ; why\r\nno tail\nlone ; lf\nlone ; cr\r\r\nEnd ; last";
    std::string source = write(text, {{5, navy, paleYellow}, {7, defaultTextColour, paleYellow}});
    for (int pass = 0; pass < 2; ++pass) { // the second time over its own marks
        source = withTailsHighlighted(source, 2);
        const ColouredText back = read(source);
        EXPECT_EQ(back.text, text);
        std::size_t place = 0;
        for (const ColourRun& run : back.runs) {
            for (std::uint32_t i = 0; i < run.length; ++i, ++place) {
                const std::size_t lineEnd = std::min(text.find_first_of("\r\n", place), text.size());
                const std::size_t lineStart = text.find_last_of("\r\n", place) + 1;
                const bool inTail =
                    place < lineEnd && text.substr(lineStart, place + 1 - lineStart).find(';') < lineEnd;
                ASSERT_EQ(run.background, inTail ? paleYellow : defaultBackground) << place << source;
                ASSERT_EQ(run.text, place < 5 ? navy : defaultTextColour) << place;
            }
        }
    }
}

TEST(RtfRead, TakesWhatOtherProgramsWrite) {
    struct Case {
        std::string source;
        std::string text;
    };

    const Case cases[] = {
        {"{\\rtf1 a\\par\r\nb\\line c\\\nd}", "a\r\nb\r\nc\r\nd"},
        {"{\\rtf1{\\fonttbl{\\f0 Arial;}}{\\stylesheet{\\s0 Normal;}}{\\info{\\title T}}x}", "x"},
        {"{\\rtf1{\\*\\generator Some Program;}{\\*\\unknown{\\nested a}b}x}", "x"},
        {"{\\rtf1\\uc1 \\u8364?5 \\u233\\'e9 \\u-3913?}", "\x80"
                                                          "5 \xE9 ?"},
        {"{\\rtf1\\uc2 \\u8364ab5{\\uc0\\u233 e}\\u233 \\'e9ee}", "\x80"
                                                                  "5\xE9"
                                                                  "e\xE9"
                                                                  "e"},
        {"{\\rtf1\\u8364\\par x}", "\x80\r\nx"},
        {"{\\rtf1\\uc1 \\u-10179?\\u-8704?!}", "?!"},
        {"{\\rtf1 a\\bin4 {{}}b\\bin99 c}", "ab"},
        {"{\\rtf1 a\\~b\\_c\\-d\\tab e\\emdash f\\'E9}", "a\xA0"
                                                         "b-cd\te\x97"
                                                         "f\xE9"},
        {"{\\rtf1 a}b}c", "a"},
        {"plain", "plain"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(read(c.source).text, c.text) << c.source;
}

TEST(RtfRead, GroupsGiveColoursBack) {
    const ColouredText read = rtf::read("{\\rtf1{\\colortbl;\\red255\\green0\\blue0;\\red0\\green0\\blue128;}"
                                        "\\cf2 a{\\cf1\\highlight2 b{c}\\plain d}e\\cf0 f\\cf9\\highlight9 g}");
    EXPECT_EQ(read.text, "abcdefg");
    const Colour red = rgb(255, 0, 0);
    EXPECT_EQ(read.runs, (std::vector<ColourRun>{{1, navy, defaultBackground},
                                                 {2, red, navy},
                                                 {1, defaultTextColour, defaultBackground},
                                                 {1, navy, defaultBackground},
                                                 {2, defaultTextColour, defaultBackground}}));
}

TEST(RtfRead, MakesWhatItCanOfMalformedSource) {
    struct Case {
        std::string source;
        std::string text;
    };

    const std::string deep(100'000, '{');
    const Case cases[] = {
        {"", ""},
        {"{", ""},
        {"}", ""},
        {"{\\rtf1 a", "a"},
        {"{\\rtf1 a\\", "a"},
        {"{\\rtf1 a\\'4", "a4"},
        {"{\\rtf1 a\\'zzb", "azzb"},
        {"{\\rtf1 a\\*", "a"},
        {"{\\rtf1 a\\u", std::string("a\0", 2)},
        {"{\\rtf1 a\\cf99999999999999999999 b\\bin-5 c}", "abc"},
        {"{\\rtf1{\\colortbl;\\red0", ""},
        {deep + "x" + std::string(100'000, '}') + "y", "x"},
        {"{\\rtf1 " + std::string(100'000, '\\') + "}", std::string(50'000, '\\')},
    };
    for (const Case& c : cases)
        EXPECT_EQ(read(c.source).text, c.text) << c.source.substr(0, 80);
}

} // namespace
} // namespace blockhouse::rtf
