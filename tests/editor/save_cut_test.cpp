#include "editor/save_cut.h"

#include <gtest/gtest.h>

#include <string>

namespace blockhouse {
namespace {

TEST(SaveCut, KeepsTheLastEndAndTheCharacterAfterIt) {
    const struct {
        std::string text;
        std::string written;
    } cases[] = {
        {"", ""},
        {"Object Tank\r\n  Armor = 1\r\n", "Object Tank\r\n  Armor = 1\r\n"},
        {"Object Tank\r\nEnd\r\n", "Object Tank\r\nEnd\r"},
        {"Object Tank\nEND\n", "Object Tank\nEND\n"},
        {"Object Tank\r\nEnd", "Object Tank\r\nEnd"},
        {"End", "End"},
        {"End\r\n; that is all\r\n", "End\r"},
        {"End\r\n; mended here\r\n", "End\r\n; mende"},
        {"eNd1end2en3", "eNd1end2"},
        {std::string("end\0\0", 5), std::string("end\0", 4)},
    };

    for (const auto& [text, written] : cases) {
        EXPECT_EQ(textToWrite(text), written) << testing::PrintToString(text);
    }
}

TEST(SaveCut, TellsWhatItLeavesOutAndFromWhichLineOn) {
    const struct {
        std::string text;
        std::optional<LeftOut> leftOut;
    } cases[] = {
        {"", std::nullopt},
        {"no block at all\r\n", std::nullopt},
        {"End", std::nullopt},
        {"Object\r\nEnd\r\n \t\r\n\v\f\r\n", std::nullopt},
        {"Object\r\nEnd\r\n;x", LeftOut{2, 3}},
        {"Object\r\nEnd\r\n\r\n\r\n ;x y \r\n", LeftOut{4, 5}},
        {"Object\nEnd\n\n;x\n;y\n", LeftOut{5, 4}},
        {"Object\rEnd\r\r;x\r", LeftOut{2, 4}},
        {"End;x", LeftOut{1, 1}},
        {std::string("End\n\0", 5), LeftOut{1, 2}},
    };

    for (const auto& [text, leftOut] : cases)
        EXPECT_EQ(leftOutOf(text), leftOut) << testing::PrintToString(text);
}

} // namespace
} // namespace blockhouse
