#include "platform/richtext/StyleTable.h"

#include <algorithm>

namespace blockhouse {
namespace {

constexpr int reserved = StyleTable::lastReserved - StyleTable::firstReserved + 1;
constexpr std::size_t capacity = 256 - reserved;

int numberAt(std::size_t index) {
    const int number = static_cast<int>(index);
    return number < StyleTable::firstReserved ? number : number + reserved;
}

int distance(Colour left, Colour right) {
    const int red = redOf(left) - redOf(right);
    const int green = greenOf(left) - greenOf(right);
    const int blue = blueOf(left) - blueOf(right);
    return red * red + green * green + blue * blue;
}

} // namespace

StyleTable::Numbered StyleTable::numberOf(ColourPair colours) {
    const auto known = std::find(pairs_.begin(), pairs_.end(), colours);
    if (known != pairs_.end())
        return {numberAt(static_cast<std::size_t>(known - pairs_.begin())), false};
    if (pairs_.size() == capacity)
        return {nearest(colours), false};
    pairs_.push_back(colours);
    return {numberAt(pairs_.size() - 1), true};
}

StyleTable::Numbered StyleTable::twinOf(int number) {
    if (const auto known = twins_.find(number); known != twins_.end())
        return {known->second, false};
    if (pairs_.size() == capacity)
        return {number, false};
    pairs_.push_back(coloursOf(number));
    return {twins_[number] = numberAt(pairs_.size() - 1), true};
}

ColourPair StyleTable::coloursOf(int number) const {
    const int index = number > lastReserved ? number - reserved : number;
    const bool given = index >= 0 && static_cast<std::size_t>(index) < pairs_.size() &&
                       (number < firstReserved || number > lastReserved);
    return given ? pairs_[static_cast<std::size_t>(index)] : ColourPair{};
}

std::vector<Colour> StyleTable::colours() const {
    std::vector<Colour> all;
    const auto add = [&](Colour colour, Colour byDefault) {
        if (colour != byDefault && std::find(all.begin(), all.end(), colour) == all.end())
            all.push_back(colour);
    };
    for (const ColourPair& pair : pairs_) {
        add(pair.text, defaultTextColour);
        add(pair.background, defaultBackground);
    }
    return all;
}

int StyleTable::nearest(ColourPair colours) const {
    const auto cost = [&](ColourPair pair) {
        return distance(pair.text, colours.text) + distance(pair.background, colours.background);
    };
    const auto best = std::min_element(pairs_.begin(), pairs_.end(),
                                       [&](ColourPair left, ColourPair right) { return cost(left) < cost(right); });
    return numberAt(static_cast<std::size_t>(best - pairs_.begin()));
}

} // namespace blockhouse
