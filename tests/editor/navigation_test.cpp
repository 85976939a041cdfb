#include "editor/navigation.h"
#include "platform/text/EntryList.h"
#include "tests/editor/random_text.h"
#include "tests/editor/slow_navigation.h"

#include <gtest/gtest.h>

#include <ostream>

namespace blockhouse {

void PrintTo(const TextPosition& position, std::ostream* out) {
    *out << position.value;
}

void PrintTo(const SettingEntry& entry, std::ostream* out) {
    *out << testing::PrintToString(entry.name) << '@' << entry.itemData.value;
}

namespace {

using enum HeaderKind;
using Settings = std::vector<SettingEntry>;

// 1-based position of `part` in the text from the position `from` on; the part must be there.
TextPosition placeOf(const std::string& text, const std::string& part, std::size_t from = 1) {
    return positionOf(text.find(part, from - 1));
}

// Settings of the block whose header line is the one of that name.
Settings settingsOfNamed(const std::string& text, HeaderKind kind, const std::string& name,
                         const std::vector<std::string>& jumps) {
    return settingsOf(text, kind, settingsStart(caretAfter(headerPosition(text, kind, name))), jumps);
}

std::string withLineEnd(std::string text, const std::string& lineEnd) {
    for (std::size_t at = text.find('\n'); at != std::string::npos; at = text.find('\n', at + lineEnd.size())) {
        text.replace(at, 1, lineEnd);
    }
    return text;
}

TEST(Navigation, FindsTheHeaderLine) {
    const struct {
        std::string text;
        HeaderKind kind;
        std::string name;
        std::ptrdiff_t expected;
    } cases[] = {
        {"; x\r\nObject Tanker\r\nEnd", Object, "tanker", 5},
        {"; x\rOBJECT tanker\rEnd", Object, "Tanker", 4},
        {"; x\nobject Tanker\nEnd", Object, "TANKER", 4},
        {"\nObject Tanker\nEnd", Object, "Tanker", 1},
        {"Object Tanker\r\nEnd", Object, "Tanker", 0}, // on the first line
        {"\nObject Tanker", Object, "Tanker", 0},      // the text ends after it
        {"\n Object Tanker\n;Object Tanker\nObject  Tanker\n", Object, "Tanker", 0},
        {"\nObject Tankers\nObject Tanker ;\nObject Tanker\n", Object, "Tanker", 32},
        {"\nObject Tanker\nObject Tanker\n", Object, "Tanker", 1},
        {"\nWeapon Gunner\n", Weapon, "Gunner", 1},
        {"\nSpecialPower Strike\n", SpecialPower, "strike", 1},
        {"\nFXList Sparks\n", FXList, "sparks", 1},
        {"\nSkirmishBuildList Side\n", SkirmishBuildList, "side", 1},
        {"\nWeapon Gunner\n", Object, "Gunner", 0},
        {"\nObject Tanker\n", None, "Tanker", 0},
        {"\nObject \xC9toile\n", Object, "\xE9TOILE", 1},
        {"", Object, "Tanker", 0},
    };

    for (const auto& [text, kind, name, expected] : cases) {
        EXPECT_EQ(headerPosition(text, kind, name).value, expected) << testing::PrintToString(text) << " for " << name;
    }
}

TEST(Navigation, ListsTheSettingsOfTheChosenBlock) {
    for (const std::string lineEnd : {"\r\n", "\r", "\n"}) {
        const std::string text = withLineEnd("; three blocks\n"
                                             "Object Tanker\n  Armor = 1\n  Speed = 2\nEnd\n"
                                             "Object Bomber\n  TopSpeed = 3\nEnd\n\tArmor\n"
                                             "Object Copter\n  Armor = 5\nEnd\n  Speed = 6\nEnd\nSpeed\n",
                                             lineEnd);
        const auto armor = [&](const char* block) { return placeOf(text, "Armor", text.find(block)); };
        const auto speed = [&](const char* block) { return placeOf(text, "Speed", text.find(block)); };
        const std::vector<std::string> jumps = {"Armor", "speed"};
        EXPECT_EQ(settingsOfNamed(text, Object, "Tanker", jumps),
                  (Settings{{"Armor", armor("Tanker")}, {"speed", speed("Tanker")}}));
        EXPECT_EQ(settingsOfNamed(text, Object, "Bomber", jumps), (Settings{{"speed", speed("Bomber")}}));
        // The last of its kind: as far as the last "end".
        EXPECT_EQ(settingsOfNamed(text, Object, "Copter", jumps),
                  (Settings{{"Armor", armor("Copter")}, {"speed", speed("Copter")}}));
        // A block on the first line is not found; what is listed begins near the text's start, and so inside it.
        const std::string headless = text.substr(text.find("Object"));
        EXPECT_EQ(settingsOfNamed(headless, Object, "Tanker", jumps),
                  (Settings{{"Armor", placeOf(headless, "Armor")}, {"speed", placeOf(headless, "Speed")}}));
    }
}

TEST(Navigation, SettingsOfUnusualBlocks) {
    const std::string mixed =
        "\r\nObject Tanker\r\nEnd\r\nWeapon Gunner\r\n Range = 9\r\nEnd\r\nObject Bomber\r\nEnd\r\n";
    const TextPosition start{7};

    const struct {
        std::string text;
        HeaderKind kind;
        std::vector<std::string> jumps;
        Settings expected;
    } cases[] = {
        {mixed,
         Object,
         {"range", "gunner", "bomber"},
         {{"range", placeOf(mixed, "Range")}, {"gunner", placeOf(mixed, "Gunner")}}},
        {mixed,
         Object,
         {"Range", "x", "RANGE", "x", "range"},
         {{"Range", placeOf(mixed, "Range")}, {"RANGE", {}}, {"range", {}}}},
        {mixed, Object, {"", "Range", ""}, {{"", start}, {"Range", placeOf(mixed, "Range")}, {"", {}}}},
        {mixed, SkirmishBuildList, {"", "range"}, {}},
        {mixed, None, {"", "range"}, {}},
        {"\nObject Tanker\n Range = 1\n", Object, {"", "Range"}, {}}, // no "end" at all
        {"\nObject End\n", Object, {"", "End"}, {{"", start}}},       // before the "end", not at it
        {"\nObjecEnd\n", Object, {"", "End"}, {}},                    // the "end" stands at the start
        {"\nObject\n Mended", Object, {"mended"}, {{"mended", {10}}}},
        {"\nObject\nObject A\nend", Object, {"", "Object"}, {}}, // the next header begins at the start itself
        {"\nObje\r\nObject A\nend", Object, {"", "Object"}, {}}, // its line-break character is the start
        {"\nObj\r\nObject A\nend", Object, {"", "Object"}, {{"", start}, {"Object", {7}}}}, // begun one before
        {"", Object, {"", "range"}, {}},
        {"end", Object, {"", "end"}, {}},
    };

    for (const auto& [text, kind, jumps, expected] : cases) {
        EXPECT_EQ(settingsOf(text, kind, start, jumps), expected)
            << testing::PrintToString(text) << static_cast<int>(kind);
    }
}

TEST(Navigation, TakesTheJumpListAsItIs) {
    EntryList jumps;
    jumps.add("Range");
    EXPECT_EQ(settingsOf("Weapon G\nRange\nEnd", Weapon, {1}, jumps), (Settings{{"Range", {10}}}));
}

TEST(Navigation, AgreesWithTheLoweredCopy) {
    const std::vector<std::string> fragments = {"\r\nObject ",
                                                "\nWEAPON ",
                                                "\rSpecialPower ",
                                                "\r\nfxlist ",
                                                "\nSkirmishBuildList ",
                                                "object ",
                                                "Tanker",
                                                "tANKER",
                                                "\xC9toile",
                                                "\xE9toile",
                                                "\x9ALINK",
                                                "End",
                                                "\r\nend",
                                                "\r\n",
                                                "\r",
                                                "\n",
                                                " = ",
                                                "Armor",
                                                "ARMORSET",
                                                "en",
                                                "d",
                                                " ",
                                                std::string(90, '.')};
    const std::vector<std::string> names = {"Armor", "armorset", "",   "end",    "d",     "\xC9TOILE", "\x8Alink",
                                            "ar",    "en",       ".e", "tanker", "set\r", "ARMOR"};
    std::mt19937 random(5);
    int found = 0;
    int listed = 0;
    for (int round = 0; round < 10000; ++round) {
        const std::string text = randomText(random, fragments, 40);
        const HeaderKind kind = headerKinds[randomBelow(random, headerKinds.size())];
        const std::string name = names[randomBelow(random, names.size())];
        const TextPosition header = headerPosition(text, kind, name);
        ASSERT_EQ(header.value, loweredHeader(text, kind, name))
            << testing::PrintToString(text) << static_cast<int>(kind) << name;
        found += header.found() ? 1 : 0;

        std::vector<std::string> jumps;
        for (std::size_t left = randomBelow(random, 6); left > 0; --left) {
            jumps.push_back(names[randomBelow(random, names.size())]);
        }
        const std::size_t z = 1 + randomBelow(random, text.size() + 8);
        const Settings settings = settingsOf(text, kind, TextPosition{static_cast<std::ptrdiff_t>(z)}, jumps);
        ASSERT_EQ(settings, loweredSettings(text, kind, z, jumps))
            << testing::PrintToString(text) << static_cast<int>(kind) << " at " << z;
        listed += settings.empty() ? 0 : 1;
    }
    EXPECT_GT(found, 100);
    EXPECT_GT(listed, 1000);
}

} // namespace
} // namespace blockhouse
