#include "placement/build_list.h"
#include "placement/DropHistory.h"

#include <gtest/gtest.h>

#include <random>

namespace blockhouse {
namespace {

const std::string twoStructures =
    "SkirmishBuildList North\r\n  Structure CommandCenter\r\n    Location = X:100 Y:200\r\n"
    "  Structure SupplyDepot\r\n    location = x:100000.5 Y:-7\r\nEnd\r\n";

// Against whole texts kept of every step.
TEST(DropHistory, IsAsIfEveryTextWereKept) {
    for (unsigned seed = 0; seed < 200; ++seed) {
        std::mt19937 random(seed);
        std::string text = twoStructures;
        std::vector<std::string> texts{text};
        std::size_t now = 0;
        std::string onDisk = text;
        DropHistory history;
        for (int step = 0; step < 40; ++step) {
            switch (random() % 5) {
            case 0:
                ASSERT_EQ(history.undo(text).has_value(), now > 0);
                now -= now > 0 ? 1U : 0U;
                break;
            case 1:
                ASSERT_EQ(history.redo(text).has_value(), now + 1 < texts.size());
                now += now + 1 < texts.size() ? 1U : 0U;
                break;
            case 2:
                history.saved();
                onDisk = text;
                break;
            default: {
                const auto structures = structuresOf(text, {1}, positionOf(text.size())).structures;
                ASSERT_EQ(structures.size(), 2U);
                const std::size_t which = random() % 2;
                const CanvasPoint point{{static_cast<float>(step)}, {static_cast<float>(random() % 20000)}};
                const auto line = replaceLocation(text, structures[which].entry.position, point);
                ASSERT_TRUE(line);
                history.add({0, which, structures[which].entry.name, {}, point, *line});
                texts.resize(++now);
                texts.push_back(text);
            }
            }
            ASSERT_EQ(text, texts[now]) << "seed " << seed << " step " << step;
            ASSERT_TRUE(!history.isSaved() || text == onDisk) << "seed " << seed << " step " << step;
        }
        while (history.undo(text)) {
        }
        ASSERT_EQ(text, twoStructures);
    }
}

TEST(DropHistory, KnowsWhenTheFileHoldsTheText) {
    std::string text = twoStructures;
    DropHistory history;
    const auto drop = [&](float x) {
        const auto structures = structuresOf(text, {1}, positionOf(text.size())).structures;
        history.add({0, 0, "", {}, {}, *replaceLocation(text, structures[0].entry.position, {{x}, {x}})});
    };
    EXPECT_TRUE(history.isSaved());
    drop(1);
    EXPECT_FALSE(history.isSaved());
    history.saved();
    EXPECT_TRUE(history.undo(text) && !history.isSaved());
    EXPECT_TRUE(history.redo(text) && history.isSaved());
    EXPECT_TRUE(history.undo(text));
    drop(2);
    EXPECT_FALSE(history.isSaved()) << "as many drops, but another text";
    EXPECT_TRUE(history.undo(text) && !history.isSaved());
    history.clear();
    EXPECT_TRUE(history.isSaved());
    EXPECT_FALSE(history.undo(text));
}

TEST(UnreadableStructures, AreNamedWithTheirLines) {
    const std::string structure = "Structure Barracks1\r\n Location = X:no Y:2\r\n";
    std::string text = "SkirmishBuildList A\r\n" + structure;
    const auto told = [&] {
        return unreadableStructures(text, structuresOf(text, {1}, positionOf(text.size())).failures);
    };
    EXPECT_EQ(told(), "The location cannot be read of Barracks1 (line 2)");
    for (int more = 0; more < 6; ++more)
        text += structure;
    EXPECT_EQ(told(), "The location cannot be read of Barracks1 (line 2), Barracks1 (line 4), Barracks1 (line 6), "
                      "Barracks1 (line 8), Barracks1 (line 10) and 2 more");
}

} // namespace
} // namespace blockhouse
