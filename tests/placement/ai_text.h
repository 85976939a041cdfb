// AI data files to test on: sound ones, and such with a few random slips in them.
#pragma once

#include <random>
#include <string>

namespace blockhouse {

class AiText {
public:
    explicit AiText(unsigned seed) : random_(seed) {}

    [[nodiscard]] std::size_t below(std::size_t limit) { return random_() % limit; }

    // Locations have at least two characters before the blank.
    std::string sound(std::size_t sides, std::size_t structures) {
        static const char* const words[] = {"PowerMill", "SupplyWharf", "WarFactory",
                                            "Bunker",    "Statue",      "StrategyHall"};
        std::string text = "; made up\r\n";
        for (std::size_t side = 0; side < sides; ++side) {
            text += "  SkirmishBuildList Side" + std::to_string(side) + "\r\n";
            for (std::size_t i = 0; i < structures; ++i)
                text += std::string("    Structure ") + words[below(6)] + std::to_string(i) +
                        "\r\n      Location = X:" + std::to_string(10 + below(990)) +
                        ".50 Y:" + std::to_string(below(1000)) + ".25\r\n      Facing = 1\r\n    End\r\n";
            text += "  End\r\n";
        }
        return text;
    }

    std::string withSlips(std::string text, std::size_t slips) {
        static const std::string snippets[] = {"end",
                                               "y:",
                                               " ",
                                               "=",
                                               "\r",
                                               "\n",
                                               "\r\n",
                                               "Structure ",
                                               "structure\t",
                                               "Location = X:",
                                               "LOCATION = x:1 ",
                                               "Y:7 ",
                                               ";",
                                               "x",
                                               std::string(1, '\0'),
                                               "\xE9",
                                               "1e3",
                                               "+",
                                               "SkirmishBuildList "};
        for (std::size_t slip = 0; slip < slips && !text.empty(); ++slip) {
            const std::size_t at = below(text.size());
            const std::size_t length = std::min(below(4) == 0 ? below(60) : below(3), text.size() - at);
            if (below(2) == 0)
                text.replace(at, length, snippets[below(std::size(snippets))]);
            else if (below(2) == 0)
                text.erase(at, length);
            else
                text.insert(below(text.size()), text.substr(at, length));
        }
        if (below(10) == 0)
            std::erase(text, '\r');
        return text;
    }

private:
    std::mt19937 random_;
};

} // namespace blockhouse
