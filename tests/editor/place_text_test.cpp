#include "editor/place_text.h"

#include <gtest/gtest.h>

namespace blockhouse {
namespace {

TEST(PlaceText, NamesTheBlocksAroundThePlace) {
    const std::string text = "Object Abc ; a tower\r\n  Body = Stone \t;hard\r\n    h = 1\r\n  End\r\nEnd\r\n";
    const BlockStructure structure = blockStructure(text);
    const std::pair<const char*, const char*> cases[] = {
        {"Object", "Ln 3, Col 5  Object Abc"},
        {"Body", "Ln 3, Col 5  Object Abc > Body = Stone"},
        {"h = 1", "Ln 3, Col 5  Object Abc > Body = Stone"},
        {"  End", "Ln 3, Col 5  Object Abc > Body = Stone"},
    };
    for (const auto& [place, expected] : cases)
        EXPECT_EQ(placeText(2, 4, structure, text, static_cast<std::ptrdiff_t>(text.find(place))), expected) << place;
    EXPECT_EQ(placeText(0, 0, structure, text, static_cast<std::ptrdiff_t>(text.size())), "Ln 1, Col 1");
}

} // namespace
} // namespace blockhouse
