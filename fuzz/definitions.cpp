// The scan for a name's definitions, in pieces of any size, held against one that goes line by line.
#include "findref/DefinitionScan.h"
#include "fuzz/target.h"
#include "tests/findref/slow_definitions.h"

using namespace blockhouse;
using fuzz::require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Bytes input(data, size);
    const std::size_t piece = 1 + input.below(40);
    const std::string name = input.text();
    const std::string text = input.rest();
    const bool isName = name.find_first_of(" \t=;\r\n") == std::string::npos;

    DefinitionScan scan(name);
    std::string found;
    const auto note = [&found](const DefinitionScan::Found& each) {
        found += std::to_string(each.name.value) + " " + std::to_string(each.line) + " " + each.keyword + "\n";
    };
    for (std::size_t at = 0; at <= text.size(); at += piece)
        scan.scan(std::string_view(text).substr(at, piece), at + piece > text.size(), note);
    require(found == (isName ? definitionsLineByLine(text, name) : ""), "other definitions are found");
    return 0;
}
