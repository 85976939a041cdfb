#include "editor/block_scan.h"
#include "tests/editor/random_text.h"
#include "tests/editor/slow_block_scan.h"

#include <gtest/gtest.h>

#include <ostream>

namespace blockhouse {

void PrintTo(const BlockEntry& entry, std::ostream* out) {
    *out << testing::PrintToString(entry.name) << ':' << static_cast<int>(entry.kind);
}

namespace {

using enum HeaderKind;

TEST(BlockPass, ListsTheHeadersOfOneKind) {
    const struct {
        HeaderKind kind;
        std::string text;
        Entries expected;
    } cases[] = {
        {Object, "", {}},
        {Object,
         "Object Zebrak\r\nobject Alphax\r\nOBJECT Mottle\r\n",
         {{"Alphax", Object}, {"Mottle", Object}, {"Zebrak", Object}}},
        {Object, "Object Tank\r\nObject Tanks\r\nObject Tankss\r\n", {{"Tankss", Object}}},
        {Weapon, "Weapon GunLong\r\nWeapon GunLonge\r\n", {{"GunLonge", Weapon}}},
        {Object,
         "  Object Foobar\r\n\tObject Barfoo\r\nMyObject Bazfoo\r\n=Object Quxfoo\r\n",
         {{"Barfoo", Object}, {"Foobar", Object}}},
        {Weapon, "MyWeapon Longname\r\n", {{"Longname", Weapon}}},
        {SpecialPower, "xSpecialPower Abcdef\r\n", {{"Abcdef", SpecialPower}}},
        {FXList, "xFXList Abcdef\r\n", {{"Abcdef", FXList}}},
        {SkirmishBuildList,
         "SkirmishBuildList Abc\rxSkirmishBuildList Def\rSkirmishBuildList Gh\r",
         {{"Abc", SkirmishBuildList}}},
        {Object, "Object Foobar ; note\r\nObject Foobar=\r\nObject  Foobar\r\nObject = Foobar\r\n", {}},
        {Object, "Object Object Foobar\r\n", {{"Foobar", Object}}},
        {Object,
         "Object foobar\r\nObject FOOBAR\r\nObject Foobar\r\n",
         {{"foobar", Object}, {"FOOBAR", None}, {"Foobar", None}}},
        {Object,
         "Object \xC9toile\r\nObject \xE9TOILE\r\nObject Zebrak\r\n",
         {{"Zebrak", Object}, {"\xC9toile", Object}, {"\xE9TOILE", None}}},
        {Object, "Object Foobar", {{"Foobar", Object}}},
        {Object, "Object Foobar\nEnd\nObject Barfoo\n", {{"Barfoo", Object}, {"Foobar", Object}}},
        {Object, "Object Foobar\nEnd\r\nObject Barfoo\nEnd", {{"Barfoo", Object}, {"Foobar\nEnd", Object}}},
        {None, "Object Foobar\r\n", {}},
    };

    for (const auto& [kind, text, expected] : cases) {
        EXPECT_EQ(blockPass(text, kind), expected) << text;
    }
}

TEST(BlockPass, FindinGivesTheFirstEqualEntry) {
    const Entries entries =
        blockPass("Object Zebrak\r\nObject foobar\r\nObject FOOBAR\r\nObject \xC9toile\r\n", Object);
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
        HeaderKind kind;
        std::string text;
        std::ptrdiff_t startout;
        std::optional<std::string> expected;
    } cases[] = {
        {Object, text, 100, "Second ; note"},
        {Object, text, 10, std::nullopt}, // cut in the middle of "object ", and nothing precedes the first header
        {Object, text, 11, "Second ; note"},
        {Object, "\nObject Abc\r", 0, std::nullopt},
        {Object, "\nObject Abc\r", -5, std::nullopt},
        {Object, "\r\nObject First0\r\n\tObject Second\r\n", 30, "First0"},
        {Weapon, "\nWeapon Abc\r", 1, "Abc"},
        {SpecialPower, "\r\nSpecialPower Abc\r\nSuperWeapon Def\r\n", 20, "Def"},
        {FXList, "\nFXLIST Abc\ndef\r", 1, "Abc\ndef"},
        {SkirmishBuildList, "\r\rSkirmishBuildList Abc\r\nSkirmishBuildList Def", 60, "Def"},
        {None, text, 100, std::nullopt},
        {Object, text, PTRDIFF_MAX, "Second ; note"},
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
        const HeaderKind kind = headerKinds[randomBelow(random, headerKinds.size())];
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
