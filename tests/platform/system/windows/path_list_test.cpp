#include "platform/system/path_list.h"

#include <gtest/gtest.h>

#include <string>
#include <windows.h>

namespace blockhouse {
namespace {

constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";

TEST(PathList, IsInTheSystemsEncodingWhereThatHasAllItsCharacters) {
    EXPECT_EQ(fileBytesOf("C:\\Data\r\n"), "C:\\Data\r\n");
    EXPECT_EQ(pathListFrom("C:\\Data\r\n"), "C:\\Data\r\n");
    EXPECT_EQ(fileBytesOf(""), "");
    if (::GetACP() != 1252)
        GTEST_SKIP() << "the rest is about another code page";
    EXPECT_EQ(fileBytesOf("C:\\D\xC3\xA4\r\n"), "C:\\D\xE4\r\n");
    EXPECT_EQ(pathListFrom("C:\\D\xE4\r\n"), "C:\\D\xC3\xA4\r\n");
}

TEST(PathList, ComesBackWhateverItHolds) {
    // Of one code page, of another, of none, a private character, one beyond 16 bits.
    for (const char* list : {"C:\\D\xC3\xA4\r\n", "C:\\\xD0\x96\r\n", "C:\\\xE2\x98\x83\r\n", "C:\\\xEE\x80\x80",
                             "C:\\\xF0\x9F\x9A\x9C\r\n", "C:\\D\xC3\xA4 \xD0\x96\r\n"})
        EXPECT_EQ(pathListFrom(fileBytesOf(list)), list) << list;
    EXPECT_TRUE(fileBytesOf("C:\\\xF0\x9F\x9A\x9C").starts_with(utf8Mark)) << "no code page has it";
    EXPECT_EQ(pathListFrom(std::string(utf8Mark) + "C:\\\xD0\x96"), "C:\\\xD0\x96");
}

} // namespace
} // namespace blockhouse
