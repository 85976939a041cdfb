// Style numbers for pairs of colours.
#pragma once

#include "platform/text/Colour.h"

#include <map>
#include <vector>

namespace blockhouse {

// Gives every pair of colours a number of its own, in the order they come; the default pair is number 0. Numbers
// 32 to 39 are never given (the text engine keeps them for itself). There are 248: once they are used up, a new
// pair gets the number of the nearest pair known.
class StyleTable {
public:
    static constexpr int firstReserved = 32;
    static constexpr int lastReserved = 39;

    struct Numbered {
        int number;
        bool isNew; // the text engine has yet to be told this style's colours
    };

    [[nodiscard]] Numbered numberOf(ColourPair colours);
    // Another number for the same colours, always the same one; the number itself once all are used up.
    [[nodiscard]] Numbered twinOf(int number);
    // The default pair for a number that was never given.
    [[nodiscard]] ColourPair coloursOf(int number) const;
    // Every text colour and background but the default ones, in the order they came, each once.
    [[nodiscard]] std::vector<Colour> colours() const;

private:
    [[nodiscard]] int nearest(ColourPair colours) const;

    std::vector<ColourPair> pairs_{ColourPair{}};
    std::map<int, int> twins_;
};

} // namespace blockhouse
