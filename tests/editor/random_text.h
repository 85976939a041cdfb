// Texts thrown together from fragments, the same ones on every run and every platform.
#pragma once

#include <random>
#include <string>
#include <vector>

namespace blockhouse {

inline std::size_t randomBelow(std::mt19937& random, std::size_t limit) {
    return random() % limit;
}

inline std::string randomText(std::mt19937& random, const std::vector<std::string>& fragments,
                              std::size_t mostFragments) {
    std::string text;
    for (std::size_t left = randomBelow(random, mostFragments + 1); left > 0; --left) {
        text += fragments[randomBelow(random, fragments.size())];
    }
    return text;
}

} // namespace blockhouse
