#include "placement/structure_colour.h"

#include "platform/text/codepage.h"

#include <algorithm>
#include <array>

namespace blockhouse {

namespace {

constexpr Colour commandCenter = rgb(0, 0, 0);
constexpr Colour powerPlant = rgb(0, 0, 255);
constexpr Colour production = rgb(255, 255, 0);
constexpr Colour defense = rgb(255, 0, 0);
constexpr Colour tech = rgb(255, 255, 255);
constexpr Colour superweapon = rgb(255, 128, 0);
constexpr Colour income = rgb(0, 255, 0);

struct WordColour {
    std::string_view word;
    Colour colour;
};

constexpr std::array<WordColour, 23> wordColours{{
    {"commandcenter", commandCenter},
    {"power", powerPlant},
    {"airfield", production},
    {"barracks", production},
    {"warfactory", production},
    {"arms", production},
    {"stinger", defense},
    {"gattling", defense},
    {"patriot", defense},
    {"bunker", defense},
    {"tunnel", defense},
    {"firebase", defense},
    {"demotraps", defense},
    {"propagandacenter", tech},
    {"palace", tech},
    {"strategy", tech},
    {"nuclearmissile", superweapon},
    {"speaker", superweapon},
    {"particle", superweapon},
    {"scudstorm", superweapon},
    {"black", income},
    {"supply", income},
    {"internet", income},
}};

} // namespace

Colour Getcolord(std::string_view what) {
    const std::string name = codepage::lowered(what);
    const auto decides = std::find_if(wordColours.rbegin(), wordColours.rend(), [&name](const WordColour& entry) {
        return name.find(entry.word) != std::string::npos;
    });
    return decides == wordColours.rend() ? rgb(0, 0, 0) : decides->colour;
}

} // namespace blockhouse
