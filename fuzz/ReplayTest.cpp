// Runs every target on its corpus: inputs that reach much of the code, and those that
// once broke a promise.

#include "Targets.h"

#include <fstream>
#include <gtest/gtest.h>

namespace Scrivo::test::fuzz {

/// How test programs name a target.
static void PrintTo(const Target& target, std::ostream* out) {
    *out << target.name;
}

namespace {

/// One input a line, in hexadecimal; lines that begin with # say what was found.
std::vector<std::vector<std::uint8_t>> corpusOf(std::string_view target) {
    std::ifstream file(SCRIVO_CORPUS "/" + std::string(target) + ".txt");
    std::vector<std::vector<std::uint8_t>> inputs;
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with('#')) {
            continue;
        }
        std::vector<std::uint8_t>& input = inputs.emplace_back();
        for (std::size_t k = 0; k + 1 < line.size(); k += 2) {
            input.push_back(static_cast<std::uint8_t>(std::stoi(line.substr(k, 2), nullptr, 16)));
        }
    }
    return inputs;
}

class FuzzCorpus : public testing::TestWithParam<Target> {};

TEST_P(FuzzCorpus, KeepsEveryPromise) {
    const auto inputs = corpusOf(GetParam().name);
    EXPECT_GE(inputs.size(), 10U);
    for (const auto& input : inputs) {
        EXPECT_NO_THROW(GetParam().run(input)) << "line " << &input - inputs.data() + 1;
    }
}

TEST_P(FuzzCorpus, KeepsEveryPromiseForRandomInputs) {
    Random random;
    for (int round = 0; round < 1000; ++round) {
        std::vector<std::uint8_t> input(static_cast<std::size_t>(random.below(120)));
        for (std::uint8_t& byte : input) {
            byte = static_cast<std::uint8_t>(random.below(256));
        }
        SCOPED_TRACE(random.trace());
        EXPECT_NO_THROW(GetParam().run(input));
        random.nextRound();
    }
}

INSTANTIATE_TEST_SUITE_P(Fuzz, FuzzCorpus, testing::ValuesIn(TARGETS),
                         [](const auto& target) { return std::string(target.param.name); });

}  // namespace

}  // namespace Scrivo::test::fuzz
