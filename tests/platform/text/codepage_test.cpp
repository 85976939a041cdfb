#include "platform/text/codepage.h"
#include "platform/text/paths.h"
#include "platform/text/shown_entry.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace blockhouse {
namespace {

std::string everyByte() {
    std::string bytes;
    for (int code = 0; code < 256; ++code)
        bytes += static_cast<char>(code);
    return bytes;
}

TEST(CodePage, EveryByteIsOneCharacterAndBack) {
    std::set<char32_t> characters;
    for (const char byte : everyByte()) {
        characters.insert(codepage::codePointOf(byte));
        EXPECT_EQ(codepage::byteOf(codepage::codePointOf(byte)), byte);
    }
    EXPECT_EQ(characters.size(), 256U);

    const codepage::Encoded back = codepage::fromUtf8(codepage::toUtf8(everyByte()));
    EXPECT_EQ(back.bytes, everyByte());
    EXPECT_FALSE(back.lossy);
}

TEST(CodePage, ConvertsToUtf8) {
    EXPECT_EQ(codepage::toUtf8(""), "");
    EXPECT_EQ(codepage::toUtf8("plain ascii, longer than a word"), "plain ascii, longer than a word");
    // A letter, a sign of the special range, an unassigned byte.
    EXPECT_EQ(codepage::toUtf8("caf\xE9 5\x80 \x81."), "caf\xC3\xA9 5\xE2\x82\xAC \xC2\x81.");
}

TEST(CodePage, ReplacesWhatItLacks) {
    struct Case {
        std::string_view utf8;
        std::string_view bytes;
    };

    const Case cases[] = {
        {"a\xCE\xA9z", "a?z"},        // omega
        {"\xF0\x9F\x98\x80!", "?!"},  // beyond 16 bits
        {"\xC2\x80", "?"},            // the control character whose byte means the euro sign
        {"\x80z", "?z"},              // a continuation on its own
        {"\xC3", "?"},                // cut off at the end
        {"\xE2\x82z", "?z"},          // cut off by another character
        {"\xC1\x81", "??"},           // "A" in two bytes
        {"\xE0\x81\x81", "?"},        // "A" in three bytes
        {"\xFF\xFE", "??"},           // never part of UTF-8
        {"\xF5\x80\x80\x80", "????"}, // beyond the last character
        {"12345678\xC4\x80"
         "12345678",
         "12345678?12345678"},
    };
    for (const Case& c : cases) {
        const codepage::Encoded encoded = codepage::fromUtf8(c.utf8);
        EXPECT_EQ(encoded.bytes, c.bytes);
        EXPECT_TRUE(encoded.lossy) << c.bytes;
    }
}

TEST(CodePage, TellsAsciiApart) {
    EXPECT_TRUE(codepage::isAscii(""));
    const std::string ascii(21, 'x');
    EXPECT_TRUE(codepage::isAscii(ascii));
    for (std::size_t place = 0; place < ascii.size(); ++place) {
        std::string other = ascii;
        other[place] = '\x80';
        EXPECT_FALSE(codepage::isAscii(other)) << place;
    }
}

TEST(CodePage, LowersItsOwnLetters) {
    EXPECT_EQ(codepage::lowered("AZ[@`{ \xC0\xDE\xD7\xDF \x8A\x8C\x8E\x9F"),
              "az[@`{ \xE0\xFE\xD7\xDF \x9A\x9C\x9E\xFF");
    int changed = 0;
    for (const char byte : everyByte())
        changed += codepage::lowered(byte) != byte ? 1 : 0;
    EXPECT_EQ(changed, 26 + 30 + 4);
}

TEST(CodePage, ComparesIgnoringCase) {
    EXPECT_TRUE(codepage::equalIgnoringCase("\xC9T\xC9", "\xE9t\xE9"));
    EXPECT_FALSE(codepage::equalIgnoringCase("ab", "abc"));
    EXPECT_TRUE(codepage::lessIgnoringCase("a", "B"));
    EXPECT_FALSE(codepage::lessIgnoringCase("A", "a"));
    EXPECT_TRUE(codepage::lessIgnoringCase("_", "A")); // because "_" stands before "a", though after "A"
    EXPECT_TRUE(codepage::lessIgnoringCase("z", "\xE9"));
}

TEST(JumpEntries, ShowThatTheyEndTheirLine) {
    EXPECT_EQ(shownEntry("Arm\xE9"), "Arm\u00E9");
    EXPECT_EQ(shownEntry("Turret\r\n"), "Turret \u21B5");
    EXPECT_EQ(shownEntry("\r\n"), " \u21B5");
    EXPECT_EQ(shownEntry(""), "");
}

TEST(Paths, BothSeparatorsPartThem) {
    EXPECT_EQ(LastPathPart("C:\\data\\units.ini"), "units.ini");
    EXPECT_EQ(LastPathPart("data\\sub/units.ini"), "units.ini");
    EXPECT_EQ(LastPathPart("data/sub\\units.ini"), "units.ini");
    EXPECT_EQ(LastPathPart("units.ini"), "units.ini");
    EXPECT_EQ(LastPathPart("C:\\"), "");
    EXPECT_EQ(lastPathSeparator("a/b\\c"), 3U);
    EXPECT_EQ(lastPathSeparator("abc"), std::string_view::npos);
}

TEST(Paths, CaptionsBeginAtTheLastSeparator) {
    EXPECT_EQ(captionOf("C:\\data\\units.ini"), "\\units.ini");
    EXPECT_EQ(captionOf("data\\sub/units.ini"), "/units.ini");
    EXPECT_EQ(captionOf("data/sub\\units.ini"), "\\units.ini");
    EXPECT_EQ(captionOf("units.ini"), "units.ini");
    EXPECT_EQ(captionOf("data/"), "/");
}

TEST(Paths, JoinWithOneSeparator) {
    const std::string joined = joinPath("data", "units.ini");
    ASSERT_EQ(joined.size(), 14U);
    EXPECT_TRUE(isPathSeparator(joined[4]));
    EXPECT_EQ(joinPath("data/", "units.ini"), "data/units.ini");
    EXPECT_EQ(joinPath("data\\", "units.ini"), "data\\units.ini");
    EXPECT_EQ(joinPath("", "units.ini"), "units.ini");
}

} // namespace
} // namespace blockhouse
