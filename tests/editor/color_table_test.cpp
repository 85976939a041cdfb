#include "editor/color_table.h"

#include <gtest/gtest.h>

namespace blockhouse {
namespace {

TEST(ColorTable, ReadsTheTableOfTheSource) {
    const std::string navy = "\\red0\\green0\\blue128;";
    const std::string yellow = "\\red255\\green255\\blue192;";

    const struct {
        std::string source;
        std::vector<Colour> expected;
    } cases[] = {
        {"", {0}},
        {"{\\rtf1 no table; here}", {0}},
        {"{\\colortbl ;" + navy, {0}},
        {"{\\colortbl}", {0}},
        {"{\\colortbl ;}", {0}},
        {"{\\rtf1{\\fonttbl{\\f0 A;}}\r\n{\\colortbl ;" + navy + yellow + "}\r\n{\\colortbl ;" + yellow + "}",
         {0, 8388608, 12648447}},
        {"{\\colortbl" + yellow + navy + "}", {0, 8388608}},
        {"{\\colortbl ;;" + yellow + ";" + navy + "}", {0, 12648447, 8388608}},
        {"{\\colortbl ;" + navy + "\\red9\\green9\\blue9}", {0, 8388608}},
        {"{\\colortbl \\highlight2 ;" + navy + "}\\highlight0 \r\n", {0, 8388608}},
        {"{\\colortbl ;red1\\green2\\blue3x4;}", {0, rgb(1, 2, 3)}},
        {"{\\colortbl ;\\red\\green5;\\red7;}", {0, rgb(0, 5, 0), rgb(7, 0, 0)}},
    };

    for (const auto& [source, expected] : cases) {
        EXPECT_EQ(readColorTable(source), expected) << source;
    }
}

TEST(ColorTable, EndlessNumbersDoNoHarm) {
    const std::string digits(400, '9');
    EXPECT_EQ(readColorTable("{\\colortbl ;\\red" + digits + "\\green" + digits + "\\blue" + digits + ";}").size(), 2U);
}

} // namespace
} // namespace blockhouse
