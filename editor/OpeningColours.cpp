#include "editor/OpeningColours.h"

#include <algorithm>

namespace blockhouse {
namespace {

bool isLineEnd(char character) {
    return character == '\r' || character == '\n';
}

struct Span {
    std::size_t first;
    std::size_t last; // not included
};

// Visits the tails from the first to the last.
template <typename Visit>
void forEachTail(std::string_view paragraphs, char delimiter, bool beginText, Visit visit) {
    constexpr char unhighlightedStart = '\xAF';
    std::size_t lowest = 0; // where the paragraph of the next delimiter may begin
    for (std::size_t at = paragraphs.find(delimiter); at != paragraphs.npos; at = paragraphs.find(delimiter, lowest)) {
        std::size_t start = at;
        while (start > lowest && !isLineEnd(paragraphs[start - 1]))
            --start;
        std::size_t end = at;
        while (end < paragraphs.size() && !isLineEnd(paragraphs[end]))
            ++end;
        const std::string_view head = paragraphs.substr(start, at - start);
        const bool isFirst = beginText && start == 0;
        const bool isLeftOut = !isFirst && paragraphs[start] == unhighlightedStart;
        if (!isLeftOut && std::count(head.begin(), head.end(), '"') % 2 == 0)
            visit(Span{at, end});
        lowest = end;
    }
}

std::size_t startOf(const TextRange& range) {
    return static_cast<std::size_t>(range.start);
}

std::size_t endOf(const TextRange& range) {
    return static_cast<std::size_t>(range.start + range.length);
}

// Puts runs together from spans that come in order.
class Runs {
public:
    void add(std::size_t length, Colour text, Colour background) {
        if (length == 0)
            return;
        if (!runs_.empty() && runs_.back().text == text && runs_.back().background == background)
            runs_.back().length += static_cast<std::uint32_t>(length);
        else
            runs_.push_back({static_cast<std::uint32_t>(length), text, background});
    }

    [[nodiscard]] std::vector<rtf::ColourRun> take() { return std::move(runs_); }

private:
    std::vector<rtf::ColourRun> runs_;
};

} // namespace

OpeningColours::OpeningColours(const std::vector<std::string>& keywords, Colour keywordColour, char delimiter,
                               Colour highlight)
    : keywords_(keywords), keywordColour_(keywordColour), delimiter_(delimiter), highlight_(highlight) {}

std::vector<rtf::ColourRun> OpeningColours::runsOf(std::string_view paragraphs, bool beginText) const {
    std::vector<TextRange> found;
    keywords_.scan(paragraphs, 0, paragraphs.size(), found);
    Runs runs;
    std::size_t done = 0;
    auto keyword = found.begin();
    // Keywords may overlap, and reach from one background into the next.
    const auto addUntil = [&](std::size_t end, Colour background) {
        while (done < end) {
            while (keyword != found.end() && endOf(*keyword) <= done)
                ++keyword;
            const std::size_t first = keyword == found.end() ? end : std::clamp(startOf(*keyword), done, end);
            runs.add(first - done, defaultTextColour, background);
            const std::size_t last = keyword == found.end() ? end : std::clamp(endOf(*keyword), first, end);
            if (first < end)
                runs.add(last - first, keywordColour_, background);
            done = first < end ? last : end;
        }
    };
    forEachTail(paragraphs, delimiter_, beginText, [&](Span tail) {
        addUntil(tail.first, defaultBackground);
        addUntil(tail.last, highlight_);
    });
    addUntil(paragraphs.size(), defaultBackground);
    return runs.take();
}

std::vector<ColourPair> OpeningColours::coloursOf(std::string_view text) const {
    std::vector<ColourPair> colours;
    if (holdsKeyword(text))
        colours.push_back({keywordColour_, defaultBackground});
    if (text.find(delimiter_) != text.npos)
        colours.push_back({defaultTextColour, highlight_});
    return colours;
}

bool OpeningColours::holdsKeyword(std::string_view text) const {
    constexpr std::size_t stretch = 1 << 16;
    std::vector<TextRange> found;
    for (std::size_t at = 0; at < text.size() && found.empty(); at += stretch)
        keywords_.scan(text, at, std::min(at + stretch, text.size()), found);
    return !found.empty();
}

} // namespace blockhouse
