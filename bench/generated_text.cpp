#include "bench/generated_text.h"

#include <algorithm>
#include <array>
#include <random>
#include <stdexcept>
#include <string_view>
#include <vector>

namespace blockhouse {

namespace {

constexpr std::array<std::string_view, 16> syllables{"bra", "ko", "tel", "vu",  "mir", "sha", "do",  "ren",
                                                     "pli", "gu", "zan", "tor", "fe",  "lum", "qui", "har"};
constexpr std::array<std::string_view, 6> subBlocks{"Behavior = ",    "Body = ", "ArmorSet",
                                                    "ConditionState", "Turret",  "WeaponSet"};

class TextMaker {
public:
    explicit TextMaker(const TextPlan& plan)
        : plan_(plan), lines_(plan.megabytes * linesPerMegabyte), keywordLines_(lines_ / 2) {
        text_.reserve(plan.megabytes * bytesPerMegabyte);
    }

    std::string make() && {
        for (std::size_t line = 0; line < lines_; ++line) {
            if (line % 2 == 0) {
                addKeywordLine(line / 2);
            } else {
                addSettingLine(line);
            }
        }
        return std::move(text_);
    }

private:
    // The number of headers on the keyword lines before `keywordLine`.
    [[nodiscard]] std::size_t headersBefore(std::size_t keywordLine) const {
        return (keywordLine * plan_.blocks + keywordLines_ - 1) / keywordLines_;
    }

    [[nodiscard]] bool isHeader(std::size_t keywordLine) const {
        return headersBefore(keywordLine + 1) > headersBefore(keywordLine);
    }

    void addKeywordLine(std::size_t keywordLine) {
        if (isHeader(keywordLine)) {
            text_ += "Object ";
            text_ += blockName(headersBefore(keywordLine));
        } else if (keywordLine + 1 == keywordLines_ || isHeader(keywordLine + 1)) {
            text_ += "End";
        } else {
            const std::size_t choice = random_() % (subBlocks.size() + 2);
            text_ += "  ";
            text_ += choice < subBlocks.size() ? subBlocks[choice] : "End";
            if (text_.back() == ' ') {
                addWord();
            }
        }
        text_ += "\r\n";
    }

    // Brings the text to the length that it should have after this line.
    void addSettingLine(std::size_t line) {
        const std::size_t end = (line + 1) * bytesPerMegabyte / linesPerMegabyte - 2;
        if (line % 10 == 3) {
            text_ += "; ";
        } else if (line % 10 == 9) {
            text_ += "  Zan = 1;";
        } else {
            text_ += "  ";
            addWord();
            text_ += " = ";
        }
        while (text_.size() < end) {
            addWord();
            text_ += ' ';
        }
        text_.resize(end);
        text_ += "\r\n";
    }

    std::string blockName(std::size_t block) {
        if (block % 10 == 9 && !names_.empty()) {
            std::string name = names_[random_() % names_.size()];
            std::transform(name.begin(), name.end(), name.begin(),
                           [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
            return name;
        }
        const std::size_t start = text_.size();
        addWord();
        names_.push_back(text_.substr(start) + "No" + std::to_string(block));
        text_.resize(start);
        return names_.back();
    }

    void addWord() {
        const std::size_t start = text_.size();
        for (std::size_t left = 2 + random_() % 2; left > 0; --left) {
            text_ += syllables[random_() % syllables.size()];
        }
        text_[start] = static_cast<char>(text_[start] - 'a' + 'A');
    }

    TextPlan plan_;
    std::size_t lines_;
    std::size_t keywordLines_;
    std::string text_;
    std::vector<std::string> names_;
    std::mt19937 random_{1};
};

} // namespace

std::string generatedText(const TextPlan& plan) {
    if (plan.blocks > plan.megabytes * blocksPerMegabyteLimit) {
        throw std::invalid_argument("too many blocks for a text of this size");
    }
    return TextMaker(plan).make();
}

} // namespace blockhouse
