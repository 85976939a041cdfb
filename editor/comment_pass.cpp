#include "editor/comment_pass.h"

#include <algorithm>

namespace blockhouse {

namespace {

constexpr std::string_view lineBreak = "\r\n";
constexpr std::string_view unhighlightedLineStart = "\\par \\'af";
constexpr std::string_view highlightOff = "\\highlight0 ";

// Offsets in the source: [delimiter, lineEnd) gets the background.
struct Tail {
    std::size_t delimiter;
    std::size_t lineEnd;
};

std::size_t lineStartBefore(std::string_view source, std::size_t position, std::size_t lowest) {
    const std::size_t found = source.substr(lowest, position - lowest).rfind(lineBreak);
    return found == std::string_view::npos ? lowest : lowest + found + lineBreak.size();
}

// `position` itself is no part of a line break.
std::size_t lineEndAfter(std::string_view source, std::size_t position) {
    for (std::size_t feed = source.find('\n', position + 1); feed != std::string_view::npos;
         feed = source.find('\n', feed + 1)) {
        if (source[feed - 1] == '\r') {
            return feed - 1;
        }
    }
    return source.size();
}

bool belongsToLineBreak(std::string_view source, std::size_t position) {
    return source.substr(position, 2) == lineBreak || (position > 0 && source.substr(position - 1, 2) == lineBreak);
}

bool takesHighlight(std::string_view line, std::size_t delimiter) {
    const std::string_view before = line.substr(0, delimiter);
    const auto quotes = std::count(before.begin(), before.end(), '"');
    return quotes % 2 == 0 && !line.starts_with(unhighlightedLineStart);
}

// Visits from front to back. Each line is looked at once, and lines without a delimiter only in passing.
template <typename Visit>
void forEachTail(std::string_view source, char delimiter, Visit visit) {
    std::size_t lowestLineStart = 0;
    std::size_t unread = 0;
    for (std::size_t at = source.find(delimiter); at != std::string_view::npos; at = source.find(delimiter, unread)) {
        unread = at + 1;
        if (belongsToLineBreak(source, at)) {
            continue;
        }
        const std::size_t lineStart = lineStartBefore(source, at, lowestLineStart);
        const std::size_t lineEnd = lineEndAfter(source, at);
        if (takesHighlight(source.substr(lineStart, lineEnd - lineStart), at - lineStart)) {
            visit(Tail{at, lineEnd});
        }
        lowestLineStart = std::min(lineEnd + lineBreak.size(), source.size());
        unread = lowestLineStart;
    }
}

} // namespace

std::string highlightFromDelimiter(std::string_view rtfSource, char delimiter, int colourIndex) {
    const std::string highlightOn = "\\highlight" + std::to_string(colourIndex) + " ";
    // Finding the tails twice costs far less than touching fresh memory to remember them or to grow the result.
    std::size_t tails = 0;
    forEachTail(rtfSource, delimiter, [&](const Tail&) { ++tails; });

    std::string result;
    result.reserve(rtfSource.size() + tails * (highlightOn.size() + highlightOff.size()));
    std::size_t copied = 0;
    forEachTail(rtfSource, delimiter, [&](const Tail& tail) {
        result.append(rtfSource.substr(copied, tail.delimiter - copied)).append(highlightOn);
        result.append(rtfSource.substr(tail.delimiter, tail.lineEnd - tail.delimiter)).append(highlightOff);
        copied = tail.lineEnd;
    });
    return result.append(rtfSource.substr(copied));
}

} // namespace blockhouse
