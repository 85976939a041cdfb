#include "findref/DefinitionScan.h"
#include "tests/findref/slow_definitions.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace blockhouse {
namespace {

std::string found(std::string_view text, std::string_view name, std::size_t pieceSize) {
    DefinitionScan scan(name);
    std::string lines;
    const auto note = [&lines](const DefinitionScan::Found& each) {
        lines += std::to_string(each.name.value) + " " + std::to_string(each.line) + " " + each.keyword + "\n";
    };
    for (std::size_t at = 0; at <= text.size(); at += pieceSize)
        scan.scan(text.substr(at, pieceSize), at + pieceSize > text.size(), note);
    return lines;
}

TEST(DefinitionScan, FindsHeadersOfAnyKeyword) {
    const struct {
        const char* text;
        const char* found;
    } cases[] = {
        {"Weapon Bow\r\n  Damage = 1\r\nEnd\r\n", "8 1 Weapon\n"},
        {"End\r\nSOUND\t bOW ; of wood\r\n", "13 2 SOUND\n"},
        {"Weapon Bow", "8 1 Weapon\n"},
        {"A Bow\rB Bow\r", "3 1 A\n9 2 B\n"},
        {"A Bow\n\nB Bow \n", "3 1 A\n10 3 B\n"},
        {"  Weapon Bow\n", ""},
        {"Weapon = Bow\n", ""},
        {"Weapon Bow = 3\n", ""},
        {"Weapon PRIMARY Bow\n", ""},
        {"Weapon BowOfWar\nWeapon ABow\n", ""},
        {"Bow\n Bow\n", ""},
        {"; Weapon Bow\n;Weapon Bow\n", ""},
        {"Weapon; Bow\n", ""},
        {"", ""},
    };

    for (const auto& c : cases)
        for (const std::size_t piece : {1U, 2U, 5U, 1000U})
            EXPECT_EQ(found(c.text, "Bow", piece), c.found) << c.text << " in pieces of " << piece;
    EXPECT_EQ(found("Weapon Bow\nWeapon \n", "", 7), "");
    EXPECT_EQ(found("Weapon Long Bow\n", "Long Bow", 7), "");
}

TEST(DefinitionScan, FindsWhatAScanLineByLineFinds) {
    std::mt19937 random(20261124);
    const std::vector<std::string> fragments{"Weapon", "Bow", "bow",       "Bo",        "w",
                                             " ",      "\t",  "=",         ";",         "\r\n",
                                             "\n",     "\r",  "\xC9t\xE9", "\xE9T\xC9", std::string(1, '\0')};
    std::size_t hits = 0;
    for (int round = 0; round < 20'000; ++round) {
        std::string text;
        for (std::size_t left = random() % 30; left > 0; --left)
            text += fragments[random() % fragments.size()];
        const std::string name = random() % 4 == 0 ? "\xE9t\xE9" : "BOW";
        const std::string expected = definitionsLineByLine(text, name);
        ASSERT_EQ(found(text, name, 1 + random() % 12), expected) << round << "\n" << text;
        hits += expected.empty() ? 0 : 1;
    }
    EXPECT_GT(hits, 300U);
}

TEST(DefinitionScan, LinesWithoutEndDefineNothingAndAreNotKept) {
    const std::string longLine(3'000'000, 'x');
    EXPECT_EQ(found("A Bow\n" + longLine + " Bow\nB Bow\n" + longLine + "\rC Bow", "Bow", 65'536),
              "3 1 A\n3000014 3 B\n6000021 4 C\n");
}

} // namespace
} // namespace blockhouse
