// Gives the scripts in research/ access to the internals of the engines.
//
//   probe features|answers|paths|plain|kinds < strokes > table
//   probe pictures TEMPLATE_FILE... < tasks > findings
//   probe reach < outlines and strokes > covers
//
// The file of a subcommand describes what it reads and writes.

#include "Probe.h"

#include <cstdio>
#include <exception>
#include <string>
#include <vector>

namespace {

int run(const std::vector<std::string>& args) {
    const std::string command = args.empty() ? "" : args.front();
    if (command == "pictures") {
        return probe::pictures({args.begin() + 1, args.end()});
    }
    if (args.size() == 1 && command == "reach") {
        return probe::reach();
    }
    constexpr int UNKNOWN = 2;
    const int status = args.size() == 1 ? probe::beautifier(command) : UNKNOWN;
    if (status != UNKNOWN) {
        return status;
    }
    std::fprintf(stderr,
                 "usage: probe features|answers|paths|plain|kinds|reach\n"
                 "       probe pictures TEMPLATE_FILE...\n");
    return UNKNOWN;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return run({argv + 1, argv + argc});
    } catch (const std::exception& error) {
        std::fprintf(stderr, "probe: %s\n", error.what());
        return 1;
    }
}
