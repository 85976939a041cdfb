#include "editor/block_structure.h"
#include "platform/system/files.h"
#include "tests/editor/random_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <random>

namespace blockhouse {
namespace {

std::ptrdiff_t lineOf(std::string_view text, std::ptrdiff_t at) {
    return std::count(text.begin(), text.begin() + at, '\n') + 1;
}

// The lines of each block, then those of the faults: "1-5 2-4 3-? unclosed:3 toomany:9".
std::string shown(const BlockStructure& structure, std::string_view text) {
    std::string shown;
    for (const StructureBlock& block : structure.blocks)
        shown += std::to_string(lineOf(text, block.opener.start)) + "-" +
                 (block.end ? std::to_string(lineOf(text, block.end->start)) : "?") + " ";
    for (const StructureFault& fault : structure.faults)
        shown += (fault.kind == StructureFault::Kind::NeverClosed ? "unclosed:" : "toomany:") +
                 std::to_string(lineOf(text, fault.word.start)) + " ";
    return shown;
}

class Text : public TextView {
public:
    explicit Text(std::string_view bytes) : bytes_(bytes) {}

    [[nodiscard]] std::ptrdiff_t length() const override { return static_cast<std::ptrdiff_t>(bytes_.size()); }

    [[nodiscard]] std::string textAt(std::ptrdiff_t at, std::ptrdiff_t size) const override {
        return std::string(bytes_.substr(static_cast<std::size_t>(at), static_cast<std::size_t>(size)));
    }

private:
    std::string_view bytes_;
};

// Of all regions.
BlockStructure wholeStructure(std::string_view text) {
    BlockStructure whole;
    for (std::ptrdiff_t at = 0; at < static_cast<std::ptrdiff_t>(text.size());) {
        const BlockRegion region = blockRegion(Text(text), at);
        EXPECT_EQ(region.range.start, at);
        const auto shifted = [at](TextRange range) { return TextRange{range.start + at, range.length}; };
        const BlockStructure part = blockStructure(
            text.substr(static_cast<std::size_t>(at), static_cast<std::size_t>(region.range.length)), region.isWhole);
        const std::size_t before = whole.blocks.size();
        for (const StructureBlock& block : part.blocks)
            whole.blocks.push_back({shifted(block.opener), block.end ? std::optional(shifted(*block.end)) : block.end,
                                    block.in ? std::optional(*block.in + before) : block.in});
        for (const StructureFault& fault : part.faults)
            whole.faults.push_back({fault.kind, shifted(fault.word)});
        at += region.range.length;
    }
    return whole;
}

// Each block is said to be in the innermost one that holds its lines.
void expectNested(const BlockStructure& structure, std::string_view text) {
    const auto endOf = [](const StructureBlock& block) { return block.end ? block.end->start : block.opener.start; };
    for (std::size_t index = 0; index < structure.blocks.size(); ++index) {
        std::optional<std::size_t> innermost;
        for (std::size_t outer = 0; outer < index; ++outer)
            if (endOf(structure.blocks[outer]) > endOf(structure.blocks[index]))
                innermost = outer;
        EXPECT_EQ(structure.blocks[index].in, innermost)
            << text << "\nline " << lineOf(text, structure.blocks[index].opener.start);
    }
}

std::string faultsOf(std::string_view text) {
    BlockStructure structure = wholeStructure(text);
    structure.blocks.clear();
    return shown(structure, text);
}

TEST(BlockStructure, IsThatOfKeywordsAndIndentation) {
    const struct {
        const char* what;
        const char* text;
        const char* expected;
    } cases[] = {
        {"nothing", "", ""},
        {"a block", "Object Abc\n  a = 1\nEnd\n", "1-3 "},
        {"an empty one", "Object Abc\nEND", "1-2 "},
        {"keywords inside", "Object Abc\n  Body = X\n    h = 1\n  End\n  Turret\n  End\nend ; of it\n", "1-7 2-4 5-6 "},
        {"keywords without indentation", "Object Abc\nBody = X\nh = 1\nEnd\nEnd\n", "1-5 2-4 "},
        {"a block that nothing is known of", "Object Abc\n  Wheels\n    n = 4\n  End\nEnd\n", "1-5 2-4 "},
        {"only such blocks", "Wheels\n  n = 4\nEnd\n\nDoors\n  n = 2\nEnd\n", "1-3 5-7 "},
        {"such blocks without indentation", "Wheels\nn = 4\nEnd\nDoors\nEnd\n", ""},
        {"the same inside a known one", "Object Abc\nWheels\nn = 4\nEnd\nEnd\n", "1-4 "},
        {"a keyword that is a setting", "Object Abc\n  Body = X\n  h = 1\nEnd\n", "1-4 "},
        {"a line that is one state's other name", "Object Abc\n  AliasConditionState = A\n  h = 1\nEnd\n", "1-4 "},
        {"a line that stands too deep", "Object Abc\n  a = 1\n    b = 2\n  c = 3\nEnd\n", "1-5 "},
        {"a block's line that stands too far left", "Object Abc\n  Wheels\n    n = 4\n  m = 2\n  End\nEnd\n",
         "1-6 2-5 "},
        {"Ends that stand too deep", "Object Abc\n  Body = X\n    h = 1\n    End\n  End\n", "1-5 2-4 "},
        {"comments and blank lines", "Object Abc ; End\n\n  ; End\n\t \n  a = 1 ; Body = X\n;End\nEnd\n", "1-7 "},
        {"what only looks like an End", "Object Abc\n  EndFrame = 3\n  End = 4\nEnd\n", "1-4 "},
        {"what only looks like a header", "Weapon = Abc\nObject Abc Def\nObjects Abc\n Object Abc\nEnd\n", "3-5 "},
        {"blocks in what was none",
         "Object Abc\n  a = 1\n    Body = X\n      Turret\n        t = 1\n      End\n    End\n  c = 3\nEnd\n",
         "1-9 3-7 4-6 "},
        {"an End as deep as the lines before it", "Object Abc\n  a = 1\n   b = 2\n  End\n", "1-4 "},
        {"a state's other name without indentation",
         "Object Abc\nConditionState = A\nAliasConditionState = B\nm = 1\nEnd\nEnd\n", "1-6 2-5 "},
        {"a keyword without a header", "Body = X\n  h = 1\n", "1-? "},
        {"tabs", "Object Abc\n\tWheels\n\t    n = 4\n    End\nEnd\n", "1-5 2-4 "},

        {"the outer End is missing", "Object Abc\n  a = 1\n\nWeapon Def\n  b = 2\nEnd\n", "1-? 4-6 unclosed:1 "},
        {"the inner End is missing", "Object Abc\n  Body = X\n    h = 1\n  a = 1\nEnd\n", "1-5 2-? unclosed:2 "},
        {"one of two inner Ends is missing", "Object Abc\n  Body = X\n    h = 1\n  Turret\n    t = 1\n  End\nEnd\n",
         "1-7 2-? 4-6 unclosed:2 "},
        {"an End too many at the end", "Object Abc\n  a = 1\nEnd\nEnd\n", "1-3 toomany:4 "},
        {"an End too many inside", "Object Abc\n  Body = X\n    h = 1\n  End\n  End\nEnd\n", "1-6 2-4 toomany:5 "},
        {"a second End after something else", "Object Abc\n  a = 1\nEnd\nWheels\nEnd\nEnd\n", "1-3 toomany:6 "},
        {"an End behind something indented", "Object Abc\n  a = 1\nEnd\n  Wheels\n    n = 4\nEnd\n", "1-3 "},
        {"a tab as wide as four blanks", "Object Abc\n\ta = 1\n    b = 2\n    End\nEnd\n", "1-5 toomany:4 "},
        {"an End that may close something else", "Object Abc\n  a = 1\nEnd\nWheels\nEnd\n", "1-3 "},
    };

    for (const auto& c : cases) {
        const std::string_view text = c.text;
        const BlockStructure structure = wholeStructure(text);
        EXPECT_EQ(shown(structure, text), c.expected) << c.what;
        if (structure.faults.empty())
            expectNested(structure, text);
    }
}

// What a region says must not depend on which of its places was asked about.
TEST(BlockStructure, RegionsReachFromHeaderToHeader) {
    const std::string text = "; the first\r\nObject Abc\r\n  a = 1\r\nEnd\r\nWeapon Def\r\nEnd\r\nTrain x\r\n";
    const auto second = static_cast<std::ptrdiff_t>(text.find("Object"));
    const auto third = static_cast<std::ptrdiff_t>(text.find("Weapon"));
    const auto end = static_cast<std::ptrdiff_t>(text.size());
    for (std::ptrdiff_t at = 0; at <= end; ++at) {
        const BlockRegion region = blockRegion(Text(text), at);
        const TextRange expected = at < second  ? TextRange{0, second}
                                   : at < third ? TextRange{second, third - second}
                                                : TextRange{third, end - third};
        EXPECT_EQ(region.range, expected) << at;
        EXPECT_TRUE(region.isWhole);
    }
}

TEST(BlockStructure, LongRegionsAreCutAtALineAndNotJudged) {
    std::string text = "Object Abc\n  a = 1\n";
    while (text.size() < 3 * mostOfRegion)
        text += "  setting = 12345\n";
    const auto at = static_cast<std::ptrdiff_t>(text.size()) / 2;
    const BlockRegion region = blockRegion(Text(text), at);
    EXPECT_FALSE(region.isWhole);
    EXPECT_EQ(text[static_cast<std::size_t>(region.range.start) - 1], '\n');
    EXPECT_EQ(text[static_cast<std::size_t>(region.range.start + region.range.length) - 1], '\n');
    EXPECT_LT(at - region.range.start, mostOfRegion + 1);
    EXPECT_GT(region.range.length, 2 * mostOfRegion - 100);
    EXPECT_TRUE(blockStructure("Object Abc\n  a = 1\n", false).faults.empty());
    EXPECT_FALSE(blockStructure("Object Abc\n  a = 1\n", true).faults.empty());
}

TEST(BlockStructure, APlaceIsInTheBlocksThatItsLineIsPartOf) {
    const std::string text = "Object Abc\n  Body = X\n    h = 1\n  End\n  a = 1\nEnd\nb = 2\n";
    const BlockStructure structure = wholeStructure(text);
    const char* const expected[] = {"0", "01", "01", "01", "0", "0", "", ""};
    std::ptrdiff_t line = 0;
    for (std::size_t at = 0; at <= text.size(); ++at) {
        std::string around;
        for (const std::size_t index : blocksAround(structure, text, static_cast<std::ptrdiff_t>(at)))
            around += std::to_string(index);
        EXPECT_EQ(around, expected[line]) << at;
        line += at < text.size() && text[at] == '\n' ? 1 : 0;
    }
    const auto place = [&text](const char* word) { return static_cast<std::ptrdiff_t>(text.find(word)); };
    EXPECT_EQ(blockAt(structure, place("Body")), 1U);
    EXPECT_EQ(blockAt(structure, place("Body") + 4), 1U);
    EXPECT_EQ(blockAt(structure, place("Body") + 5), std::nullopt);
    EXPECT_EQ(blockAt(structure, place("  End") + 3), 1U);
    EXPECT_EQ(blockAt(structure, place("\nEnd") + 1), 0U);
}

// A text that is put together from blocks, so that it is known which line closes which.
class Builder {
public:
    Builder(std::mt19937& random, bool isIndented, bool hasUnknown)
        : random_(random), isIndented_(isIndented), hasUnknown_(hasUnknown) {}

