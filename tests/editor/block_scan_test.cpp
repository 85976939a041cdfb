#include "editor/block_scan.h"
#include "tests/editor/random_text.h"
#include "tests/editor/slow_block_scan.h"

#include <gtest/gtest.h>

#include <ostream>

namespace blockhouse {

void PrintTo(const BlockEntry& entry, std::ostream* out) {
    *out << testing::PrintToString(entry.name) << ':' << entry.itemData;
}

namespace {

TEST(BlockPass, ListsTheHeadersOfOneKind) {
    const struct {
        int pass;
        std::string text;
        Entries expected;
    } cases[] = {
        {1, "", {}},
        {1, "Object Zebrak\r\nobject Alphax\r\nOBJECT Mottle\r\n", {{"Alphax", 1}, {"Mottle", 1}, {"Zebrak", 1}}},
        {1, "Object Tank\r\nObject Tanks\r\nObject Tankss\r\n", {{"Tankss", 1}}},
        {2, "Weapon GunLong\r\nWeapon GunLonge\r\n", {{"GunLonge", 2}}},
        {1,
         "  Object Foobar\r\n\tObject Barfoo\r\nMyObject Bazfoo\r\n=Object Quxfoo\r\n",
         {{"Barfoo", 1}, {"Foobar", 1}}},
        {2, "MyWeapon Longname\r\n", {{"Longname", 2}}},
        {3, "xSpecialPower Abcdef\r\n", {{"Abcdef", 3}}},
        {4, "xFXList Abcdef\r\n", {{"Abcdef", 4}}},
        {5, "SkirmishBuildList Abc\rxSkirmishBuildList Def\rSkirmishBuildList Gh\r", {{"Abc", 5}}},
        {1, "Object Foobar ; note\r\nObject Foobar=\r\nObject  Foobar\r\nObject = Foobar\r\n", {}},
        {1, "Object Object Foobar\r\n", {{"Foobar", 1}}},
        {1, "Object foobar\r\nObject FOOBAR\r\nObject Foobar\r\n", {{"foobar", 1}, {"FOOBAR", 0}, {"Foobar", 0}}},
        {1,
         "Object \xC9toile\r\nObject \xE9TOILE\r\nObject Zebrak\r\n",
         {{"Zebrak", 1}, {"\xC9toile", 1}, {"\xE9TOILE", 0}}},
        {1, "Object Foobar", {{"Foobar", 1}}},
        {1, "Object Foobar\nEnd\nObject Barfoo\n", {{"Barfoo", 1}, {"Foobar", 1}}},
        {1, "Object Foobar\nEnd\r\nObject Barfoo\nEnd", {{"Barfoo", 1}, {"Foobar\nEnd", 1}}},
        {0, "Object Foobar\r\n", {}},
        {6, "Object Foobar\r\n", {}},
    };

    for (const auto& [pass, text, expected] : cases) {
        EXPECT_EQ(blockPass(text, pass), expected) << text;
    }
}

TEST(BlockPass, FindinGivesTheFirstEqualEntry) {
    const Entries entries = blockPass("Object Zebrak\r\nObject foobar\r\nObject FOOBAR\r\nObject \xC9toile\r\n", 1);
    EXPECT_EQ(Findin(entries, "FooBar"), 0);
    EXPECT_EQ(Findin(entries, "ZEBRAK"), 2);
    EXPECT_EQ(Findin(entries, "\xE9toile"), 3);
    EXPECT_EQ(Findin(entries, "fooba"), -1);
    EXPECT_EQ(Findin(entries, "\xFFzz"), -1);
    EXPECT_EQ(Findin({}, "foobar"), -1);
}

TEST(BlockNameBefore, TakesTheLastHeaderOfTheKind) {
    const std::string text = "Object First0\r\n  Weapon = A\r\nEnd\r\nobject Second ; note\r\n";

    const struct {
        int kind;
        std::string text;
        std::ptrdiff_t startout;
        std::optional<std::string> expected;
    } cases[] = {
        {1, text, 100, "Second ; note"},
        {1, text, 10, std::nullopt}, // cut in the middle of "object ", and nothing precedes the first header
        {1, text, 11, "Second ; note"},
        {1, "\nObject Abc\r", 0, std::nullopt},
        {1, "\nObject Abc\r", -5, std::nullopt},
        {1, "\r\nObject First0\r\n\tObject Second\r\n", 30, "First0"},
        {2, "\nWeapon Abc\r", 1, "Abc"},
        {3, "\r\nSpecialPower Abc\r\nSuperWeapon Def\r\n", 20, "Def"},
        {4, "\nFXLIST Abc\ndef\r", 1, "Abc\ndef"},
        {5, "\r\rSkirmishBuildList Abc\r\nSkirmishBuildList Def", 60, "Def"},
        {0, text, 100, std::nullopt},
        {6, text, 100, std::nullopt},
        {1, text, PTRDIFF_MAX, "Second ; note"},
    };

    for (const auto& [kind, source, startout, expected] : cases) {
        EXPECT_EQ(blockNameBefore(source, kind, TextPosition{startout}), expected) << source << " at " << startout;
    }
}

TEST(BlockScan, AgreesWithTheSlowListing) {
    const std::vector<std::string> fragments = {"Object ",
                                                "object ",
                                                "\nWEAPON ",
                                                "SuperWeapon ",
                                                "SpecialPower ",
                                                "FXList ",
                                                "SkirmishBuildList ",
                                                "\r\nObject ",
                                                "Foobar",
                                                "fooBAR",
                                                "Zebrakk",
                                                "\xC9toile",
                                                "\xE9toile",
                                                "Longname",
                                                "ab",
                                                "=",
                                                " ",
                                                "\t",
                                                "\r\n",
                                                "\r\n",
                                                "\r",
                                                "\n",
                                                "Obj",
                                                "ect ",
                                                ";",
                                                std::string(1, '\0')};
    std::mt19937 random(3);
    for (int round = 0; round < 6000; ++round) {
        const std::string text = randomText(random, fragments, 40);
        const int kind = 1 + static_cast<int>(randomBelow(random, blockKinds));
        const Entries entries = blockPass(text, kind);
        ASSERT_EQ(entries, listedOneByOne(text, kind)) << testing::PrintToString(text);

        const std::string what = fragments[randomBelow(random, fragments.size())];
        ASSERT_EQ(Findin(entries, what), firstEqual(entries, what)) << testing::PrintToString(text);

        const std::size_t startout = 1 + randomBelow(random, text.size() + 40);
        ASSERT_EQ(blockNameBefore(text, kind, TextPosition{static_cast<std::ptrdiff_t>(startout)}),
                  nameLookedUpBackwards(text, kind, startout))
            << testing::PrintToString(text) << " at " << startout;
    }
}

} // namespace
} // namespace blockhouse
