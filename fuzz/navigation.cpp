// Jumping to headers and settings, held against the slow second version; also what a save writes.
#include "editor/save_cut.h"
#include "fuzz/target.h"
#include "tests/editor/slow_navigation.h"

using namespace blockhouse;
using fuzz::require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Bytes input(data, size);
    const HeaderKind kind = headerKinds[input.below(headerKinds.size())];
    const std::size_t z = 1 + input.below(4000);
    const std::string name = input.text();
    std::vector<std::string> jumps;
    for (std::size_t count = input.below(5); count > 0; --count)
        jumps.push_back(input.text());
    const std::string text = input.rest();

    require(headerPosition(text, kind, name).value == loweredHeader(text, kind, name), "a header is found elsewhere");
    require(settingsOf(text, kind, {static_cast<std::ptrdiff_t>(z)}, jumps) == loweredSettings(text, kind, z, jumps),
            "other settings are listed");

    const std::string_view written = textToWrite(text);
    const std::size_t end = codepage::lowered(text).rfind("end");
    require(written == text.substr(0, end == std::string::npos ? end : end + 4), "a save is cut elsewhere");
    return 0;
}