    void addBlocks(std::size_t count) {
        for (; count > 0; --count)
            addBlock(0);
    }

    [[nodiscard]] std::string text(std::ptrdiff_t withoutLine = -1, std::ptrdiff_t twice = -1) const {
        std::string text;
        for (std::size_t line = 0; line < lines_.size(); ++line)
            for (int copies = static_cast<std::ptrdiff_t>(line) == withoutLine ? 0
                              : static_cast<std::ptrdiff_t>(line) == twice     ? 2
                                                                               : 1;
                 copies > 0; --copies)
                text += lines_[line] + "\r\n";
        return text;
    }

    [[nodiscard]] std::string expected() const {
        std::string shown;
        for (const auto& [opener, end] : pairs_)
            shown += std::to_string(opener + 1) + "-" + std::to_string(end + 1) + " ";
        return shown;
    }

    // 0-based lines, by the opener's.
    [[nodiscard]] const std::map<std::size_t, std::size_t>& pairs() const { return pairs_; }

private:
    std::string oneOf(const std::vector<std::string>& texts) { return texts[randomBelow(random_, texts.size())]; }

    void add(int depth, const std::string& line) {
        static const std::vector<std::string> tails{"", "", "", " ; End", "\t", " ;Body = X"};
        const std::string indentation = isIndented_ ? std::string(static_cast<std::size_t>(depth) * 2, ' ') : "";
        lines_.push_back(indentation + line + oneOf(tails));
        if (randomBelow(random_, 6) == 0)
            lines_.push_back(oneOf({"", "  ", "; Object Abc", "      ; End"}));
    }

