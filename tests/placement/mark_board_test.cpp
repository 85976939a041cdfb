#include "placement/location_line.h"
#include "placement/mark_board.h"

#include <gtest/gtest.h>

namespace blockhouse {
namespace {

std::vector<ScannedStructure> structuresAt(const std::vector<CanvasPoint>& places) {
    std::vector<ScannedStructure> structures;
    for (const CanvasPoint& place : places)
        structures.push_back({{std::string(1, static_cast<char>('a' + structures.size())), {1}}, place, rgb(1, 2, 3)});
    return structures;
}

std::string shownLabels(const MarkBoard& board) {
    std::string names;
    for (const MarkLabel& label : board.labels())
        names += label.visible ? label.name : "";
    return names;
}

TEST(MarkBoard, AMarkIsHitNearItsCorner) {
    struct Case {
        float right, down; // of the mark's corner
        bool hit;
    };

    const Case cases[] = {
        {0, 0, true},    {35, 40, true},   {-35, -45, true},   {36, 0, false},   {-36, 0, false},    {0, 41, false},
        {0, -46, false}, {35.9F, 0, true}, {-35.1F, 0, false}, {0, 40.9F, true}, {0, -45.1F, false}, {0, -44.9F, true},
    };
    for (const Case& each : cases) {
        MarkBoard board;
        board.showStructures(structuresAt({{{500}, {600}}}));
        const MarkBoard::Press press = board.press({{500 + each.right}, {600 + each.down}});
        EXPECT_EQ(press.hit.has_value(), each.hit) << each.right << ", " << each.down;
        EXPECT_EQ(press.changed, each.hit);
        EXPECT_EQ(board.selected().has_value(), each.hit);
    }
}

TEST(MarkBoard, ThePressSelectsTheFirstMarkAndTheDragMovesTheSelectedOne) {
    MarkBoard board;
    EXPECT_EQ(board.release({{1}, {1}}), std::nullopt);
    EXPECT_FALSE(board.move({{1}, {1}}, leftButton));
    board.showStructures(structuresAt({{{100}, {100}}, {{110}, {110}}, {{500}, {500}}}));
    EXPECT_EQ(board.press({{112}, {112}}).hit, 0U);
    EXPECT_EQ(shownLabels(board), "a");
    EXPECT_FALSE(board.press({{300}, {300}}).hit);
    EXPECT_EQ(board.selected(), 0U) << "a press on empty ground leaves the selection";

    for (const MouseButtons held : {noButton, rightButton, MouseButtons{3}}) {
        EXPECT_FALSE(board.move({{112}, {112}}, held));
        EXPECT_EQ(board.marks()[0].topLeft, (CanvasPoint{{100}, {100}}));
    }
    EXPECT_TRUE(board.move({{-5.5F}, {1200}}, leftButton)) << "it follows from wherever the press was";
    EXPECT_EQ(board.marks()[0].topLeft, (CanvasPoint{{-5.5F}, {1200}}));
    EXPECT_EQ(board.labels()[0].topLeft, (CanvasPoint{{-25.5F}, {1160}}));
    EXPECT_EQ(board.release({{3}, {4}}), (MarkBoard::Drop{0, {{3}, {4}}}));

    board.refill(3);
    EXPECT_EQ(board.release({{3}, {4}}), std::nullopt);
    EXPECT_EQ(board.marks()[0].topLeft, (CanvasPoint{{-5.5F}, {1200}}));
}

TEST(MarkBoard, ThePointerShowsTheLabelOfTheFirstMarkNearIt) {
    MarkBoard board;
    board.showStructures(structuresAt({{{100}, {100}}, {{300}, {300}}, {{500}, {500}}}));
    EXPECT_TRUE(board.select(2));
    EXPECT_FALSE(board.select(2));
    EXPECT_FALSE(board.select(3));
    EXPECT_TRUE(board.move({{301}, {301}}, noButton));
    EXPECT_EQ(shownLabels(board), "bc") << "later ones stay as they are";
    EXPECT_TRUE(board.move({{501}, {501}}, noButton));
    EXPECT_EQ(shownLabels(board), "c");
    EXPECT_TRUE(board.move({{900}, {900}}, noButton));
    EXPECT_EQ(shownLabels(board), "");
    EXPECT_FALSE(board.move({{901}, {901}}, noButton));
}

TEST(MarkBoard, MarksBeyondTheListAreHiddenAndCannotBeHit) {
    MarkBoard board;
    const std::vector<CanvasPoint> five{{{100}, {100}}, {{200}, {200}}, {{300}, {300}}, {{400}, {400}}, {{500}, {500}}};
    board.showStructures(structuresAt(five));
    EXPECT_TRUE(board.select(4));
    board.showStructures(structuresAt({five.begin(), five.begin() + 3}));
    EXPECT_EQ(board.marks().size(), 5U);
    EXPECT_EQ(shownLabels(board), "");
    EXPECT_FALSE(board.selected());
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(board.marks()[i].visible, i < 3);
        EXPECT_EQ(board.press(five[i]).hit.has_value(), i < 3);
    }
    board.refill(6);
    EXPECT_FALSE(board.marks()[5].visible);
}

TEST(LocationLine, HasTwoDecimalsInAnyCase) {
    struct Case {
        float value;
        const char* text;
    };

    const Case cases[] = {
        {412.5F, "412.50"},    {0, "0.00"},      {-0.0F, "0.00"},    {-0.004F, "0.00"},
        {-0.25F, "-0.25"},     {0.125F, "0.13"}, {-0.125F, "-0.13"}, {0.07F, "0.07"},
        {999.999F, "1000.00"}, {-12, "-12.00"},  {5, "5.00"},        {1e10F, "10000000000.00"},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(statusText({{each.value}, {1}}), std::string("x: ") + each.text + " y: 1.00");
        EXPECT_EQ(locationLine({{1}, {each.value}}), std::string("Location = X:1.00 Y:") + each.text);
    }
}

TEST(LocationLine, TakesThePlaceOfTheOldOneUpToTheLineEnd) {
    const std::pair<std::string, std::string> cases[] = {
        {"a\r\n\tLOCATION = x:1 Y:2 ; note\r\nEnd\r\n", "a\r\n\tLocation = X:7.00 Y:8.00\r\nEnd\r\n"},
        {"a\n\tLOCATION = x:1 Y:2\nEnd\n", "a\n\tLocation = X:7.00 Y:8.00\nEnd\n"},
        {"a\r\tLOCATION = x:1 Y:2", "a\r\tLocation = X:7.00 Y:8.00"},
    };
    for (const auto& [before, after] : cases) {
        std::string text = before;
        const auto position = static_cast<std::ptrdiff_t>(before.find("LOCATION") + 1);
        EXPECT_EQ(replaceLocation(text, {position}, {{7}, {8}}).value().after, "Location = X:7.00 Y:8.00");
        EXPECT_EQ(text, after);
        for (const std::ptrdiff_t outside : {std::ptrdiff_t{0}, static_cast<std::ptrdiff_t>(text.size() + 1)})
            EXPECT_FALSE(replaceLocation(text, {outside}, {{7}, {8}}));
        EXPECT_EQ(text, after);
    }
}

} // namespace
} // namespace blockhouse
