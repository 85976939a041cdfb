#include "placement/location_line.h"

#include "placement/line_end.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace blockhouse {

namespace {

std::string formatted(CanvasUnits units) {
    // A single-precision number times a hundred is exact in double precision.
    const double hundredths = std::round(static_cast<double>(units.value) * 100);
    std::array<char, 64> buffer; // of which the largest number takes 41
    const std::to_chars_result written =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), std::abs(hundredths), std::chars_format::fixed, 0);
    std::string digits(buffer.data(), written.ptr);
    digits.insert(0, 3 - std::min<std::size_t>(digits.size(), 3), '0');
    digits.insert(digits.size() - 2, 1, '.');
    return hundredths < 0 ? "-" + digits : digits;
}

} // namespace

std::string statusText(CanvasPoint point) {
    return "x: " + formatted(point.x) + " y: " + formatted(point.y);
}

std::string locationLine(CanvasPoint point) {
    return "Location = X:" + formatted(point.x) + " Y:" + formatted(point.y);
}

std::optional<ReplacedLine> replaceLocation(std::string& text, TextPosition position, CanvasPoint point) {
    if (!position.found() || static_cast<std::size_t>(position.value) > text.size()) {
        return std::nullopt;
    }
    const std::size_t start = offsetOf(position);
    const std::size_t end = std::min(text.find(lineEndOf(text), start), text.size());
    ReplacedLine line{start, text.substr(start, end - start), locationLine(point)};
    text.replace(start, end - start, line.after);
    return line;
}

} // namespace blockhouse
