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

} // namespace
} // namespace blockhouse