    void addBlock(int depth) {
        static const std::vector<std::string> headers{"Object Abc", "weapon Defgh", "FXList Some_List"};
        static const std::vector<std::string> known{"Body = Tower", "Turret", "ConditionState = A B", "armorset"};
        static const std::vector<std::string> unknown{"Wheels", "Doors = 4 Of"};
        const std::size_t opener = lines_.size();
        add(depth, oneOf(depth == 0 ? headers : hasUnknown_ && randomBelow(random_, 3) == 0 ? unknown : known));
        addInside(depth + 1);
        pairs_[opener] = lines_.size();
        add(depth, oneOf({"End", "END", "end"}));
    }

    void addInside(int depth) {
        // With nothing in it, only a keyword's block is known for one.
        add(depth, "Cost = 5");
        for (std::size_t left = randomBelow(random_, 4); left > 0; --left)
            if (depth < 4 && randomBelow(random_, 2) == 0)
                addBlock(depth);
            else
                add(depth, oneOf({"Cost = 5", "Object = Xyz", "Weapon = PRIMARY Bow", "EndFrame = 3"}));
    }

    std::mt19937& random_;
    const bool isIndented_;
    const bool hasUnknown_; // blocks without a keyword
    std::vector<std::string> lines_;
    std::map<std::size_t, std::size_t> pairs_;
};

TEST(BlockStructure, OfTextsPutTogetherFromBlocksIsKnown) {
    std::mt19937 random(20261124);
    for (int round = 0; round < 1500; ++round) {
        Builder builder(random, round % 3 != 0, round % 3 == 1);
        builder.addBlocks(1 + randomBelow(random, 3));
        const std::string text = builder.text();
        const BlockStructure structure = wholeStructure(text);
        ASSERT_EQ(shown(structure, text), builder.expected()) << round << "\n" << text;
        expectNested(structure, text);
    }
}

TEST(BlockStructure, OneLineLessOrMoreIsFoundWhereItIs) {
    std::mt19937 random(20261125);
    for (int round = 0; round < 1500; ++round) {
        Builder builder(random, true, false);
        builder.addBlocks(1 + randomBelow(random, 3));
        auto pair = builder.pairs().begin();
        std::advance(pair, static_cast<std::ptrdiff_t>(randomBelow(random, builder.pairs().size())));
        const auto [opener, end] = *pair;
        const std::string missing = builder.text(static_cast<std::ptrdiff_t>(end));
        ASSERT_EQ(faultsOf(missing), "unclosed:" + std::to_string(opener + 1) + " ") << round << "\n" << missing;
        const std::string twice = builder.text(-1, static_cast<std::ptrdiff_t>(end));
        ASSERT_EQ(faultsOf(twice), "toomany:" + std::to_string(end + 2) + " ") << round << "\n" << twice;
    }
}

TEST(BlockStructure, HasNoFaultsInTheSampleFiles) {
    int files = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(BLOCKHOUSE_SAMPLES)) {
        if (entry.path().extension() != ".ini")
            continue;
        const std::string text = readWholeFile(entry.path().string()).value();
        const BlockStructure structure = wholeStructure(text);
        EXPECT_EQ(faultsOf(text), "") << entry.path();
        EXPECT_GT(structure.blocks.size(), 2U) << entry.path();
        for (const StructureBlock& block : structure.blocks)
            EXPECT_TRUE(block.end) << entry.path() << ":" << lineOf(text, block.opener.start);
        ++files;
    }
    EXPECT_GT(files, 5);
}

} // namespace
} // namespace blockhouse
