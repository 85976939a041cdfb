#include "placement/build_list.h"
#include "placement/structure_colour.h"
#include "tests/placement/ai_text.h"
#include "tests/placement/slow_build_list.h"

#include <gtest/gtest.h>

namespace blockhouse {
namespace {

TEST(BuildList, ScansAsTheSlowWayDoesOnSoundAndBrokenFiles) {
    AiText texts(20261123);
    std::size_t found = 0, failed = 0;
    for (int round = 0; round < 3'000; ++round) {
        const std::string text = texts.withSlips(texts.sound(1 + texts.below(3), texts.below(5)), texts.below(12));
        const SlowScan slow(text);
        const std::vector<SideEntry> sides = sidesOf(text);
        ASSERT_EQ(shown(sides), slow.sides()) << "round " << round << "\n" << text;
        for (std::size_t side = 0; side < sides.size(); ++side) {
            const SearchRange range = searchRangeOf(sides, side, text);
            const std::ptrdiff_t next =
                side + 1 < sides.size() ? sides[side + 1].position.value : static_cast<std::ptrdiff_t>(text.size());
            const BuildListScan scan = structuresOf(text, range.startSearch, range.endSearch);
            ASSERT_EQ(shown(scan), slow.structures(sides[side].position.value, next)) << "round " << round << "\n"
                                                                                      << text;
            for (const ScannedStructure& structure : scan.structures)
                ASSERT_EQ(structure.colour, Getcolord(structure.entry.name));
            found += scan.structures.size();
            failed += scan.failures.size();
        }
    }
    EXPECT_GT(found, 3'000U);
    EXPECT_GT(failed, 1'000U);
}

TEST(BuildList, TellsSidesAndStructuresFromWhatOnlyLooksLikeThem) {
    struct Case {
        const char* text;
        const char* sides;
    };

    const Case sides[] = {
        {"SkirmishBuildList Abc\r\n", "1 Abc\n"},
        {"x\r\n\tSKIRMISHBUILDLIST Abc\r\n", "5 Abc\n"},
        {";skirmishbuildlist Abc\r\n; skirmishbuildlist Def\r\n", "27 Def\n"},
        {"SkirmishBuildList\tAbc\r\nSkirmishBuildList Abc \r\nSkirmishBuildList Abc ; x\r\n", ""},
        {"SkirmishBuildList Ab\r\nSkirmishBuildList A=bc\r\n", ""},
        {"SkirmishBuildList Abc\nSkirmishBuildList Def", "1 Abc\n"},
        {"SkirmishBuildList Abc\nSkirmishBuildList Def\r\n", "23 Def\n"},
        {"", ""},
    };
    for (const Case& each : sides)
        EXPECT_EQ(shown(sidesOf(each.text)), each.sides) << each.text;

    const std::string good = "  Location = X:10.5 Y:-2\r\nEnd\r\n";
    const std::pair<std::string, std::string> structures[] = {
        {"structure Barrack\r\n" + good, "22 Barrack 10.500000 -2.000000\n"},
        {"Structure Barra\r\n" + good, ""},
        {"Structure\tBarrack\r\n" + good, ""},
        {"Structure Endless\r\n" + good, "Could not find location for Endless:Skipping\n"},
        {"Structure Barrack\r\nFriend = 1\r\n" + good, "Could not find location for Barrack:Skipping\n"},
        {"Structure Barrack\r\n Location = X:5 Y:70.0\r\nEnd\r\n ", "13\n"},
        {"Structure Barrack\r\n Location = X:15 Y:70.0\r\nEnd\r\n", "21 Barrack 15.000000 70.000000\n"},
        {"Structure Barrack\r\n Location = X:1e2 Y:+.5 \r\nEnd\r\n", "21 Barrack 100.000000 0.500000\n"},
        {"Structure Barrack\r\n Location = X:1e99 Y:1\r\nEnd\r\n", "13\n"},
        {"Structure Barrack\r\n Location = X:inf Y:1\r\nEnd\r\n", "13\n"},
        {"Structure Barrack\r\n Location=X:15 Y:70.0\r\nEnd\r\n", "13\n"},
        {"Structure Barrack\r\n y:33\r\n Location = X:15 Y:70.0\r\nEnd\r\n", "28 Barrack 15.000000 33.000000\n"},
        {"Structure Barrack\r\n End Location = X:15 Y:70.0", "Could not find location for Barrack:Skipping\n"},
        {"Structure Barrack\r\n Location = X:15 Y:70.0 end", "5\n"},
    };
    for (const auto& [text, expected] : structures)
        EXPECT_EQ(shown(structuresOf(text, {1}, {static_cast<std::ptrdiff_t>(text.size())})), expected) << text;
}

TEST(BuildList, TakesLinearTimeHoweverManyStructuresFail) {
    // Quadratic work on this would take minutes.
    std::string text;
    for (int i = 0; i < 200'000; ++i)
        text += "Structure Barrack\r\n";
    EXPECT_EQ(structuresOf(text, {1}, {static_cast<std::ptrdiff_t>(text.size())}).failures.size(), 200'000U);
}

TEST(StructureColour, TheLastMatchingWordDecides) {
    struct Case {
        const char* name;
        Colour colour;
    };

    const Case cases[] = {
        {"FancyCommandCenter", 0},  {"POWERplant", 16711680}, {"PowerSupplyDepot", 65280},
        {"SmallArms", 65535},       {"StingerSite", 255},     {"PropagandaCenter", 16777215},
        {"ScudStorm", 33023},       {"BlackMarket", 65280},   {"Statue", 0},
        {"TunnelPalace", 16777215}, {"DemoTraps", 255},       {"", 0},
    };
    for (const Case& each : cases)
        EXPECT_EQ(Getcolord(each.name), each.colour) << each.name;
}

} // namespace
} // namespace blockhouse
