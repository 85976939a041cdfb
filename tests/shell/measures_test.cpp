// The shell's arithmetic: percentages and the panel's width.
#include "shell/Percent.h"
#include "shell/splitter.h"

#include <gtest/gtest.h>

#include <limits>

namespace blockhouse {
namespace {

TEST(Percent, IsTheWholePartRoundedDown) {
    for (int maximum = 1; maximum <= 200; ++maximum) {
        for (int value = 0; value <= 2 * maximum; ++value)
            ASSERT_EQ(Percent(value, maximum, 100), value * 100 / maximum) << value << " of " << maximum;
    }
    EXPECT_EQ(Percent(-1, 3, 100), -34);
    EXPECT_EQ(Percent(1, 4, 10), 2);
}

TEST(Percent, HasAnAnswerWhereThereIsNone) {
    EXPECT_EQ(Percent(0, 0, 100), 0);
    EXPECT_EQ(Percent(7, 0, 100), 0);
    EXPECT_EQ(Percent(std::numeric_limits<double>::quiet_NaN(), 1, 100), 0);
    EXPECT_EQ(Percent(1e300, 1e-300, 100), std::numeric_limits<int>::max());
}

TEST(Splitter, FollowsTheCursorWithinItsLimits) {
    const struct {
        int cursor;
        double left;
        double width;
        double panel;
    } cases[] = {
        {800, 1500, 15000, 4500},  // 300 pixels from the right edge
        {1090, 1500, 15000, 150},  // exactly the least
        {1091, 1500, 15000, 150},  // less
        {2000, 1500, 15000, 150},  // beyond the right edge
        {600, 1500, 15000, 7500},  // exactly half
        {599, 1500, 15000, 7500},  // more
        {-500, 1500, 15000, 7500}, // beyond the left edge
        {0, 0, 15015, 7508},       // half of 15015 is 7507.5: to the even number
        {0, 0, 15017, 7508},       // and so is half of 15017
        {0, 0, 200, 100},          // half is less than the least: half
        {10, 0, 200, 150},         // unless the cursor asks for less
    };

    for (const auto& [cursor, left, width, panel] : cases)
        EXPECT_EQ(panelWidthAt(Pixels{cursor}, {Twips{left}, Twips{width}}, 15).value, panel)
            << cursor << " in " << width;
}

} // namespace
} // namespace blockhouse
