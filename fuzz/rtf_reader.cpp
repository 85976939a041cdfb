// The RTF reader: any source gives text and runs that fit it; what the writer made comes back as it was, whole or in
// pieces, also after the comment pass went over it.
#include "editor/comment_pass.h"
#include "fuzz/target.h"
#include "platform/text/rtf.h"

using namespace blockhouse;
using fuzz::require;

namespace {

void requireFitting(const rtf::ColouredText& coloured) {
    std::size_t covered = 0;
    const rtf::ColourRun* before = nullptr;
    for (const rtf::ColourRun& run : coloured.runs) {
        require(run.length > 0, "a run is empty");
        require(before == nullptr || before->text != run.text || before->background != run.background,
                "neighbouring runs are alike");
        covered += run.length;
        before = &run;
    }
    require(covered == coloured.text.size(), "the runs do not cover the text");
}

rtf::ColouredText readInPieces(const std::string& source, std::string_view expected, std::size_t size) {
    rtf::SourceReader reader(expected);
    for (std::size_t at = 0; at < source.size();) {
        const std::size_t lineEnd = source.find("\r\n", std::min(at + size, source.size()));
        const std::size_t end = lineEnd == std::string::npos ? source.size() : lineEnd + 2;
        reader.read(std::string_view(source).substr(at, end - at));
        at = end;
    }
    rtf::SourceReader::Outcome outcome = reader.finish();
    return {outcome.asExpected ? std::string(expected) : outcome.text, outcome.runs};
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Bytes input(data, size);
    const std::size_t piece = input.below(300);
    const std::string source = input.rest();

    const rtf::ColouredText coloured = rtf::read(source);
    requireFitting(coloured);
    const std::string written = rtf::write(coloured.text, coloured.runs);
    require(rtf::read(written) == coloured, "what was written does not come back");
    require(readInPieces(written, coloured.text, piece) == coloured, "in pieces something else is read");
    require(readInPieces(written, "other", piece) == coloured, "expecting something else, something else is read");

    // The bytes themselves as a document.
    const std::string document = rtf::write(source, {}, {rgb(255, 255, 192)});
    require(rtf::read(document).text == source, "a text does not come back");
    require(rtf::read(highlightFromDelimiter(document, ';', 1)).text == source, "highlighting changes the text");
    return 0;
}
