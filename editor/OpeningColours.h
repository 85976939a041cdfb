// The colours of a freshly opened text: what the keyword pass and then the comment pass give it, without either.
#pragma once

#include "editor/keyword_scan.h"
#include "platform/text/ColouringRule.h"

namespace blockhouse {

// Keywords have a text colour, and the tail of every paragraph from its first delimiter on a background, its line end
// apart. A paragraph has no tail if an odd number of double quotes stands before its first delimiter, or if it begins
// with the character 0xAF and is not the text's first.
//
// No keyword may hold a line end.
class OpeningColours : public ColouringRule {
public:
    OpeningColours(const std::vector<std::string>& keywords, Colour keywordColour, char delimiter, Colour highlight);

    [[nodiscard]] std::vector<rtf::ColourRun> runsOf(std::string_view paragraphs, bool beginText) const override;
    // The highlight is among them wherever there is a delimiter.
    [[nodiscard]] std::vector<ColourPair> coloursOf(std::string_view text) const override;

private:
    [[nodiscard]] bool holdsKeyword(std::string_view text) const;

    KeywordScan keywords_;
    Colour keywordColour_;
    char delimiter_;
    Colour highlight_;
};

} // namespace blockhouse
