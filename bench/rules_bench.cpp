// The text rules that opening a file runs, each by itself.
#include "bench/generated_text.h"
#include "editor/block_scan.h"
#include "editor/comment_pass.h"
#include "editor/keyword_scan.h"
#include "editor/keyword_table.h"
#include "platform/text/rtf.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <map>

namespace blockhouse {
namespace {

constexpr std::size_t sliceSize = 64 * 1024;
constexpr std::size_t usualBlocksPerMegabyte = 2'000;

const std::string& textOf(std::size_t megabytes, std::size_t blocks) {
    static std::map<std::pair<std::size_t, std::size_t>, std::string> texts;
    std::string& text = texts[{megabytes, blocks}];
    if (text.empty()) {
        text = generatedText({megabytes, blocks});
    }
    return text;
}

const std::string& usualText(const benchmark::State& state) {
    const auto megabytes = static_cast<std::size_t>(state.range(0));
    return textOf(megabytes, megabytes * usualBlocksPerMegabyte);
}

void countBytes(benchmark::State& state, std::size_t bytes) {
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes));
}

// As the editor does it: one slice after the other, its occurrences used before the next is scanned.
template <typename Visit>
void forEachKeyword(std::string_view text, Visit visit) {
    const KeywordScan scan(KeywordList());
    std::vector<TextRange> found;
    for (std::size_t begin = 0; begin < text.size(); begin += sliceSize) {
        found.clear();
        scan.scan(text, begin, std::min(begin + sliceSize, text.size()), found);
        std::for_each(found.begin(), found.end(), visit);
    }
}

std::vector<rtf::ColourRun> keywordRuns(std::string_view text) {
    std::vector<rtf::ColourRun> runs;
    std::ptrdiff_t covered = 0;
    const auto addRun = [&](std::ptrdiff_t end, Colour colour) {
        if (end > covered) {
            runs.push_back({static_cast<std::uint32_t>(end - covered), colour, defaultBackground});
            covered = end;
        }
    };
    forEachKeyword(text, [&](const TextRange& keyword) {
        addRun(keyword.start, defaultTextColour);
        addRun(keyword.start + keyword.length, KeywordColor);
    });
    addRun(static_cast<std::ptrdiff_t>(text.size()), defaultTextColour);
    return runs;
}

std::string colouredSource(std::string_view text) {
    return rtf::write(text, keywordRuns(text));
}

void keywordScan(benchmark::State& state) {
    const std::string& text = usualText(state);
    std::size_t keywords = 0;
    for ([[maybe_unused]] auto _ : state) {
        keywords = 0;
        forEachKeyword(text, [&](const TextRange&) { ++keywords; });
        benchmark::DoNotOptimize(keywords);
    }
    countBytes(state, text.size());
    state.counters["keywords"] = static_cast<double>(keywords);
}

void commentRewrite(benchmark::State& state) {
    const std::string source = colouredSource(usualText(state));
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(highlightFromDelimiter(source, CommentDelimiter, 2).data());
    }
    countBytes(state, source.size());
}

void rtfWrite(benchmark::State& state) {
    const std::string& text = usualText(state);
    const std::vector<rtf::ColourRun> runs = keywordRuns(text);
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(rtf::write(text, runs).data());
    }
    countBytes(state, text.size());
}

void rtfRead(benchmark::State& state) {
    const std::string& text = usualText(state);
    const std::string source = highlightFromDelimiter(colouredSource(text), CommentDelimiter, 1);
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(rtf::read(source).text.data());
    }
    countBytes(state, text.size());
}

void blockList(benchmark::State& state) {
    const std::string& text =
        textOf(static_cast<std::size_t>(state.range(0)), static_cast<std::size_t>(state.range(1)));
    std::size_t listed = 0;
    for ([[maybe_unused]] auto _ : state) {
        listed = blockPass(text, HeaderKind::Object).size();
        benchmark::DoNotOptimize(listed);
    }
    countBytes(state, text.size());
    state.counters["blocks"] = static_cast<double>(listed);
}

BENCHMARK(keywordScan)->ArgName("MB")->Arg(1)->Arg(10)->Arg(100)->Unit(benchmark::kMillisecond);
BENCHMARK(commentRewrite)->ArgName("MB")->Arg(1)->Arg(10)->Arg(100)->Unit(benchmark::kMillisecond);
BENCHMARK(rtfWrite)->ArgName("MB")->Arg(1)->Arg(10)->Arg(100)->Unit(benchmark::kMillisecond);
BENCHMARK(rtfRead)->ArgName("MB")->Arg(1)->Arg(10)->Arg(100)->Unit(benchmark::kMillisecond);
// As many blocks in the same text, and ten times the text with ten times the blocks.
BENCHMARK(blockList)
    ->ArgNames({"MB", "blocks"})
    ->Args({1, 10'000})
    ->Args({10, 10'000})
    ->Args({10, 100'000})
    ->Unit(benchmark::kMillisecond);

} // namespace
} // namespace blockhouse
