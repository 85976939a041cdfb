// Ini text of any size, the same on every run: what the benchmarks measure on.
#pragma once

#include <cstddef>
#include <string>

namespace blockhouse {

inline constexpr std::size_t bytesPerMegabyte = 1'000'000;
inline constexpr std::size_t linesPerMegabyte = 48'000;

struct TextPlan {
    std::size_t megabytes = 10;
    // Listed object blocks, spread evenly; at most blocksPerMegabyteLimit a megabyte. One in ten bears the name of an
    // earlier one, in capitals.
    std::size_t blocks = 10'000;
};

inline constexpr std::size_t blocksPerMegabyteLimit = linesPerMegabyte / 4;

// Exactly plan.megabytes * bytesPerMegabyte bytes in plan.megabytes * linesPerMegabyte lines ending in CR LF. Every
// second line begins with a keyword in its exact case (headers, sub-blocks and "End"); the others are settings, two in
// five of them with a comment, so that every fifth line of the text has one. All names are made up.
[[nodiscard]] std::string generatedText(const TextPlan& plan);

} // namespace blockhouse
