#include "Targets.h"

// One program for each target; FUZZ_TARGET is its name.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Scrivo::test::fuzz::FUZZ_TARGET({data, size});
    return 0;
}
