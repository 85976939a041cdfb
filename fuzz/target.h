// What every fuzz target shares. A target is one function that takes any bytes and stops the program when something is
// wrong with the code it hands them to.
#pragma once

#include "fuzz/Bytes.h"

#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace blockhouse::fuzz {

inline void require(bool holds, const char* what) {
    if (holds)
        return;
    std::fprintf(stderr, "wrong: %s\n", what);
    std::abort();
}

} // namespace blockhouse::fuzz
