#include "placement/build_list.h"
#include "placement/structure_colour.h"
#include "platform/codepage.h"
#include "tests/placement/ai_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <optional>

namespace blockhouse {
namespace {

// The scans once more: positions counted from 1, 0 for nothing found, and one plain search after the other.
class SlowScan {
public:
    explicit SlowScan(std::string text)
        : text_(std::move(text)), lowered_(codepage::lowered(text_)),
          lineEnd_(text_.find('\r') == std::string::npos ? "\n" : "\r") {}

    [[nodiscard]] long find(const std::string& what, long from) const {
        if (from > static_cast<long>(text_.size()))
            return 0;
        return static_cast<long>(lowered_.find(what, static_cast<std::size_t>(from - 1)) + 1);
    }

    // Nothing for a stretch of negative length.
    [[nodiscard]] std::optional<std::string> between(long from, long to) const {
        if (to < from)
            return std::nullopt;
        return text_.substr(std::min(static_cast<std::size_t>(from - 1), text_.size()),
                            static_cast<std::size_t>(to - from));
    }

    // "position name" of each keyword that counts, a line each, handed to `use`.
    template <typename Use>
    void eachNamed(const std::string& keyword, std::size_t shortest, long from, long to, Use use) const {
        for (long p = from; (p = find(keyword, p)) != 0 && p <= to; ++p) {
            const long start = p + static_cast<long>(keyword.size());
            const auto name = between(start, find(lineEnd_, p));
            const bool isWord =
                p == 1 || std::string(" \t\r\n").find(text_[static_cast<std::size_t>(p - 2)]) != std::string::npos;
            if (isWord && name && name->find('=') == std::string::npos && name->find(' ') == std::string::npos &&
                name->size() >= shortest)
                use(p, *name);
        }
    }

    [[nodiscard]] std::string sides() const {
        std::string result;
        eachNamed("skirmishbuildlist ", 3, 1, static_cast<long>(text_.size()),
                  [&](long p, const std::string& name) { result += std::to_string(p) + " " + name + "\n"; });
        return result;
    }

    [[nodiscard]] std::string structures(long from, long to) const {
        std::string found, failures;
        eachNamed("structure ", 6, from, to, [&](long p, const std::string& name) {
            const long e = find("end", p);
            const long lx = find("location = x:", p);
            const long ly = find("y:", p);
            if (lx > e || ly > e) {
                failures += "Could not find location for " + name + ":Skipping\n";
                return;
            }
            const auto x = between(lx + 13, find(" ", lx + 15));
            const auto y = between(ly + 2, find(lineEnd_, ly + 2));
            if (!x || !y)
                failures += "5\n";
            else if (!isNumber(*x) || !isNumber(*y))
                failures += "13\n";
            else
                found += std::to_string(lx) + " " + name + " " + std::to_string(std::strtof(x->c_str(), nullptr)) +
                         " " + std::to_string(std::strtof(y->c_str(), nullptr)) + "\n";
        });
        return found + failures;
    }

private:
    static bool isNumber(const std::string& text) {
        const std::size_t first = text.find_first_not_of(" \t");
        if (first == std::string::npos || text.find_first_not_of(" \t0123456789.+-eE") != std::string::npos)
            return false;
        char* end = nullptr;
        const float number = std::strtof(text.c_str(), &end);
        return end != text.c_str() && std::isfinite(number) &&
               text.find_first_not_of(" \t", static_cast<std::size_t>(end - text.c_str())) == std::string::npos;
    }

    std::string text_;
    std::string lowered_;
    std::string lineEnd_;
};

std::string shown(const std::vector<SideEntry>& sides) {
    std::string text;
    for (const SideEntry& side : sides)
        text += std::to_string(side.position.value) + " " + side.name + "\n";
    return text;
}

std::string shown(const BuildListScan& scan) {
    std::string text;
    for (const ScannedStructure& structure : scan.structures) {
        text += std::to_string(structure.entry.position.value) + " " + structure.entry.name + " " +
                std::to_string(structure.location.x.value) + " " + std::to_string(structure.location.y.value) + "\n";
        EXPECT_EQ(structure.colour, Getcolord(structure.entry.name));
    }
    for (const ScanFailure& failure : scan.failures)
        text += failure.message() + "\n";
    return text;
}

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
            const long next = side + 1 < sides.size() ? sides[side + 1].position.value : static_cast<long>(text.size());
            const BuildListScan scan = structuresOf(text, range.startSearch, range.endSearch);
            ASSERT_EQ(shown(scan), slow.structures(sides[side].position.value, next)) << "round " << round << "\n"
                                                                                      << text;
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
