#include "editor/structure_lines.h"

#include "editor/HeaderKind.h"
#include "editor/keyword_table.h"
#include "platform/text/codepage.h"

#include <algorithm>
#include <string>

namespace blockhouse {
namespace {

constexpr std::string_view blanks = " \t";
constexpr std::string_view lineEnds = "\r\n";

// The line without its comment and what stands blank before that.
std::string_view withoutComment(std::string_view line) {
    line = line.substr(0, line.find(CommentDelimiter));
    const std::size_t last = line.find_last_not_of(blanks);
    return line.substr(0, last == line.npos ? 0 : last + 1);
}

// The five kinds' keyword, a blank and a name of its own, at the start of the line and nothing else on it.
bool isHeader(std::string_view line) {
    return std::any_of(headerKinds.begin(), headerKinds.end(), [line](HeaderKind kind) {
        const std::string_view keyword = headerKeyword(kind);
        if (line.size() <= keyword.size() || !codepage::equalIgnoringCase(line.substr(0, keyword.size()), keyword))
            return false;
        const std::size_t name = line.find_first_not_of(blanks, keyword.size());
        return name != line.npos && line.find_first_of(" \t=", name) == line.npos;
    });
}

// Block keywords that open a block inside one of the five kinds. "AliasConditionState" gives a state another name, in
// one line.
const std::vector<std::string>& innerKeywords() {
    static const std::vector<std::string> words = [] {
        std::vector<std::string> all = KeywordList();
        std::erase_if(all, [](const std::string& word) {
            const auto isHeaderKeyword = [&word](HeaderKind kind) {
                const std::string_view keyword = headerKeyword(kind);
                return codepage::equalIgnoringCase(word, keyword.substr(0, keyword.size() - 1));
            };
            return codepage::equalIgnoringCase(word, "End") || word == "AliasConditionState" ||
                   std::any_of(headerKinds.begin(), headerKinds.end(), isHeaderKeyword);
        });
        return all;
    }();
    return words;
}

bool isInnerKeyword(std::string_view word) {
    return std::any_of(innerKeywords().begin(), innerKeywords().end(),
                       [word](const std::string& keyword) { return codepage::equalIgnoringCase(word, keyword); });
}

int columnsOf(std::string_view indentation) {
    constexpr int tab = 4;
    int column = 0;
    for (const char blank : indentation)
        column = blank == '\t' ? (column / tab + 1) * tab : column + 1;
    return column;
}

StructureLine::Kind kindOf(std::string_view line, std::string_view word) {
    if (codepage::equalIgnoringCase(word, "End") && line.ends_with(word))
        return StructureLine::Kind::End;
    if (isHeader(line))
        return StructureLine::Kind::Header;
    return isInnerKeyword(word) ? StructureLine::Kind::Keyword : StructureLine::Kind::Other;
}

// Calls use(start, line) for each line, without its end. Stops when that returns false.
template <typename Use>
void eachLine(std::string_view text, std::size_t from, Use use) {
    for (std::size_t start = from; start < text.size();) {
        const std::size_t end = std::min(text.find_first_of(lineEnds, start), text.size());
        if (end > start && !use(start, text.substr(start, end - start)))
            return;
        start = end + 1;
    }
}

} // namespace

std::vector<StructureLine> structureLines(std::string_view text) {
    std::vector<StructureLine> lines;
    eachLine(text, 0, [&lines](std::size_t start, std::string_view whole) {
        const std::string_view line = withoutComment(whole);
        const std::size_t first = line.find_first_not_of(blanks);
        if (first == line.npos)
            return true;
        const std::size_t end = std::min(line.find_first_of(" \t=", first), line.size());
        const std::string_view word = line.substr(first, std::max(end - first, std::size_t{1}));
        const int indent = columnsOf(line.substr(0, first));
        lines.push_back({kindOf(line, word),
                         indent,
                         {static_cast<std::ptrdiff_t>(start + first), static_cast<std::ptrdiff_t>(word.size())}});
        return true;
    });
    return lines;
}

HeadersAround headersAround(std::string_view text, std::size_t place, bool isStart) {
    HeadersAround found{};
    const std::size_t firstEnd = isStart ? 0 : std::min(text.find_first_of(lineEnds), text.size());
    found.firstLine = isStart ? 0 : std::min(firstEnd + 1, text.size());
    found.lastLine = found.firstLine;
    eachLine(text, found.firstLine, [&](std::size_t start, std::string_view line) {
        found.lastLine = start;
        if (!isHeader(withoutComment(line)))
            return true;
        if (start <= place)
            found.before = start;
        else
            found.behind = start;
        return !found.behind;
    });
    return found;
}

} // namespace blockhouse
